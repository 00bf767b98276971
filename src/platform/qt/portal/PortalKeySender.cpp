#include "platform/qt/portal/PortalKeySender.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <chrono>
#include <span>
#include <utility>
#include <vector>

#include "base/RuntimeError.h"
#include "platform/ports/KeyPace.h"
#include "platform/xkb/Keysyms.h"

namespace quillbox {

namespace {

using SteadyClock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kWaitForFocus{1000};
constexpr int kLookAgain = 10;
constexpr int kFocusReturns = 200;  // nobody tells who has the focus

struct ModifierKey {
  std::uint8_t modifier;
  int keysym;
};
constexpr ModifierKey kModifierKeys[] = {{modifier::kShift, XKB_KEY_Shift_L},
                                         {modifier::kControl, XKB_KEY_Control_L},
                                         {modifier::kAlt, XKB_KEY_Alt_L}};

}  // namespace

PortalKeySender::PortalKeySender(Options options)
    : options_(std::move(options)), token_(options_.dataFolder) {}

void PortalKeySender::Send(const Text& keys) {
  std::vector<KeyStroke> strokes = ParseTypeableKeys(keys);
  if (!strokes.empty()) Run([&] { return std::move(strokes); });
}

void PortalKeySender::SendTo(const KeysFor& keysFor) {
  Run([&] { return ParseTypeableKeys(keysFor({})); });
}

void PortalKeySender::Run(const std::function<std::vector<KeyStroke>()>& strokesFor) {
  if (!session_.IsOpen()) Open();
  // Whatever happens, nothing stays pressed; and a session that can be had again without a question doesn't
  // stay open, since desktops show it to the person as long as it does.
  struct Ending {
    PortalKeySender& sender;
    ~Ending() {
      try {
        sender.Hold(0);
      } catch (const RuntimeError& error) {
        Swallow(error);
      }
      if (sender.tokenGiven_) sender.session_.Close();
    }
  } ending{*this};
  WaitForTarget();
  options_.pause(kFocusReturns);
  const std::vector<KeyStroke> strokes = strokesFor();
  KeyPace pace;
  for (std::size_t i = 0; i < strokes.size(); ++i) {
    Type(strokes[i]);
    if (i + 1 == strokes.size() || !pace.WaitsBetween(strokes[i], strokes[i + 1])) continue;
    if (!HoldsCommand(strokes[i + 1])) Hold(0);
    options_.pause(pace.Wait());
    WaitForTarget();
  }
  Hold(0);
}

void PortalKeySender::Open() {
  down_ = 0;
  const std::string token = session_.Open(token_.Read());
  tokenGiven_ = !token.empty();
  // One that isn't replaced is used up.
  token_.Write(token);
}

void PortalKeySender::WaitForTarget() {
  const auto end = SteadyClock::now() + kWaitForFocus;
  while (options_.focusIsOurs()) {
    if (SteadyClock::now() >= end) {
      throw RuntimeError(errors::kDeviceError, "No window of another program has the focus.");
    }
    options_.pause(kLookAgain);
  }
}

void PortalKeySender::Type(const KeyStroke& stroke) {
  // Ctrl and Alt mark a command of their own each time, unless the notation groups the strokes.
  if (!stroke.joined) Hold(down_ & modifier::kShift);
  Hold(stroke.modifiers);
  const int keysym = static_cast<int>(KeysymOf(stroke));
  session_.Key(keysym, true);
  session_.Key(keysym, false);
}

void PortalKeySender::Hold(std::uint8_t modifiers) {
  for (const bool press : {false, true}) {
    for (const ModifierKey& key : kModifierKeys) {
      if (((modifiers & key.modifier) != 0) != press || ((down_ & key.modifier) != 0) == press) continue;
      down_ = static_cast<std::uint8_t>(down_ ^ key.modifier);
      session_.Key(key.keysym, press);
    }
  }
}

}  // namespace quillbox
