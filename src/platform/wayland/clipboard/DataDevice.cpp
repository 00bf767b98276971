#include "platform/wayland/clipboard/DataDevice.h"

#include <unistd.h>

#include <algorithm>
#include <utility>

#include "ext-data-control-v1.h"

namespace quillbox {

namespace {

constexpr const char* kExtManager = "ext_data_control_manager_v1";
constexpr const char* kWlrManager = "zwlr_data_control_manager_v1";
// The second version of wlr's adds the selection by the mouse, which would only wake us.
constexpr std::uint32_t kVersion = 1;
constexpr std::size_t kMostFresh = 8;

// Both protocols are the same messages in the same order; what an interface is called is only said when its
// manager is bound.
void* BindManager(WaylandConnection& connection) {
  const WaylandConnection::Global& global = *DataDevice::FindManager(connection);
  static const wl_interface wlr = [] {
    wl_interface renamed = ext_data_control_manager_v1_interface;
    renamed.name = kWlrManager;
    return renamed;
  }();
  const bool ext = global.interface == kExtManager;
  return connection.Bind(global, ext ? ext_data_control_manager_v1_interface : wlr, kVersion);
}

}  // namespace

DataOffer::DataOffer(ext_data_control_offer_v1* offer) : offer_(offer) {
  static constexpr ext_data_control_offer_v1_listener kListener = {
      .offer = [](void* self, ext_data_control_offer_v1*,
                  const char* type) { static_cast<DataOffer*>(self)->types_.Add(type); },
  };
  ext_data_control_offer_v1_add_listener(offer_, &kListener, this);
}

DataOffer::~DataOffer() { ext_data_control_offer_v1_destroy(offer_); }

void DataOffer::Receive(const std::string& type, int fd) const {
  ext_data_control_offer_v1_receive(offer_, type.c_str(), fd);
}

DataSource::DataSource(ext_data_control_source_v1* source, const std::vector<std::string>& types,
                       Events events)
    : source_(source), events_(std::move(events)) {
  static constexpr ext_data_control_source_v1_listener kListener = {
      .send = [](void* self, ext_data_control_source_v1*, const char* type,
                 std::int32_t fd) { static_cast<DataSource*>(self)->events_.send(type, fd); },
      .cancelled =
          [](void* self, ext_data_control_source_v1*) {
            // May be the end of the object.
            const std::function<void()> cancelled = static_cast<DataSource*>(self)->events_.cancelled;
            cancelled();
          },
  };
  ext_data_control_source_v1_add_listener(source_, &kListener, this);
  for (const std::string& type : types) ext_data_control_source_v1_offer(source_, type.c_str());
}

DataSource::~DataSource() { ext_data_control_source_v1_destroy(source_); }

const WaylandConnection::Global* DataDevice::FindManager(const WaylandConnection& connection) {
  const WaylandConnection::Global* const ext = connection.Find(kExtManager);
  return ext ? ext : connection.Find(kWlrManager);
}

DataDevice::DataDevice(WaylandConnection& connection, Events events)
    : events_(std::move(events)),
      seat_(static_cast<wl_seat*>(
          connection.Bind(*connection.Find(wl_seat_interface.name), wl_seat_interface, 1))),
      manager_(static_cast<ext_data_control_manager_v1*>(BindManager(connection))),
      device_(ext_data_control_manager_v1_get_data_device(manager_, seat_)) {
  Listen();
}

DataDevice::~DataDevice() {
  fresh_.clear();
  ext_data_control_device_v1_destroy(device_);
  ext_data_control_manager_v1_destroy(manager_);
  wl_seat_destroy(seat_);
}

void DataDevice::Listen() {
  static constexpr ext_data_control_device_v1_listener kListener = {
      .data_offer =
          [](void* data, ext_data_control_device_v1*, ext_data_control_offer_v1* offer) {
            auto& fresh = static_cast<DataDevice*>(data)->fresh_;
            fresh.push_back(std::make_shared<DataOffer>(offer));
            if (fresh.size() > kMostFresh) fresh.pop_front();
          },
      .selection =
          [](void* data, ext_data_control_device_v1*, ext_data_control_offer_v1* offer) {
            DataDevice& self = *static_cast<DataDevice*>(data);
            self.events_.selection(self.Take(offer));
          },
      .finished = [](void* data,
                     ext_data_control_device_v1*) { static_cast<DataDevice*>(data)->events_.finished(); },
      .primary_selection =
          [](void* data, ext_data_control_device_v1*, ext_data_control_offer_v1* offer) {
            static_cast<DataDevice*>(data)->Take(offer);  // and let it go
          },
  };
  ext_data_control_device_v1_add_listener(device_, &kListener, this);
}

std::shared_ptr<DataOffer> DataDevice::Take(const ext_data_control_offer_v1* offer) {
  const auto found =
      std::find_if(fresh_.begin(), fresh_.end(), [offer](const auto& each) { return each->Is(offer); });
  if (found == fresh_.end()) return nullptr;
  std::shared_ptr<DataOffer> taken = std::move(*found);
  fresh_.erase(found);
  return taken;
}

std::unique_ptr<DataSource> DataDevice::MakeSource(const std::vector<std::string>& types,
                                                   DataSource::Events events) {
  return std::make_unique<DataSource>(ext_data_control_manager_v1_create_data_source(manager_), types,
                                      std::move(events));
}

void DataDevice::SetSelection(const DataSource* source) {
  ext_data_control_device_v1_set_selection(device_, source ? source->Get() : nullptr);
}

}  // namespace quillbox
