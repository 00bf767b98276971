#include "platform/qt/SessionKeySender.h"

#include <QGuiApplication>
#include <QWidget>

#include "base/RuntimeError.h"
#include "base/Trace.h"
#include "platform/qt/SessionPorts.h"
#include "platform/qt/ports/QtEventLoop.h"
#include "platform/xkb/Keysyms.h"

namespace quillbox {

namespace {

void Pause(int milliseconds) { QtEventLoop::Pause(milliseconds); }

bool FocusIsOurs() { return QGuiApplication::focusWindow() != nullptr; }

// As the compositor has it of our windows.
std::string OwnId() {
  const bool x11 = QGuiApplication::platformName() == QLatin1String("xcb");
  return (x11 ? QGuiApplication::applicationName() : QGuiApplication::desktopFileName()).toStdString();
}

}  // namespace

SessionKeySender::SessionKeySender(const std::function<std::string()>& dataFolder)
    : wayland_({.display = {}, .pause = Pause, .focusIsOurs = FocusIsOurs, .ownId = OwnId()}),
      portal_({.dataFolder = dataFolder, .pause = Pause, .focusIsOurs = FocusIsOurs}),
      x11_({.display = {}, .pause = Pause, .isOurs = [](xcb_window_t window) {
              return QWidget::find(window) != nullptr;
            }}) {}

std::pair<KeySender&, const char*> SessionKeySender::Choose() {
  if (!IsWayland()) return {x11_, "XTEST, the session is X11"};
  if (wayland_.Offered()) return {wayland_, "a virtual keyboard, which the compositor offers"};
  if (portal_.Offered()) return {portal_, "the desktop's portal, there being no virtual keyboard"};
  if (x11_.HasTarget()) return {x11_, "XTEST, there being neither virtual keyboard nor portal"};
  throw RuntimeError(
      errors::kDeviceError,
      "This session has no way to type keys into other windows: its compositor offers no virtual "
      "keyboard, and its desktop no portal for remote control.");
}

void SessionKeySender::Send(const Text& keys) {
  // Nobody is asked for a string that can't be typed anyway.
  if (!ParseTypeableKeys(keys).empty()) Through([&](KeySender& way) { way.Send(keys); });
}

void SessionKeySender::SendTo(const KeysFor& keysFor) {
  Through([&](KeySender& way) { way.SendTo(keysFor); });
}

void SessionKeySender::Through(const std::function<void(KeySender&)>& send) {
  if (sending_) throw RuntimeError(errors::kPermission, "Other keys are being typed.");
  struct Sending {
    bool& flag;
    ~Sending() { flag = false; }
  } sending{sending_ = true};
  try {
    const auto [way, reason] = Choose();
    Trace({"keys: through ", reason});
    send(way);
  } catch (const RuntimeError& error) {
    Trace({"keys: ", error.what()});
    throw;
  }
}

}  // namespace quillbox
