#include "platform/qt/SessionPorts.h"

#include <wayland-client.h>
#include <xcb/xcb.h>

#include <QGuiApplication>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/RuntimeError.h"
#include "base/Trace.h"
#include "platform/qt/SessionKeySender.h"
#include "platform/qt/portal/PortalGlobalKey.h"
#include "platform/wayland/clipboard/WaylandClipboard.h"
#include "platform/x11/clipboard/XClipboard.h"
#include "platform/x11/clipboard/XDropReader.h"
#include "platform/x11/keys/XGlobalKey.h"

namespace quillbox {

namespace {

constexpr const char* kQtPlatform = "QT_QPA_PLATFORM";

std::string_view Environment(const char* name) {
  const char* const value = std::getenv(name);
  return value ? value : "";
}

bool HasXServer() {
  xcb_connection_t* const connection = xcb_connect(nullptr, nullptr);
  const bool reached = xcb_connection_has_error(connection) == 0;
  xcb_disconnect(connection);
  return reached;
}

bool HasCompositor() {
  if (!Environment("WAYLAND_SOCKET").empty()) return true;  // to look would take it away from Qt
  wl_display* const display = wl_display_connect(nullptr);
  if (display) wl_display_disconnect(display);
  return display;
}

std::string WhyNoXServer() {
  const std::string_view display = Environment("DISPLAY");
  if (display.empty()) return "there is no X server: DISPLAY is not set";
  return "the X server of DISPLAY=" + std::string(display) + " cannot be reached";
}

std::string WhyNoCompositor() {
  const std::string_view display = Environment("WAYLAND_DISPLAY");
  if (display.empty()) return "there is no Wayland compositor: WAYLAND_DISPLAY is not set";
  return "the compositor of WAYLAND_DISPLAY=" + std::string(display) + " cannot be reached";
}

}  // namespace

DisplayChoice::DisplayChoice() {
  // Whoever chooses one of Qt's platforms knows what for.
  if (!Environment(kQtPlatform).empty()) {
    if (Environment(kQtPlatform).starts_with("xcb") && !HasXServer())
      throw RuntimeError(errors::kDeviceError, WhyNoXServer());
    if (Environment(kQtPlatform).starts_with("wayland") && !HasCompositor())
      throw RuntimeError(errors::kDeviceError, WhyNoCompositor());
    return;
  }
  // Place, always on top and the task bar entry are X11's: a window of a Wayland session is an X11 one, too,
  // where it can be.
  const bool x11 = HasXServer();
  if (!x11 && !HasCompositor())
    throw RuntimeError(errors::kDeviceError, WhyNoXServer() + ", and " + WhyNoCompositor());
  setenv(kQtPlatform, x11 ? "xcb" : "wayland", 1);
  chosen_ = true;
  Trace({"windows: ", x11 ? "on the X server" : "natively on Wayland, there being no X server"});
}

DisplayChoice::~DisplayChoice() {
  // Not for the programs that we start.
  if (chosen_) unsetenv(kQtPlatform);
}

std::unique_ptr<SessionClipboard> ChooseClipboard(EventLoop& loop) {
  std::string whyNotNatively;
  try {
    auto clipboard = std::make_unique<WaylandClipboard>(loop);
    Trace({"clipboard: the Wayland compositor's, which offers data control"});
    return clipboard;
  } catch (const RuntimeError& error) {
    whyNotNatively = error.what();
  }
  // Under XWayland, too: where the compositor keeps data control from us, its X server may show us all.
  if (!HasXServer()) throw RuntimeError(errors::kDeviceError, WhyNoXServer() + ", and " + whyNotNatively);
  Trace({"clipboard: the X server's, because ", whyNotNatively});
  return std::make_unique<XClipboard>(loop);
}

std::unique_ptr<DropText> ChooseDropText(EventLoop& loop) {
  if (QGuiApplication::platformName() != QLatin1String("xcb")) return nullptr;
  try {
    return std::make_unique<XDropReader>(loop);
  } catch (const RuntimeError& error) {
    Trace({"drops: by the toolkit, because ", error.what()});
    return nullptr;
  }
}

std::unique_ptr<KeySender> ChooseKeySender(const std::function<std::string()>& dataFolder) {
  return std::make_unique<SessionKeySender>(dataFolder);
}

bool IsWayland() {
  return !Environment("WAYLAND_DISPLAY").empty() || Environment("XDG_SESSION_TYPE") == "wayland";
}

std::unique_ptr<GlobalKey> ChooseGlobalKey(EventLoop& loop) {
  if (IsWayland()) return std::make_unique<PortalGlobalKey>();
  return std::make_unique<XGlobalKey>(loop);
}

}  // namespace quillbox
