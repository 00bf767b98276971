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
                     FormSlot<frmMessage>& messageWindow)
    : state(window.On(Page::Timer)),
      fields(window.On(Page::Timer), state),
      timer(window.On(Page::Timer), state, fields, clock),
      message(window.On(Page::Timer), timer, settings, clipboard),
      labels(window, clipboard, clock),
      Frame1(window.On(Page::Timer), "Frame1", true, u"Current date and time"),
      Frame2(window.On(Page::Timer), "Frame2", true, u"Timer settings"),
      Frame3(window.On(Page::Timer), "Frame3", true, u"Message"),
      window_(window),
      clock_(clock),
      messageWindow_(messageWindow) {
  window_.Timer2.Tick = [this] { Timer2_Timer(); };
  window_.Timer2.IsIdle = [this] { return IsIdle(); };
  labels.Label5.Change = [this] { Label5_Change(); };
  timer.Starting = [this] { CatchUp(); };
  for (TextBox* field : {&fields.Text14, &fields.Text16, &fields.Text17}) {
    field->Click = [this] { timer.StopTimer(); };
    field->GotFocus = [this] { timer.StopTimer(); };
  }
  fields.Text14.OLEDragDrop = [this](const DragData& data) { Text14_OLEDragDrop(data); };
}

void TimerPage::Timer2_Timer() {
  slept_ = false;
  if (state.IsRunning() && state.IsAlarmClock()) fields.BlinkColons();
  labels.Refresh();
}

void TimerPage::Label5_Change() {
  if (!state.IsRunning()) return;
  if (state.IsAlarmClock()) fields.ShowColons();
  if (state.IsCountdown()) CountDown();
  if (state.IsAlarmClock() && state.IsRunning()) LookAtAlarm();
}

void TimerPage::CountDown() {
  TakeOne(fields.Text14);
  Borrow(fields.Text14, fields.Text17);
  Borrow(fields.Text17, fields.Text16);
  if (TimerFields::ValueOf(fields.Text16) >= 0) return;
  timer.End();
  fields.Set(u"0", u"0", u"0");
  ShowMessage(TimeThatPassed());
  fields.RestoreStartingValues();
}

void TimerPage::LookAtAlarm() {
  const LocalTime now = clock_.Now();
  const double secondsLate = now.second - TimerFields::ValueOf(fields.Text14);
  const bool isDue = now.hour == TimerFields::ValueOf(fields.Text16) &&
                     now.minute == TimerFields::ValueOf(fields.Text17) &&
                     (secondsLate == 0 || secondsLate == 1);
  if (!isDue) return;
  timer.End();
  fields.ShowColons();
  ShowMessage(u"The requested time has been reached!");
}

Text TimerPage::TimeThatPassed() const {
  const double hours = TimerFields::ValueOf(fields.Text18);
  const double minutes = TimerFields::ValueOf(fields.Text19);
  const double seconds = TimerFields::ValueOf(fields.Text20);
  Text text;
  if (hours > 0) text += MakeTextFromNumber(hours) + u" hours ";
  if (minutes > 0) text += MakeTextFromNumber(minutes) + u" minutes ";
  if (seconds > 0 || (hours == 0 && minutes == 0)) text += MakeTextFromNumber(seconds) + u" seconds ";
  return text + u"have passed!";
}

void TimerPage::ShowMessage(const Text& builtIn) {
  frmMessage& due = messageWindow_.Load();
  due.Label3.SetCaption(message.Text13.GetText().empty() ? builtIn : message.Text13.GetText());
  due.Label4.SetCaption(labels.Label5.GetCaption());
  due.Timer1.SetEnabled(true);
  messageWindow_.Show();
}

void TimerPage::ShowAgainInTwoMinutes() {
  timer.Option1.SetValue(true);
  fields.Set(u"0", u"2", u"0");
  timer.Command45_Click();
}

void TimerPage::CatchUp() {
  if (!slept_) return;
  window_.form.GetDispatcher().Dispatch([this] { Timer2_Timer(); });
  window_.Timer2.Wake(false);
}

// Besides what every text field does with a drop, the message is stored.
void TimerPage::Text14_OLEDragDrop(const DragData& data) {
  if (data) fields.Text14.PutIn(*data);
  message.Store();
}

bool TimerPage::IsIdle() {
  const bool idle = !state.IsRunning() && !labels.Label5.IsShown();
  if (idle) slept_ = true;
  return idle;
}

}  // namespace quillbox
