#include "timer/ClockLabels.h"

namespace quillbox {

namespace {

bool IsSameSecond(const LocalTime& a, const LocalTime& b) {
  return a.second == b.second && a.minute == b.minute && a.hour == b.hour && a.day == b.day &&
         a.month == b.month && a.year == b.year;
}

}  // namespace

ClockLabels::ClockLabels(MainWindow& window, Clipboard& clipboard, Clock& clock)
    : Label5(window.On(Page::Timer), "Label5"),
      Label8(window.On(Page::Timer), "Label8"),
      window_(window),
      clipboard_(clipboard),
      clock_(clock) {
  Label5.Click = [this] { Label5_Click(); };
  Label8.Click = [this] { Label8_Click(); };
}

void ClockLabels::Refresh() {
  const LocalTime now = clock_.Now();
  if (shown_ && IsSameSecond(now, *shown_)) return;
  // A second that begins between here and the texts is looked at again by the next tick.
  shown_ = now;
  const Text date = clock_.DateText();
  Label5.SetCaption(clock_.TimeText());
  Label8.SetCaption(date);
}

void ClockLabels::Label5_Click() { Copy(Label8.GetCaption() + u" " + Label5.GetCaption()); }

void ClockLabels::Label8_Click() { Copy(Label8.GetCaption()); }

void ClockLabels::Copy(const Text& text) {
  PollPause pause(window_.poll);
  IgnoreFailure([&] {
    clipboard_.Clear();
    clipboard_.Put(text);
    window_.SSTab1.SetTab(static_cast<int>(Page::Clip));
    window_.MinimizeIfSet();
  });
}

}  // namespace quillbox
