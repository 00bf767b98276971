#include "x11/TestClient.h"

#include <cstring>
#include <stdexcept>

namespace quillbox::test {

TestClient::TestClient(PollEventLoop& loop) : loop_(loop), connection_(xcb_connect(nullptr, nullptr)) {
  if (xcb_connection_has_error(connection_)) throw std::runtime_error("these tests need an X server");
  window_ = xcb_generate_id(connection_);
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
  xcb_create_window(connection_, 0, window_, root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                    XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
  loop_.Watch(xcb_get_file_descriptor(connection_), [this] { Work(); });
  loop_.BeforeWait(this, [this] { Work(); });
}

TestClient::~TestClient() { Quit(); }

void TestClient::Quit() {
  if (!connection_) return;
  // A connection that closes with answers unread loses what it has asked for last: a round trip first.
  Sync();
  loop_.NoLongerBeforeWait(this);
  loop_.Unwatch(xcb_get_file_descriptor(connection_));
  xcb_disconnect(connection_);
  connection_ = nullptr;
}

void TestClient::Sync() {
  Malloced(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

void TestClient::Work() {
  while (connection_) {
    const auto event = Malloced(xcb_poll_for_event(connection_));
    if (!event) break;
    OnEvent(*event);
  }
  if (connection_) xcb_flush(connection_);
}

void TestClient::DestroyWindow() {
  xcb_destroy_window(connection_, window_);
  Sync();
}

void TestClient::Notify(const xcb_selection_request_event_t& request, xcb_atom_t property) {
  xcb_selection_notify_event_t answer{};
  answer.response_type = XCB_SELECTION_NOTIFY;
  answer.time = request.time;
  answer.requestor = request.requestor;
  answer.selection = request.selection;
  answer.target = request.target;
  answer.property = property;
  char wire[32] = {};
  std::memcpy(wire, &answer, sizeof answer);
  xcb_send_event(connection_, 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, wire);
  xcb_flush(connection_);
}

std::unique_ptr<xcb_get_property_reply_t, void (*)(void*)> TestClient::Property(xcb_window_t window,
                                                                                xcb_atom_t property,
                                                                                bool take) {
  const auto cookie =
      xcb_get_property(connection_, take, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, 16 * 1024 * 1024);
  return Malloced(xcb_get_property_reply(connection_, cookie, nullptr));
}

xcb_atom_t TestClient::Atom(const std::string& name) {
  xcb_atom_t& atom = atoms_[name];
  if (!atom) {
    const auto cookie =
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    atom = Malloced(xcb_intern_atom_reply(connection_, cookie, nullptr))->atom;
  }
  return atom;
}

std::string TestClient::Name(xcb_atom_t atom) {
  const auto reply =
      Malloced(xcb_get_atom_name_reply(connection_, xcb_get_atom_name(connection_, atom), nullptr));
  if (!reply) return "?";
  return {xcb_get_atom_name_name(reply.get()),
          static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get()))};
}

}  // namespace quillbox::test
