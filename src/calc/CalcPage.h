#pragma once

#include "calc/BaseSelector.h"
#include "calc/CalcClipboard.h"
#include "calc/CalcDisplay.h"
#include "calc/CalcFunctions.h"
#include "calc/CalcKeyboard.h"
#include "calc/CalcKeypad.h"
#include "calc/CalcMemory.h"
#include "calc/UnitConversions.h"
#include "core/window/MainWindow.h"

namespace quillbox {

// The Calc page: a calculator that works from left to right, one pending operation at a time.
class CalcPage {
 public:
  CalcPage(MainWindow& window, Norvane& settings, Clipboard& clipboard, SystemInfo& system);

  // The start's step: the calculator's memory comes back.
  void RestoreMemory() { memory.Restore(); }

  CalcDisplay display;
  BaseSelector bases;
  CalcKeypad keypad;
  CalcFunctions functions;
  UnitConversions units;
  CalcMemory memory;
  CalcClipboard clipboardButtons;

 private:
  CalcPage(const Place& place, Norvane& settings, Clipboard& clipboard, SystemInfo& system);

  CalcKeyboard keyboard_;
};

}  // namespace quillbox
