#pragma once

#include <chrono>
#include <list>
#include <memory>
#include <string>

#include "base/Text.h"
#include "platform/ports/EventLoop.h"
#include "platform/ports/TextTypes.h"
#include "platform/x11/clipboard/XConnection.h"

namespace quillbox {

// Gives our text to the clients that ask for it while we own the clipboard. Any number of them at once; one
// that stops reading, or goes away, loses its transfer and delays nobody.
class XSelectionServer {
 public:
  static constexpr int kStuckMs = kStuckReaderMs;  // a reader that takes no piece for so long is given up

  XSelectionServer(XConnection& connection, EventLoop& loop) : connection_(connection), loop_(loop) {}
  ~XSelectionServer();
  XSelectionServer(const XSelectionServer&) = delete;
  XSelectionServer& operator=(const XSelectionServer&) = delete;

  // From now on this text is served, as owned since the server time `since`. Readers under way get the old
  // one.
  void Offer(std::shared_ptr<const Text> text, xcb_timestamp_t since);
  // From now on every request is refused. Readers under way get the rest.
  void Withdraw();
  // What a clipboard manager is told to save.
  std::vector<xcb_atom_t> TextTargets() const;

  void OnRequest(const xcb_selection_request_event_t& event);
  void OnPropertyNotify(const xcb_property_notify_event_t& event);
  void OnWindowGone(xcb_window_t window);
  std::size_t Transfers() const { return transfers_.size(); }

 private:
  using Bytes = std::shared_ptr<const std::string>;
  using Clock = std::chrono::steady_clock;
  struct Transfer {
    xcb_window_t requestor;
    xcb_atom_t property;
    xcb_atom_t type;
    Bytes bytes;
    std::size_t offset;
    Clock::time_point moved;
  };

  bool Convert(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property);
  void ConvertMultiple(const xcb_selection_request_event_t& event);
  bool PutText(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type);
  void StartTransfer(Transfer transfer);
  void EndTransfer(std::list<Transfer>::iterator transfer);
  std::list<Transfer>::iterator Find(xcb_window_t requestor, xcb_atom_t property);
  void SendPiece(std::list<Transfer>::iterator transfer);
  void DropStuck();
  void Answer(const xcb_selection_request_event_t& event, xcb_atom_t property);
  Bytes Utf8();
  Bytes Latin1();
  std::size_t PieceBytes() const { return connection_.MaxRequestBytes() / 4; }

  XConnection& connection_;
  EventLoop& loop_;
  std::shared_ptr<const Text> text_;  // null while we own nothing
  xcb_timestamp_t since_ = 0;
  std::weak_ptr<const std::string> utf8_, latin1_;  // shared by the readers of the moment
  std::list<Transfer> transfers_;
  EventLoop::TimerId stuckTimer_ = 0;
};

}  // namespace quillbox
