#pragma once

#include <vector>

#include "base/NumberText.h"
#include "timer/TimerPage.h"
#include "unit/PageFixture.h"

namespace quillbox {

// A clock that also counts how often it was asked for its texts.
class CountingClock : public Clock {
 public:
  explicit CountingClock(MemoryClock& clock) : clock_(clock) {}
  LocalTime Now() override { return clock_.Now(); }
  Text TimeText() override {
    ++texts;
    return clock_.TimeText();
  }
  Text DateText() override {
    ++texts;
    return clock_.DateText();
  }
  int texts = 0;

 private:
  MemoryClock& clock_;
};

// The Timer page, with the clock and the time in the test's hand.
class TimerFixture : public PageFixture {
 protected:
  TimerFixture() { ShowWith(Page::Timer); }

  std::string ButtonCaption() { return ToUtf8(Named<CommandButton>("Command45").GetCaption()); }
  // Hours, minutes and seconds as they stand in the fields.
  std::string Fields() { return Value("Text16") + " " + Value("Text17") + " " + Value("Text14"); }
  std::string StartingValues() { return Value("Text18") + " " + Value("Text19") + " " + Value("Text20"); }
  bool Runs() { return Value("Text15") == "run"; }
  // What stands behind the fields.
  std::string Separators() { return Caption("Label3") + "|" + Caption("Label4") + "|" + Caption("Label6"); }

  void Enter(const Text& hours, const Text& minutes, const Text& seconds) {
    Field("Text16").PersonSetText(hours);
    Field("Text17").PersonSetText(minutes);
    Field("Text14").PersonSetText(seconds);
  }
  void StartCountdown(const Text& hours, const Text& minutes, const Text& seconds) {
    Enter(hours, minutes, seconds);
    Click("Command45");
  }
  void StartAlarm(const Text& hours, const Text& minutes, const Text& seconds) {
    Click("Option2");
    StartCountdown(hours, minutes, seconds);
  }

  // Time passes, the clock with it.
  void Pass(std::int64_t milliseconds) { world_.timers.Advance(milliseconds); }
  void PassSeconds(std::int64_t seconds) { Pass(seconds * 1000); }
  // The next tick comes with the clock at that time, whatever it showed before.
  void TickAt(const LocalTime& time) {
    world_.clock.Set(time);
    window_.Timer2.Fire();
  }
  static LocalTime At(int hour, int minute, int second) { return {2024, 5, 17, hour, minute, second}; }

  frmMessage* Message() { return message_.Get(); }
  // The message that came up, whose window is then closed; "" if none did.
  std::string TakeMessage() {
    if (!Message()) return "";
    std::string text = ToUtf8(Message()->Label3.GetCaption());
    Message()->form.PersonClose();
    return text;
  }
  std::string MessageAfter(std::int64_t seconds) {
    PassSeconds(seconds);
    return TakeMessage();
  }
  std::string Stored() { return ToUtf8(settings_.ReadSetting(u"MessageEntry", u"MessageEntry", u"")); }

  CountingClock clock_{world_.clock};
  FormSlot<frmMessage> message_{dispatcher_, [this] {
                                  return std::make_unique<frmMessage>(
                                      dispatcher_, window_, settings_, world_.sound,
                                      [this] { page_.ShowAgainInTwoMinutes(); });
                                }};
  TimerPage page_{window_, settings_, world_.clipboard, clock_, message_};
};

}  // namespace quillbox
