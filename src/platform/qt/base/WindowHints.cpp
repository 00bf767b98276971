#include "platform/qt/base/WindowHints.h"

#include <xcb/xcb.h>

#include <QApplication>
#include <QGuiApplication>
#include <QWidget>
#include <QWindow>
#include <cstdlib>
#include <cstring>

namespace quillbox {

namespace {

xcb_connection_t* Connection() {
  auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  return x11 ? x11->connection() : nullptr;
}

xcb_atom_t Atom(xcb_connection_t* connection, const char* name) {
  xcb_intern_atom_reply_t* const reply = xcb_intern_atom_reply(
      connection, xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name),
      nullptr);
  const xcb_atom_t atom = reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
  std::free(reply);
  return atom;
}

void Ask(QWidget& window, const char* message, std::uint32_t first, std::uint32_t second) {
  xcb_connection_t* const connection = Connection();
  if (!connection || !window.windowHandle()) return;
  xcb_client_message_event_t event = {};
  event.response_type = XCB_CLIENT_MESSAGE;
  event.format = 32;
  // Qt may make the window anew when it comes back; the widget's own number stays that of the first one.
  event.window = static_cast<xcb_window_t>(window.windowHandle()->winId());
  event.type = Atom(connection, message);
  event.data.data32[0] = first;
  event.data.data32[1] = second;
  // From the person, not from a program that pushes itself forward.
  if (std::strcmp(message, "_NET_WM_STATE") == 0) event.data.data32[3] = 2;
  const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
  xcb_send_event(connection, 0, root,
                 XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                 reinterpret_cast<const char*>(&event));
  xcb_flush(connection);
}

// As it hides a window Qt forgets that it is active, but not at once that it has the focus. One that comes
// back within that moment would get the keys, and be drawn and told as if it didn't.
void FollowKeptFocus(QWidget& window) {
  const bool kept = window.windowHandle() && QGuiApplication::focusWindow() == window.windowHandle();
  QT_WARNING_PUSH
  QT_WARNING_DISABLE_DEPRECATED
  if (kept && !window.isActiveWindow()) QApplication::setActiveWindow(&window);
  QT_WARNING_POP
}

// A desktop under Wayland shows itself busy until the program that it has given a token to has come up. A
// native window hands the token back with its activation; an X11 window tells it in the words of X11's
// startup notification, in pieces of a message's length, the last one ended by a NUL.
void TellHasComeUp() {
  constexpr const char* kToken = "XDG_ACTIVATION_TOKEN";
  xcb_connection_t* const connection = Connection();
  const QByteArray token = qgetenv(kToken);
  if (!connection || token.isEmpty()) return;
  qunsetenv(kToken);
  const QByteArray text = "remove: ID=" + token + '\0';
  const xcb_screen_t& screen = *xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
  const xcb_window_t teller = xcb_generate_id(connection);
  xcb_create_window(connection, XCB_COPY_FROM_PARENT, teller, screen.root, 0, 0, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
  xcb_client_message_event_t piece = {};
  piece.response_type = XCB_CLIENT_MESSAGE;
  piece.format = 8;
  piece.window = teller;
  piece.type = Atom(connection, "_NET_STARTUP_INFO_BEGIN");
  for (qsizetype at = 0; at < text.size(); at += qsizetype{sizeof piece.data.data8}) {
    const QByteArray part =
        text.mid(at, sizeof piece.data.data8).leftJustified(sizeof piece.data.data8, '\0');
    std::memcpy(piece.data.data8, part.constData(), sizeof piece.data.data8);
    xcb_send_event(connection, 0, screen.root, XCB_EVENT_MASK_PROPERTY_CHANGE,
                   reinterpret_cast<const char*>(&piece));
    piece.type = Atom(connection, "_NET_STARTUP_INFO");
  }
  xcb_destroy_window(connection, teller);
  xcb_flush(connection);
}

}  // namespace

bool WindowsHavePlaces() { return !QGuiApplication::platformName().startsWith(QLatin1String("wayland")); }

void SetAbove(QWidget& window, bool above) {
  if (!WindowsHavePlaces()) return;
  if (window.windowHandle()) {
    window.windowHandle()->setFlag(Qt::WindowStaysOnTopHint, above);
  } else {
    window.setWindowFlag(Qt::WindowStaysOnTopHint, above);
  }
}

void SetSkipTaskbar(QWidget& window, bool skip) {
  xcb_connection_t* const connection = Connection();
  if (!connection) return;
  const xcb_atom_t skipTaskbar = Atom(connection, "_NET_WM_STATE_SKIP_TASKBAR");
  if (window.isVisible()) return Ask(window, "_NET_WM_STATE", skip ? 1 : 0, skipTaskbar);
  window.winId();  // makes it
  // A hidden window has no other state: what it comes with is read from its flags when it is mapped, and
  // added to this.
  xcb_change_property(connection, XCB_PROP_MODE_REPLACE,
                      static_cast<xcb_window_t>(window.windowHandle()->winId()),
                      Atom(connection, "_NET_WM_STATE"), XCB_ATOM_ATOM, 32, skip ? 1 : 0, &skipTaskbar);
}

void ActivateWindow(QWidget& window) {
  constexpr std::uint32_t kFromPerson = 2;
  Ask(window, "_NET_ACTIVE_WINDOW", kFromPerson, XCB_CURRENT_TIME);
  window.raise();
  // A native window has no other way. The right to come to the front is a token that the tray has handed over
  // with the click, or the launcher with the start; Qt takes it from its environment.
  if (!WindowsHavePlaces() && window.windowHandle()) window.windowHandle()->requestActivate();
  FollowKeptFocus(window);
  TellHasComeUp();
}

}  // namespace quillbox
