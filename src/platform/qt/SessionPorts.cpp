#include "platform/qt/SessionPorts.h"

#include <xcb/xcb.h>

#include <cstdlib>
#include <string>
#include <string_view>

#include "base/RuntimeError.h"
#include "platform/qt/SessionKeySender.h"
#include "platform/x11/clipboard/XClipboard.h"

namespace quillbox {

namespace {

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

std::string WhyNoXServer() {
  const std::string_view display = Environment("DISPLAY");
  if (display.empty()) return "there is no X server: DISPLAY is not set";
  return "the X server of DISPLAY=" + std::string(display) + " cannot be reached";
}

}  // namespace

void RequireDisplay() {
  // Whoever chooses another of Qt's platforms than X11 knows what for.
  const std::string_view platform = Environment("QT_QPA_PLATFORM");
  if (!platform.empty() && !platform.starts_with("xcb")) return;
  if (!HasXServer()) throw RuntimeError(errors::kDeviceError, WhyNoXServer());
}

std::unique_ptr<SessionClipboard> ChooseClipboard(EventLoop& loop) {
  if (!HasXServer()) throw RuntimeError(errors::kDeviceError, WhyNoXServer());
  return std::make_unique<XClipboard>(loop);
}

std::unique_ptr<KeySender> ChooseKeySender(const std::function<std::string()>& dataFolder) {
  return std::make_unique<SessionKeySender>(dataFolder);
}

}  // namespace quillbox
