#include "platform/wayland/keys/WaylandKeySender.h"

#include <chrono>
#include <utility>
#include <vector>

#include "base/RuntimeError.h"
#include "platform/ports/KeyPace.h"
#include "platform/wayland/keys/VirtualKeyboard.h"
#include "platform/wayland/keys/WaylandKeyConnection.h"
#include "platform/wayland/keys/WaylandToplevels.h"
#include "platform/xkb/Keysyms.h"

namespace quillbox {
namespace {

using SteadyClock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds kWaitForFocus{1000};
constexpr int kLookAgain = 10;
constexpr int kFocusReturns = 200;  // where the compositor doesn't tell who has the focus
constexpr int kNewKeyboard = 500;   // for programs to take part in a seat that had no keyboard yet

}  // namespace

WaylandKeySender::WaylandKeySender(Options options) : options_(std::move(options)) {}

bool WaylandKeySender::Offered() const {
  const WaylandKeyConnection connection(options_.display.empty() ? nullptr : options_.display.c_str());
  return !connection.Lost() && connection.KeyboardManager() && connection.Seat();
}

void WaylandKeySender::Send(const Text& keys) {
  std::vector<KeyStroke> strokes = ParseTypeableKeys(keys);
  if (!strokes.empty()) Type([&](const WaylandToplevels&) { return std::move(strokes); });
}

void WaylandKeySender::SendTo(const KeysFor& keysFor) {
  Type(
      [&](const WaylandToplevels& toplevels) { return ParseTypeableKeys(keysFor(toplevels.OtherActive())); });
}

void WaylandKeySender::Type(
    const std::function<std::vector<KeyStroke>(const WaylandToplevels&)>& strokesFor) {
  WaylandKeyConnection connection(options_.display.empty() ? nullptr : options_.display.c_str());
  if (connection.Lost()) throw RuntimeError(errors::kDeviceError, "There is no compositor to send keys to.");
  if (!connection.KeyboardManager() || !connection.Seat()) {
    throw RuntimeError(errors::kDeviceError, "The compositor has no virtual keyboard.");
  }
  const WaylandToplevels toplevels(connection, options_.ownId);
  options_.pause(0);
  WaitForTarget(connection, toplevels);
  if (!toplevels.Known()) options_.pause(kFocusReturns);
  const std::vector<KeyStroke> strokes = strokesFor(toplevels);
  if (!strokes.empty()) TypeAll(connection, toplevels, strokes);
}

void WaylandKeySender::WaitForTarget(WaylandKeyConnection& connection, const WaylandToplevels& toplevels) {
  const auto end = SteadyClock::now() + kWaitForFocus;
  const auto found = [&] {
    connection.Sync();
    return !options_.focusIsOurs() && (!toplevels.Known() || toplevels.OtherIsActive());
  };
  while (!found()) {
    if (connection.Lost()) throw RuntimeError(errors::kDeviceError, "The compositor has gone away.");
    if (SteadyClock::now() >= end) {
      throw RuntimeError(errors::kDeviceError, "No window of another program has the focus.");
    }
    options_.pause(kLookAgain);
  }
}

void WaylandKeySender::TypeAll(WaylandKeyConnection& connection, const WaylandToplevels& toplevels,
                               std::span<const KeyStroke> strokes) {
  const bool first = !connection.SeatHasKeyboard();
  VirtualKeyboard keyboard(connection, strokes);
  connection.Sync();
  if (first) options_.pause(kNewKeyboard);
  KeyPace pace;
  for (std::size_t i = 0; i < strokes.size(); ++i) {
    keyboard.Type(strokes[i]);
    if (i + 1 == strokes.size() || !pace.WaitsBetween(strokes[i], strokes[i + 1])) continue;
    // While we wait nothing is down that needn't be: who is killed then leaves nothing pressed, in clients
    // that get no word of it either.
    if (!HoldsCommand(strokes[i + 1])) keyboard.ReleaseModifiers();
    connection.Sync();
    options_.pause(pace.Wait());
    WaitForTarget(connection, toplevels);
  }
  connection.Sync();
  if (connection.Lost()) throw RuntimeError(errors::kDeviceError, "The compositor has gone away.");
}

}  // namespace quillbox
