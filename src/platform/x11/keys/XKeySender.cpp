#include "platform/x11/keys/XKeySender.h"

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

#include "base/RuntimeError.h"
#include "platform/x11/keys/XKeyboardMap.h"
#include "platform/x11/keys/XTypist.h"
#include "platform/xkb/Keysyms.h"

namespace quillbox {
namespace {

using SteadyClock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr int kWaitForFocus = 1000;
constexpr int kWaitForKeys = 1000;  // any keys; one that stays down without being a modifier does no harm
constexpr int kWaitForModifiers = 3000;  // in all
constexpr int kWaitForAnswer = 1000;     // of a program that is asked whether it has caught up
constexpr int kWaitForLookUp = 5000;     // the same, while it needs the spare keys
constexpr int kLookUpTime = 150;         // for programs that can't be asked, before spare keys are taken off
constexpr int kStrokesPerMillisecond = 10;  // that such a program is trusted to take in
constexpr int kLongestLookUp = 1500;
constexpr int kEffectTime = 15;  // for a command to move the focus
constexpr int kEffectAnswer = 200;
constexpr int kEffectBudget = 2000;  // of a whole string
constexpr std::size_t kStrokesPerSync = 16;
constexpr milliseconds kLongestStop{5};  // of the program's own events

// A stroke that changes the keyboard's locks by itself.
bool IsLock(const KeyStroke& stroke) {
  return stroke.special == SpecialKey::CapsLock || stroke.special == SpecialKey::NumLock ||
         stroke.special == SpecialKey::ScrollLock;
}

[[noreturn]] void ThrowDisturbed() {
  throw RuntimeError(errors::kDeviceError,
                     "The keyboard was used or changed while the keys were being typed.");
}

}  // namespace

// The keyboard as the strokes need it, from the first to the last; and everything that must be undone once
// typing has begun, however it ends.
class XKeySender::Session {
 public:
  explicit Session(XKeySender& sender)
      : sender_(sender), typist_(sender.connection_, map_, sender.spareKeys_) {
    TakeOver(sender_.state_.Read());
  }
  ~Session() {
    typist_.ReleaseModifiers();
    sender_.spareKeys_.TakeOff();
    IgnoreFailure([&] { sender_.state_.EndTyping(); });
    sender_.focus_.StopAsking();
    sender_.connection_.Sync();
  }
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  XTypist& Typist() { return typist_; }

  // Types one of the strokes, all of which have been prepared. RuntimeError errors::kDeviceError if the
  // keyboard was disturbed just before the stroke, which came out wrong then, or if it has another layout
  // now, with which strokes come out wrong that have been typed but not yet looked up.
  void Type(std::span<const KeyStroke> strokes, std::size_t index);
  // Whether the person has pressed a modifier, or changed a lock or the group, since the last stroke: Adapt
  // before the next one.
  bool Disturbed() const { return disturbed_; }
  // Waits until the person has let go, and goes on with the keyboard as it is then.
  void Adapt() {
    typist_.ReleaseModifiers();
    sender_.WaitForReleasedKeys();
    TakeOver(sender_.state_.Read());
  }

 private:
  void TakeOver(XKeyboardState::Snapshot keyboard) {
    map_ = XKeyboardMap(sender_.connection_, keyboard.group, keyboard.locked);
    group_ = keyboard.group;
    locked_ = keyboard.locked & map_.NumLock();
    sender_.state_.BeginTyping(keyboard.locked & static_cast<std::uint8_t>(~locked_));
    disturbed_ = false;
  }
  bool IsUndisturbed(const XKeyboardState::Snapshot& keyboard, std::uint8_t held) const {
    return keyboard.held == held && keyboard.locked == locked_ && keyboard.group == group_;
  }

  XKeySender& sender_;
  XKeyboardMap map_;
  XTypist typist_;
  std::uint8_t group_ = 0;
  std::uint8_t locked_ = 0;  // real modifiers that stay locked
  bool disturbed_ = false;
};

void XKeySender::Session::Type(std::span<const KeyStroke> strokes, std::size_t index) {
  xcb_connection_t* const server = sender_.connection_.Get();
  const std::uint8_t held = typist_.Held();
  // No other client comes in between: all of it is one message, and the grab is over when the server has read
  // it.
  xcb_grab_server(server);
  const unsigned before = sender_.state_.Ask();
  typist_.Type(strokes[index]);
  const unsigned behind = sender_.state_.Ask();
  xcb_ungrab_server(server);
  const bool wasRight = IsUndisturbed(sender_.state_.Answer(before), held);
  const XKeyboardState::Snapshot now = sender_.state_.Answer(behind);
  if (!wasRight) ThrowDisturbed();
  if (sender_.connection_.KeyboardWasReplaced()) {
    const XKeyboardMap map(sender_.connection_, group_, locked_);
    if (!typist_.TypesAlike(strokes, map) || !sender_.spareKeys_.Intact()) ThrowDisturbed();
  }
  if (IsLock(strokes[index])) locked_ = now.locked;
  disturbed_ = !IsUndisturbed(now, typist_.Held());
}

XKeySender::XKeySender(Options options)
    : connection_(options.display.empty() ? nullptr : options.display.c_str()),
      state_(connection_),
      spareKeys_(connection_),
      focus_(connection_, std::move(options.isOurs)),
      pause_(std::move(options.pause)) {}

void XKeySender::Recover() {
  if (connection_.Lost() || sending_) return;
  spareKeys_.Recover();
  state_.Recover();
  connection_.Sync();
}

void XKeySender::Send(const Text& keys) {
  std::vector<KeyStroke> strokes = ParseTypeableKeys(keys);
  if (!strokes.empty()) Run([&] { return std::move(strokes); });
}

void XKeySender::SendTo(const KeysFor& keysFor) {
  Run([&] { return ParseTypeableKeys(keysFor(focus_.ClassOf(target_))); });
}

void XKeySender::Run(const std::function<std::vector<KeyStroke>()>& strokesFor) {
  if (sending_) throw RuntimeError(errors::kPermission, "Another key string is being typed.");
  if (connection_.Lost()) throw RuntimeError(errors::kDeviceError, "There is no X server to send keys to.");
  Recover();

  struct Sending {
    explicit Sending(bool& flag) : flag_(flag) { flag_ = true; }
    ~Sending() { flag_ = false; }
    bool& flag_;
  } sending(sending_);
  connection_.KeyboardWasReplaced();  // what was before doesn't matter
  WaitForReleasedKeys();
  WaitForTarget();
  const std::vector<KeyStroke> strokes = strokesFor();
  if (strokes.empty()) return;

  Session session(*this);
  effectBudget_ = kEffectBudget;
  std::span<const KeyStroke> left(strokes);
  while (!left.empty()) {
    const std::size_t count = session.Typist().Prepare(left);
    const std::size_t typed = TypeRound(session, left.first(count));
    session.Typist().ReleaseModifiers();
    WaitUntilTakenIn(typed);
    spareKeys_.TakeOff();
    if (connection_.Lost()) throw RuntimeError(errors::kDeviceError, "The X server has gone away.");
    left = left.subspan(typed);
    if (!left.empty() && session.Disturbed()) session.Adapt();
  }
}

bool XKeySender::WaitFor(const std::function<bool()>& done, int longest, int step) {
  const auto end = SteadyClock::now() + milliseconds(longest);
  for (;;) {
    if (done()) return true;
    if (SteadyClock::now() >= end || connection_.Lost()) return false;
    pause_(step);
  }
}

// The key that started the script is still down as a rule, and would repeat itself into the text.
void XKeySender::WaitForReleasedKeys() {
  WaitFor([this] { return !state_.Read().anyKey; }, kWaitForKeys, 10);
  const auto modifiersReleased = [this] { return state_.Read().held == 0; };
  if (WaitFor(modifiersReleased, kWaitForModifiers - kWaitForKeys, 10)) return;
  throw RuntimeError(errors::kDeviceError, "A modifier key is held down.");
}

bool XKeySender::HasTarget() {
  if (connection_.Lost()) return false;
  return focus_.IsTarget(connection_.Sync());
}

void XKeySender::WaitForTarget() {
  pause_(0);
  const auto found = [this] {
    target_ = connection_.Sync();
    return focus_.IsTarget(target_);
  };
  if (WaitFor(found, kWaitForFocus, 10)) return;
  if (connection_.Lost()) throw RuntimeError(errors::kDeviceError, "The X server has gone away.");
  throw RuntimeError(errors::kDeviceError, "No window of another program has the focus.");
}

std::size_t XKeySender::TypeRound(Session& session, std::span<const KeyStroke> strokes) {
  auto stopped = SteadyClock::now();
  for (std::size_t i = 0; i < strokes.size(); ++i) {
    session.Type(strokes, i);
    if (session.Disturbed()) return i + 1;
    const bool last = i + 1 == strokes.size();
    const bool effect = !last && MayMoveFocus(strokes[i]) && !strokes[i + 1].joined;
    if (effect) WaitForEffect(session.Typist());
    if (last || (!effect && (i + 1) % kStrokesPerSync != 0)) continue;
    FollowFocus(session.Typist());
    if (SteadyClock::now() - stopped < kLongestStop) continue;
    pause_(0);
    stopped = SteadyClock::now();
  }
  return strokes.size();
}

// The keys may have moved the focus themselves, and the next ones are for the new window, unless it is ours.
void XKeySender::FollowFocus(XTypist& typist) {
  const xcb_window_t focus = connection_.Sync();
  if (focus == target_) return;
  if (focus_.IsTarget(focus)) {
    target_ = focus;
    return;
  }
  typist.ReleaseModifiers();
  WaitForTarget();
}

void XKeySender::WaitForEffect(XTypist& typist) {
  if (effectBudget_ <= 0) return;
  const auto start = SteadyClock::now();
  typist.ReleaseModifiers();
  if (focus_.AskCaughtUp()) WaitFor([this] { return focus_.CaughtUp(); }, kEffectAnswer, 1);
  WaitFor([] { return false; }, kEffectTime, 5);
  effectBudget_ -=
      static_cast<int>(std::chrono::duration_cast<milliseconds>(SteadyClock::now() - start).count());
}

// Programs look up what a key means when they come to it: until then the spare keys must keep their meaning.
void XKeySender::WaitUntilTakenIn(std::size_t strokes) {
  connection_.Sync();
  if (focus_.AskCaughtUp()) {
    WaitFor([this] { return focus_.CaughtUp(); }, spareKeys_.Any() ? kWaitForLookUp : kWaitForAnswer, 1);
  } else if (spareKeys_.Any()) {
    const auto time = std::min<std::size_t>(kLookUpTime + strokes / kStrokesPerMillisecond, kLongestLookUp);
    WaitFor([] { return false; }, static_cast<int>(time), 10);
  }
}

}  // namespace quillbox
