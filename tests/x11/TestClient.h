#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <cstring>
#include <map>
#include <stdexcept>
#include <string>

#include "platform/x11/server/XReply.h"
#include "platform/x11/server/XServer.h"
#include "x11/PollEventLoop.h"

namespace quillbox::test {

// Another program on the X server: a connection of its own, served by the test's event loop.
class TestClient {
 public:
  explicit TestClient(PollEventLoop& loop) : loop_(loop), connection_(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(connection_)) throw std::runtime_error("these tests need an X server");
    window_ = xcb_generate_id(connection_);
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection_, 0, window_, Root(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    loop_.Watch(xcb_get_file_descriptor(connection_), [this] { Work(); });
    loop_.BeforeWait(this, [this] { Work(); });
  }
  virtual ~TestClient() { Quit(); }
  TestClient(const TestClient&) = delete;
  TestClient& operator=(const TestClient&) = delete;

  xcb_connection_t* Connection() const { return connection_; }
  xcb_window_t Window() const { return window_; }
  xcb_window_t Root() const { return RootOf(connection_, 0); }
  xcb_atom_t Atom(const std::string& name) {
    xcb_atom_t& atom = atoms_[name];
    if (!atom) atom = AtomOf(connection_, name);
    return atom;
  }
  std::string Name(xcb_atom_t atom) {
    const XReply<xcb_get_atom_name_reply_t> reply(
        xcb_get_atom_name_reply(connection_, xcb_get_atom_name(connection_, atom), nullptr));
    if (!reply) return "None";
    return {xcb_get_atom_name_name(reply.get()),
            static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get()))};
  }
  xcb_window_t OwnerOf(const std::string& selection) {
    const auto cookie = xcb_get_selection_owner(connection_, Atom(selection));
    return XReply<xcb_get_selection_owner_reply_t>(
               xcb_get_selection_owner_reply(connection_, cookie, nullptr))
        ->owner;
  }
  void SetOwner(const std::string& selection, xcb_window_t owner) {
    xcb_set_selection_owner(connection_, owner, Atom(selection), XCB_CURRENT_TIME);
    Sync();
  }
  void DestroyWindow(xcb_window_t window) {
    xcb_destroy_window(connection_, window);
    Sync();
  }
  // Returns when the server has done all that was asked of it so far.
  void Sync() {
    XReply<xcb_get_input_focus_reply_t>(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
  }
  // The program ends: its connection closes.
  void Quit() {
    if (!connection_) return;
    // A connection that closes with answers unread loses what it has asked for last: a round trip first.
    Sync();
    loop_.NoLongerBeforeWait(this);
    loop_.Unwatch(xcb_get_file_descriptor(connection_));
    xcb_disconnect(connection_);
    connection_ = nullptr;
  }
  bool Running() const { return connection_ != nullptr; }

 protected:
  virtual void OnEvent(const xcb_generic_event_t&) {}
  // Answers a request for a selection: it stands in the property now, or nowhere.
  void Notify(const xcb_selection_request_event_t& request, xcb_atom_t property) {
    xcb_selection_notify_event_t answer{
        XCB_SELECTION_NOTIFY, 0,       0, request.time, request.requestor, request.selection,
        request.target,       property};
    char wire[32] = {};
    std::memcpy(wire, &answer, sizeof answer);
    xcb_send_event(connection_, 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, wire);
    xcb_flush(connection_);
  }
  // What stands in a property, and is deleted there if that is wanted; null for none.
  XReply<xcb_get_property_reply_t> Property(xcb_window_t window, xcb_atom_t property, bool take) {
    const auto cookie =
        xcb_get_property(connection_, take, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, 16 * 1024 * 1024);
    return XReply<xcb_get_property_reply_t>(xcb_get_property_reply(connection_, cookie, nullptr));
  }
  static std::string BytesOf(const xcb_get_property_reply_t& reply) {
    return {static_cast<const char*>(xcb_get_property_value(&reply)),
            static_cast<std::size_t>(xcb_get_property_value_length(&reply))};
  }

  PollEventLoop& loop_;

 private:
  void Work() {
    while (connection_) {
      const XReply<xcb_generic_event_t> event(xcb_poll_for_event(connection_));
      if (!event) break;
      OnEvent(*event);
    }
    if (connection_) xcb_flush(connection_);
  }

  xcb_connection_t* connection_;
  xcb_window_t window_;
  std::map<std::string, xcb_atom_t> atoms_;
};

}  // namespace quillbox::test
