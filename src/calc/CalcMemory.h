#pragma once

#include "calc/CalcDisplay.h"
#include "core/settings/Norvane.h"
#include "platform/forms/CommandButton.h"

namespace quillbox {

// One number that survives the program, kept in the settings.
class CalcMemory {
 public:
  CalcMemory(const Place& place, CalcDisplay& display, Norvane& settings);

  // At start: the buttons that need a stored number come on if there is one.
  void Restore();

  CommandButton Command35;  // M: keeps the shown number
  CommandButton Command38;  // MR: shows the kept one
  CommandButton Command39;  // MC: forgets it

 private:
  void Command35_Click();
  void Command38_Click();
  void Command39_Click();
  void EnableRecall(bool enabled);

  CalcDisplay& display_;
  Norvane& settings_;
};

}  // namespace quillbox
