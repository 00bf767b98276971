#pragma once

#include <functional>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/wayland/clipboard/OfferedTypes.h"
#include "platform/wayland/clipboard/WaylandConnection.h"

struct ext_data_control_device_v1;
struct ext_data_control_manager_v1;
struct ext_data_control_offer_v1;
struct ext_data_control_source_v1;

namespace quillbox {

// What somebody, perhaps ourselves, offers on the clipboard.
class DataOffer {
 public:
  explicit DataOffer(ext_data_control_offer_v1* offer);
  ~DataOffer();
  DataOffer(const DataOffer&) = delete;
  DataOffer& operator=(const DataOffer&) = delete;

  bool Is(const ext_data_control_offer_v1* offer) const { return offer_ == offer; }
  const OfferedTypes& Types() const { return types_; }
  // Asks the owner to write its content into `fd`, of which a copy goes there.
  void Receive(const std::string& type, int fd) const;

 private:
  ext_data_control_offer_v1* offer_;
  OfferedTypes types_;
};

// What we offer. It must outlive its being the selection: the compositor empties the clipboard when it goes.
class DataSource {
 public:
  struct Events {
    std::function<void(std::string_view type, int fd)>
        send;                         // somebody pastes; the descriptor is the taker's
    std::function<void()> cancelled;  // it is no longer the selection; called once
  };

  DataSource(ext_data_control_source_v1* source, const std::vector<std::string>& types, Events events);
  ~DataSource();
  DataSource(const DataSource&) = delete;
  DataSource& operator=(const DataSource&) = delete;

  ext_data_control_source_v1* Get() const { return source_; }

 private:
  ext_data_control_source_v1* source_;
  Events events_;
};

// The session's clipboard as data control shows it: ext-data-control, or wlr-data-control, which is the same
// under another name. Called by what the compositor says, so its events must leave no failure.
class DataDevice {
 public:
  struct Events {
    std::function<void(std::shared_ptr<DataOffer>)> selection;  // null: nobody offers anything
    std::function<void()> finished;  // it is of no use any more, and a new connection has to be made
  };

  // Which of the two the compositor offers; null for neither.
  static const WaylandConnection::Global* FindManager(const WaylandConnection& connection);
  // There must be a manager and a seat.
  DataDevice(WaylandConnection& connection, Events events);
  ~DataDevice();
  DataDevice(const DataDevice&) = delete;
  DataDevice& operator=(const DataDevice&) = delete;

  std::unique_ptr<DataSource> MakeSource(const std::vector<std::string>& types, DataSource::Events events);
  void SetSelection(const DataSource* source);  // null clears

 private:
  std::shared_ptr<DataOffer> Take(const ext_data_control_offer_v1* offer);
  void Listen();

  Events events_;
  struct wl_seat* seat_;
  ext_data_control_manager_v1* manager_;
  ext_data_control_device_v1* device_;
  std::list<std::shared_ptr<DataOffer>> fresh_;  // announced, but not yet said what for
};

}  // namespace quillbox
