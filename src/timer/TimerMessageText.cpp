#include "timer/TimerMessageText.h"

namespace quillbox {

TimerMessageText::TimerMessageText(const Place& place, TimerSwitch& timer, Norvane& settings,
                                   Clipboard& clipboard)
    : Text13(place, "Text13", TextBox::Lines::Many),
      Command1(place, "Command1", u"Clear", u"Clear message text field"),
      Command42(place, "Command42", u"Get text from clipboard",
                u"Use the current clipboard entry as message text"),
      Command43(place, "Command43", u"Copy text to clipboard",
                u"Use the current message text as clipboard entry"),
      timer_(timer),
      settings_(settings),
      clipboard_(clipboard) {
  Text13.SetMaxLength(limits::kTimerMessageLength);
  Text13.SetAlignment(Alignment::Center);
  Text13.Change = [this] { Store(); };
  Text13.Click = [this] { timer_.StopTimer(); };
  Command1.Click = [this] { Command1_Click(); };
  Command42.Click = [this] { Command42_Click(); };
  Command43.Click = [this] { Command43_Click(); };
}

void TimerMessageText::Store() { settings_.Write(setting::kMessageEntry, Text13.GetText()); }

void TimerMessageText::Command1_Click() {
  Text13.SetText(u"");
  timer_.StopTimer();
}

void TimerMessageText::Command42_Click() {
  timer_.StopTimer();
  IgnoreFailure([this] { Text13.SetText(Text(CutTo(clipboard_.Read(), limits::kEntryLength))); });
}

void TimerMessageText::Command43_Click() {
  timer_.StopTimer();
  IgnoreFailure([this] { clipboard_.Clear(); });
  IgnoreFailure([this] { clipboard_.Put(Text13.GetText()); });
}

}  // namespace quillbox
