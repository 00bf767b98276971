#include "timer/TimerPage.h"

#include "base/NumberText.h"

namespace quillbox {

namespace {

void TakeOne(TextBox& field) { field.SetText(MakeTextFromNumber(TimerFields::ValueOf(field) - 1)); }

// A field below 0, whatever has brought it there, shows 59 and takes one from the next greater unit.
void Borrow(TextBox& field, TextBox& greater) {
  if (TimerFields::ValueOf(field) >= 0) return;
  field.SetText(u"59");
  TakeOne(greater);
}

}  // namespace

TimerPage::TimerPage(MainWindow& window, Norvane& settings, Clipboard& clipboard, Clock& clock,
                     FormSlot<frmMessage>& message)
    : state_(window.On(Page::Timer)),
      fields_(window.On(Page::Timer), state_),
      switch_(window.On(Page::Timer), state_, fields_, clock),
      text_(window.On(Page::Timer), switch_, settings, clipboard),
      labels_(window, clipboard, clock),
      Text13(text_.Text13),
      Frame1(window.On(Page::Timer), "Frame1", true, u"Current date and time"),
      Frame2(window.On(Page::Timer), "Frame2", true, u"Timer settings"),
      Frame3(window.On(Page::Timer), "Frame3", true, u"Message"),
      window_(window),
      clock_(clock),
      message_(message) {
  window_.Timer2.Tick = [this] { Timer2_Timer(); };
  window_.Timer2.IsIdle = [this] { return IsIdle(); };
  labels_.Label5.Change = [this] { Label5_Change(); };
  switch_.Starting = [this] { CatchUp(); };
  for (TextBox* field : {&fields_.Text14, &fields_.Text16, &fields_.Text17}) {
    field->Click = [this] { switch_.StopTimer(); };
    field->GotFocus = [this] { switch_.StopTimer(); };
  }
  fields_.Text14.OLEDragDrop = [this](const DragData& data) { Text14_OLEDragDrop(data); };
}

void TimerPage::Timer2_Timer() {
  slept_ = false;
  if (state_.IsRunning() && state_.IsAlarmClock()) fields_.BlinkColons();
  labels_.Refresh();
}

void TimerPage::Label5_Change() {
  if (!state_.IsRunning()) return;
  if (state_.IsAlarmClock()) fields_.ShowColons();
  if (state_.IsCountdown()) CountDown();
  if (state_.IsAlarmClock() && state_.IsRunning()) LookAtAlarm();
}

void TimerPage::CountDown() {
  TakeOne(fields_.Text14);
  Borrow(fields_.Text14, fields_.Text17);
  Borrow(fields_.Text17, fields_.Text16);
  if (TimerFields::ValueOf(fields_.Text16) >= 0) return;
  switch_.End();
  fields_.Set(u"0", u"0", u"0");
  ShowMessage(TimeThatPassed());
  fields_.RestoreStartingValues();
}

void TimerPage::LookAtAlarm() {
  const LocalTime now = clock_.Now();
  const double secondsLate = now.second - TimerFields::ValueOf(fields_.Text14);
  const bool isDue = now.hour == TimerFields::ValueOf(fields_.Text16) &&
                     now.minute == TimerFields::ValueOf(fields_.Text17) &&
                     (secondsLate == 0 || secondsLate == 1);
  if (!isDue) return;
  switch_.End();
  fields_.ShowColons();
  ShowMessage(u"The requested time has been reached!");
}

Text TimerPage::TimeThatPassed() const {
  const double hours = TimerFields::ValueOf(fields_.Text18);
  const double minutes = TimerFields::ValueOf(fields_.Text19);
  const double seconds = TimerFields::ValueOf(fields_.Text20);
  Text text;
  if (hours > 0) text += MakeTextFromNumber(hours) + u" hours ";
  if (minutes > 0) text += MakeTextFromNumber(minutes) + u" minutes ";
  if (seconds > 0 || (hours == 0 && minutes == 0)) text += MakeTextFromNumber(seconds) + u" seconds ";
  return text + u"have passed!";
}

void TimerPage::ShowMessage(const Text& builtIn) {
  frmMessage& message = message_.Load();
  message.Label3.SetCaption(Text13.GetText().empty() ? builtIn : Text13.GetText());
  message.Label4.SetCaption(labels_.Label5.GetCaption());
  message.Timer1.SetEnabled(true);
  message_.Show();
}

void TimerPage::ShowAgainInTwoMinutes() {
  switch_.Option1.SetValue(true);
  fields_.Set(u"0", u"2", u"0");
  switch_.Command45_Click();
}

void TimerPage::CatchUp() {
  if (!slept_) return;
  window_.form.GetDispatcher().Dispatch([this] { Timer2_Timer(); });
  window_.Timer2.Wake(false);
}

// Besides what every text field does with a drop, the message is stored.
void TimerPage::Text14_OLEDragDrop(const DragData& data) {
  if (data) fields_.Text14.PutIn(*data);
  text_.Store();
}

bool TimerPage::IsIdle() {
  const bool idle = !state_.IsRunning() && !labels_.Label5.IsShown();
  if (idle) slept_ = true;
  return idle;
}

}  // namespace quillbox
