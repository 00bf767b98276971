#pragma once

#include "platform/forms/Label.h"
#include "platform/forms/TextBox.h"
#include "timer/TimerState.h"

namespace quillbox {

// Hours, minutes and seconds: a time that is left, or a time of day; and the values from which the timer was
// started last. What a person puts in is brought into its limits when the field is left.
class TimerFields {
 public:
  TimerFields(const Place& place, const TimerState& state);

  TextBox Text16;  // hours
  Label Label3;    // behind them: their unit, or a colon that blinks
  TextBox Text17;  // minutes
  Label Label4;    // behind them: their unit, or a colon that blinks
  TextBox Text14;  // seconds
  Label Label6;    // behind them: their unit, or nothing
  TextBox Text18;  // hours at the last activation
  TextBox Text19;  // minutes then
  TextBox Text20;  // seconds then

  // What a field reads as; a number beyond the range of a double is a very large one.
  static double ValueOf(const TextBox& field);

  void Set(const Text& hours, const Text& minutes, const Text& seconds);
  // Brings all three into the limits of the mode.
  void Limit();
  void TakeStartingValues();
  void RestoreStartingValues();
  void ForgetStartingValues();

  // Behind the fields: units, or the colons of a time of day.
  void ShowUnits();
  void ShowTimeOfDay();
  void ShowColons() { ShowSeparators(u":"); }
  // The colons blink: one step along the cycle.
  void BlinkColons();

 private:
  void ShowSeparators(const Text& separator);
  static void Field_KeyPress(const TextBox& field, char16_t& key);
  void Text16_LostFocus();
  void Text14_LostFocus() { LeaveSixtieths(Text14); }
  void Text17_LostFocus() { LeaveSixtieths(Text17); }
  void LeaveSixtieths(TextBox& field);

  const TimerState& state_;
};

}  // namespace quillbox
