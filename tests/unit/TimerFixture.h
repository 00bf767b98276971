#pragma once

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "core/NumberText.h"
#include "memory/MemoryWorld.h"
#include "platform/Utf8.h"
#include "platform/forms/Dispatcher.h"
#include "timer/TimerPage.h"

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

// The Timer page in front of a shown main window, with the clock and the time in the test's hand.
class TimerFixture : public testing::Test {
 protected:
  TimerFixture() {
    settings_.PrepareRegistry();
    form_.Load();
    form_.SetVisible(true);
    window_.SSTab1.SetTab(static_cast<int>(Page::Timer));
  }

  template <class Kind>
  Kind& Named(const std::string& name) {
    auto* const control = dynamic_cast<Kind*>(form_.Find(name));
    if (!control) throw std::invalid_argument("no control " + name);
    return *control;
  }
  TextBox& Field(const std::string& name) { return Named<TextBox>(name); }
  std::string Value(const std::string& name) { return ToUtf8(Field(name).GetText()); }
  std::string Caption(const std::string& name) { return ToUtf8(Named<Label>(name).GetCaption()); }
  std::string ButtonCaption() { return ToUtf8(Named<CommandButton>("Command45").GetCaption()); }
  void Click(const std::string& name) { Named<Control>(name).PersonClick(); }
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
    const std::string text = ToUtf8(Message()->Label3.GetCaption());
    Message()->form.PersonClose();
    return text;
  }

  std::string Stored() { return ToUtf8(settings_.ReadSetting(u"MessageEntry", u"MessageEntry", u"")); }
  void Set(TextView key, TextView value) { settings_.WriteSetting(u"Intern", key, Text(value)); }

  // Tells the timers, before any is made, who lets their time pass.
  struct TimedDispatcher : Dispatcher {
    explicit TimedDispatcher(TimerHost& host) { UseTimerHost(&host); }
  };

  MemoryWorld world_;
  CountingClock clock_{world_.clock};
  TimedDispatcher dispatcher_{world_.timers};
  Form form_{dispatcher_, "frmTray", u"Quillbox"};
  Norvane settings_{world_.registry, world_.system};
  MainWindow window_{form_, settings_, world_.platform};
  FormSlot<frmMessage> message_{dispatcher_, [this] {
                                  return std::make_unique<frmMessage>(
                                      dispatcher_, window_, settings_, world_.sound,
                                      [this] { page_.ShowAgainInTwoMinutes(); });
                                }};
  TimerPage page_{window_, settings_, world_.clipboard, clock_, message_};
};

}  // namespace quillbox
