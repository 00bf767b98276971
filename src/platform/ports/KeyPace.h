#pragma once

#include <chrono>

#include "platform/ports/KeyNotation.h"

namespace quillbox {

// When a sender that can't ask a program whether it has caught up waits between two strokes. A program that
// is slow to read has room for some thousands of strokes in its connection, and a compositor ends the
// connection of one that has no more: the pace leaves a busy program 5 s. Few large writes take less of that
// room than many small ones.
class KeyPace {
 public:
  // Whether to wait between two strokes; called for each pair in turn. A stroke that may move the focus is
  // given time for its effect, up to a limit for the whole string.
  bool WaitsBetween(const KeyStroke& stroke, const KeyStroke& next);
  // How long, in milliseconds, from now.
  int Wait();

 private:
  using Clock = std::chrono::steady_clock;

  int inStep_ = 0;  // strokes since the last wait
  bool effect_ = false;
  int effectBudget_ = 2000;  // milliseconds that may still be spent on effects
  Clock::time_point step_ = Clock::now();
};

// Whether Ctrl or Alt stays down from the stroke before on, which programs tell from a new press.
bool HoldsCommand(const KeyStroke& stroke);

}  // namespace quillbox
