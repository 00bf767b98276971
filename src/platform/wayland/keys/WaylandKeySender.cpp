#include "platform/wayland/keys/WaylandKeySender.h"

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

#include "base/RuntimeError.h"
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
constexpr int kFocusReturns = 200;   // where the compositor doesn't tell who has the focus
constexpr int kNewKeyboard = 500;    // for programs to take part in a seat that had no keyboard yet
constexpr int kEffectTime = 30;      // for a command to move the focus
constexpr int kEffectBudget = 2000;  // of a whole string

// A program that is slow to read has room for about 3000 strokes in its connection; a compositor ends the
// connection of one that has no more. No client can ask whether another has caught up, so there is a pace
// that leaves a busy program some seconds.
constexpr std::size_t kStrokesPerStep = 64;
constexpr milliseconds kStep{100};

// Whether Ctrl or Alt stays down from the stroke before on, which programs may tell from a new press.
bool HoldsCommand(const KeyStroke& stroke) {
  return stroke.joined && (stroke.modifiers & (modifier::kControl | modifier::kAlt)) != 0;
}

}  // namespace

WaylandKeySender::WaylandKeySender(Options options) : options_(std::move(options)) {}

bool WaylandKeySender::Offered() const {
  const WaylandKeyConnection connection(options_.display.empty() ? nullptr : options_.display.c_str());
  return !connection.Lost() && connection.KeyboardManager() && connection.Seat();
}

void WaylandKeySender::Send(const Text& keys) {
  const std::vector<KeyStroke> strokes = ParseKeys(keys);
  if (!std::all_of(strokes.begin(), strokes.end(), CanBeTyped)) {
    throw RuntimeError(errors::kBadCall, "The key string has a character that no key can type.");
  }
  if (strokes.empty()) return;
  if (sending_) throw RuntimeError(errors::kPermission, "Another key string is being typed.");

  struct Sending {
    explicit Sending(bool& flag) : flag_(flag) { flag_ = true; }
    ~Sending() { flag_ = false; }
    bool& flag_;
  } sending(sending_);
  Type(strokes);
}

void WaylandKeySender::Type(std::span<const KeyStroke> strokes) {
  WaylandKeyConnection connection(options_.display.empty() ? nullptr : options_.display.c_str());
  if (connection.Lost()) throw RuntimeError(errors::kDeviceError, "There is no compositor to send keys to.");
  if (!connection.KeyboardManager() || !connection.Seat()) {
    throw RuntimeError(errors::kDeviceError, "The compositor has no virtual keyboard.");
  }
  const WaylandToplevels toplevels(connection, options_.ownId);
  options_.pause(0);
  WaitForTarget(connection, toplevels);
  if (!toplevels.Known()) options_.pause(kFocusReturns);
  TypeAll(connection, toplevels, strokes);
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
  int effectBudget = kEffectBudget;
  auto step = SteadyClock::now();
  for (std::size_t i = 0; i < strokes.size(); ++i) {
    keyboard.Type(strokes[i]);
    if (i + 1 == strokes.size()) break;
    const bool effect = MayMoveFocus(strokes[i]) && !strokes[i + 1].joined && effectBudget > 0;
    if (!effect && (i + 1) % kStrokesPerStep != 0) continue;
    // While we wait nothing is down that needn't be: who is killed then leaves nothing pressed, in clients
    // that get no word of it either.
    if (!HoldsCommand(strokes[i + 1])) keyboard.ReleaseModifiers();
    connection.Sync();
    step += kStep;
    auto wait = std::chrono::ceil<milliseconds>(step - SteadyClock::now()).count();
    if (effect) {
      wait = std::max<decltype(wait)>(wait, kEffectTime);
      effectBudget -= kEffectTime;
    }
    options_.pause(static_cast<int>(std::max<decltype(wait)>(wait, 0)));
    step = std::max(step, SteadyClock::now());
    WaitForTarget(connection, toplevels);
  }
}

}  // namespace quillbox
