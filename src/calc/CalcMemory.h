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

 private:
  void Command35_Click();  // M
  void Command38_Click();  // MR
  void Command39_Click();  // MC
  void EnableRecall(bool enabled);

  CalcDisplay& display_;
  Norvane& settings_;
  CommandButton Command35;
  CommandButton Command38;
  CommandButton Command39;
};

}  // namespace quillbox
