#include "timer/TimerFields.h"

#include "base/NumberText.h"
#include "base/RuntimeError.h"

namespace quillbox {

namespace {

constexpr double kMostSixtieths = 59;
constexpr double kMostHours = 99;
constexpr double kMostHoursOfDay = 23;
constexpr std::size_t kTypedDigits = 2;

void LimitAbove(TextBox& field, double most) {
  if (TimerFields::ValueOf(field) > most) field.SetText(MakeTextFromNumber(most));
}

void LimitBelow(TextBox& field) {
  if (TimerFields::ValueOf(field) < 0) field.SetText(u"0");
}

// Leading zeros, and whatever follows the number.
void ShowAlone(TextBox& field) {
  if (TimerFields::ValueOf(field) < 10) field.SetText(MakeTextFromNumber(TimerFields::ValueOf(field)));
}

}  // namespace

TimerFields::TimerFields(const Place& place, const TimerState& state)
    : Text16(place, "Text16", TextBox::Lines::One, u"0"),
      Label3(place, "Label3", u"h"),
      Text17(place, "Text17", TextBox::Lines::One, u"0"),
      Label4(place, "Label4", u"m"),
      Text14(place, "Text14", TextBox::Lines::One, u"0"),
      Label6(place, "Label6", u"s"),
      Text18(place, "Text18", TextBox::Lines::One, u"", false),
      Text19(place, "Text19", TextBox::Lines::One, u"", false),
      Text20(place, "Text20", TextBox::Lines::One, u"", false),
      state_(state) {
  for (TextBox* field : {&Text16, &Text17, &Text14}) {
    field->SetAlignment(Alignment::Right);
    field->KeyPress = [field](char16_t& key) { Field_KeyPress(*field, key); };
  }
  Text16.LostFocus = [this] { Text16_LostFocus(); };
  Text17.LostFocus = [this] { Text17_LostFocus(); };
  Text14.LostFocus = [this] { Text14_LostFocus(); };
}

double TimerFields::ValueOf(const TextBox& field) {
  try {
    return GetNumberFromText(field.GetText());
  } catch (const RuntimeError&) {
    return static_cast<double>(WholeNumber(field.GetText()));
  }
}

void TimerFields::Set(const Text& hours, const Text& minutes, const Text& seconds) {
  Text16.SetText(hours);
  Text17.SetText(minutes);
  Text14.SetText(seconds);
}

void TimerFields::Limit() {
  for (TextBox* field : {&Text14, &Text17, &Text16}) LimitBelow(*field);
  LimitAbove(Text14, kMostSixtieths);
  LimitAbove(Text17, kMostSixtieths);
  LimitAbove(Text16, kMostHours);
  if (state_.IsAlarmClock()) LimitAbove(Text16, kMostHoursOfDay);
}

void TimerFields::TakeStartingValues() {
  Text18.SetText(Text16.GetText());
  Text19.SetText(Text17.GetText());
  Text20.SetText(Text14.GetText());
}

void TimerFields::RestoreStartingValues() { Set(Text18.GetText(), Text19.GetText(), Text20.GetText()); }

void TimerFields::ForgetStartingValues() {
  for (TextBox* value : {&Text18, &Text19, &Text20}) value->SetText(u"0");
}

void TimerFields::ShowUnits() {
  Label3.SetCaption(u"h");
  Label4.SetCaption(u"m");
  Label6.SetCaption(u"s");
  Label3.SetAlignment(Alignment::Left);
  Label4.SetAlignment(Alignment::Left);
}

void TimerFields::ShowTimeOfDay() {
  ShowColons();
  Label3.SetAlignment(Alignment::Center);
  Label4.SetAlignment(Alignment::Center);
  Label6.SetCaption(u"");
}

void TimerFields::BlinkColons() {
  const Text& now = Label3.GetCaption();
  ShowSeparators(now == u":" ? u" : " : now == u" : " ? u" " : now == u" " ? u"" : u":");
}

void TimerFields::ShowSeparators(const Text& separator) {
  Label3.SetCaption(separator);
  Label4.SetCaption(separator);
}

void TimerFields::Field_KeyPress(const TextBox& field, char16_t& key) {
  if (key == keys::kBackspace) return;
  const bool isDigit = key >= u'0' && key <= u'9';
  if (!isDigit || field.GetText().size() >= kTypedDigits) key = 0;
}

void TimerFields::Text16_LostFocus() {
  LimitBelow(Text16);
  LimitAbove(Text16, kMostHours);
  ShowAlone(Text16);
}

void TimerFields::LeaveSixtieths(TextBox& field) {
  LimitBelow(field);
  LimitAbove(field, kMostSixtieths);
  ShowAlone(field);
  if (state_.IsAlarmClock() && ValueOf(field) < 10) field.SetText(u"0" + field.GetText());
}

}  // namespace quillbox
