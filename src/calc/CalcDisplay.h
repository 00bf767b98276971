#pragma once

#include "base/RuntimeError.h"
#include "platform/forms/TextBox.h"
#include "platform/ports/SystemInfo.h"

namespace quillbox {

// The display of the calculator and the hidden texts beside it that are all of its state: a number between
// two steps exists only as its text.
class CalcDisplay {
 public:
  CalcDisplay(const Place& place, SystemInfo& system);

  TextBox Text7;   // what is shown: a number or a message
  TextBox Text8;   // the pending operator: + - x / ^, or empty
  TextBox Text9;   // the left operand, as it was shown
  TextBox Text10;  // "k": the display holds a finished value; empty: a number is being entered
  TextBox Text22;  // "k" after a typed "=", until the next key
  TextBox Text23;  // "got" while the display has the focus

  // The number that is shown. RuntimeError 6 beyond the range.
  double Number() const;
  // Shows a number. RuntimeError 6 if it isn't finite.
  void Show(double value);
  void PutCaretAtEnd();

  bool IsFinished() const { return Text10.GetText() == u"k"; }
  void SetFinished() { Text10.SetText(u"k"); }

  // The pending operation's result goes to the display; RuntimeError if it has none.
  void DoPendingOperation();
  void ShowCalcError();

  // Runs a handler that enters the error state when a step of it fails.
  template <class Steps>
  void OrShowCalcError(Steps&& steps) {
    try {
      steps();
    } catch (const RuntimeError&) {
      ShowCalcError();
    }
  }

 private:
  void Text7_Change();

  SystemInfo& system_;
};

// The base to the exponent; 0 to the power 0 is 1. RuntimeError 5 where there is no real result. A result
// beyond the range is infinite.
double Power(double base, double exponent);

// RuntimeError 11 if the divisor is 0.
double Quotient(double dividend, double divisor);

// The text with its first comma made a point.
Text WithPoint(Text text);

}  // namespace quillbox
