#include "platform/ports/KeyPace.h"

#include <algorithm>

namespace quillbox {
namespace {

using std::chrono::milliseconds;

constexpr int kStrokesPerStep = 64;
constexpr milliseconds kStep{100};
constexpr milliseconds kEffectTime{30};  // for a command to move the focus

}  // namespace

bool KeyPace::WaitsBetween(const KeyStroke& stroke, const KeyStroke& next) {
  effect_ = MayMoveFocus(stroke) && !next.joined && effectBudget_ > 0;
  return ++inStep_ == kStrokesPerStep || effect_;
}

int KeyPace::Wait() {
  const auto now = Clock::now();
  // A wait that took longer than it should is no reason to hurry afterwards.
  auto end = std::max(step_, now - kStep) + kStep * inStep_ / kStrokesPerStep;
  if (effect_) {
    end = std::max(end, now + kEffectTime);
    effectBudget_ -= static_cast<int>(kEffectTime.count());
  }
  inStep_ = 0;
  step_ = end;
  return static_cast<int>(std::max(std::chrono::ceil<milliseconds>(end - now), milliseconds(0)).count());
}

bool HoldsCommand(const KeyStroke& stroke) {
  return stroke.joined && (stroke.modifiers & (modifier::kControl | modifier::kAlt)) != 0;
}

}  // namespace quillbox
