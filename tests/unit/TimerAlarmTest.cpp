#include "timer/FullQuarter.h"
#include "unit/TimerFixture.h"

namespace quillbox {
namespace {

class TimerAlarm : public TimerFixture {
 protected:
  void ChooseAlarmAt(const LocalTime& time) {
    world_.clock.Set(time);
    Click("Option1");
    Click("Option2");
  }
  const std::string due_ = "The requested time has been reached!";
};

TEST_F(TimerAlarm, IsSetToTheNextFullQuarterFromNow) {
  const auto chosenAt = [this](int hour, int minute) {
    ChooseAlarmAt(At(hour, minute, 30));
    return Fields();
  };
  EXPECT_EQ(chosenAt(12, 0), "12 15 00");
  EXPECT_EQ(chosenAt(12, 14), "12 15 00");
  EXPECT_EQ(chosenAt(9, 15), "9 30 00");
  EXPECT_EQ(chosenAt(12, 44), "12 45 00");
  EXPECT_EQ(chosenAt(12, 45), "13 00 00");
  EXPECT_EQ(chosenAt(23, 50), "0 00 00");
  EXPECT_EQ(Separators(), ":|:|");
  EXPECT_EQ(Named<Label>("Label4").GetAlignment(), Alignment::Center);
  EXPECT_EQ(ButtonCaption(), "Activate Alarm Clock");
  Click("Option1");
  EXPECT_EQ(Separators(), "h|m|s");
  EXPECT_EQ(Named<Label>("Label4").GetAlignment(), Alignment::Left);
  EXPECT_EQ(Fields() + " " + StartingValues(), "0 0 0 0 0 0");
}

TEST_F(TimerAlarm, StepsThroughTheQuartersOfTheFields) {
  ChooseAlarmAt(At(22, 20, 0));
  std::vector<std::string> steps;
  for (int i = 0; i < 7; ++i) {
    Click("Command46");
    steps.push_back(Fields());
  }
  EXPECT_EQ(steps, (std::vector<std::string>{"22 45 00", "23 00 00", "23 15 00", "23 30 00", "23 45 00",
                                             "0 00 00", "0 15 00"}));
  Enter(u"07", u"5", u"33");
  Click("Command46");
  EXPECT_EQ(Fields(), "7 15 00");
  Enter(u"99", u"59", u"0");
  Click("Command46");
  EXPECT_EQ(Fields(), "0 00 00");
}

TEST(FullQuarterTest, EveryTimeOfDayMovesToTheQuarterBehindIt) {
  for (int time = 0; time < 24 * 60; ++time) {
    const FullQuarter next = NextFullQuarter(time % 60, time / 60);
    const long long reached = WholeNumber(next.hour) * 60 + WholeNumber(next.minute);
    EXPECT_EQ(reached, (time / 15 + 1) * 15 % (24 * 60)) << time;
    EXPECT_EQ(next.minute.size(), 2U) << time;
  }
}

TEST_F(TimerAlarm, GoesOffOnceAtItsTimeAndKeepsIt) {
  TickAt(At(7, 29, 58));
  StartAlarm(u"7", u"30", u"0");
  EXPECT_EQ(ButtonCaption(), "Stop Alarm Clock");
  EXPECT_EQ(Fields(), "7 30 00");
  PassSeconds(1);
  EXPECT_EQ(Message(), nullptr);
  PassSeconds(1);
  ASSERT_NE(Message(), nullptr);
  EXPECT_EQ(Message()->Label4.GetCaption(), u"07:30:00");
  EXPECT_EQ(TakeMessage(), due_);
  EXPECT_EQ(ButtonCaption(), "Activate Alarm Clock");
  EXPECT_EQ(Fields(), "7 30 00");
  PassSeconds(24 * 3600);
  EXPECT_EQ(TakeMessage(), "");
}

TEST_F(TimerAlarm, ATimeThatIsOverIsTomorrows) {
  TickAt({2024, 2, 28, 7, 30, 2});
  page_.Text13.SetText(u"Up!");
  StartAlarm(u"7", u"30", u"0");
  PassSeconds(24 * 3600 - 3);
  EXPECT_EQ(Message(), nullptr);
  PassSeconds(1);
  EXPECT_EQ(Caption("Label8") + " " + Caption("Label5"), "2024-02-29 07:30:00");
  EXPECT_EQ(TakeMessage(), "Up!");
}

TEST_F(TimerAlarm, MidnightIsATimeLikeAnyOther) {
  for (const LocalTime& eve : {LocalTime{2023, 12, 31, 23, 59, 57}, LocalTime{2024, 2, 29, 23, 59, 57},
                               LocalTime{2023, 2, 28, 23, 59, 57}}) {
    TickAt(eve);
    StartAlarm(u"0", u"0", u"0");
    PassSeconds(2);
    EXPECT_EQ(TakeMessage(), "");
    PassSeconds(1);
    EXPECT_EQ(TakeMessage(), due_);
  }
}

TEST_F(TimerAlarm, OneSkippedSecondIsForgivenTwoAreNot) {
  const auto goesOff = [this](const LocalTime& alarm, const LocalTime& before, const LocalTime& after) {
    TickAt(before);
    StartAlarm(Decimal(alarm.hour), Decimal(alarm.minute), Decimal(alarm.second));
    TickAt(after);
    return TakeMessage() == due_;
  };
  EXPECT_TRUE(goesOff(At(10, 0, 0), At(9, 59, 59), At(10, 0, 1)));
  EXPECT_FALSE(goesOff(At(10, 0, 0), At(9, 59, 59), At(10, 0, 2)));
  // The second after the last of a minute belongs to the next minute.
  EXPECT_FALSE(goesOff(At(10, 0, 59), At(10, 0, 58), At(10, 1, 0)));
  EXPECT_FALSE(goesOff(At(10, 0, 5), At(10, 0, 3), At(10, 0, 4)));
  EXPECT_FALSE(goesOff(At(10, 0, 5), At(10, 0, 3), At(11, 0, 5)));
}

TEST_F(TimerAlarm, AnHourThatTheClockLeavesOutOrRepeats) {
  // Summer time begins, the clock is set forwards, or the computer sleeps, across the alarm's time.
  TickAt({2024, 3, 31, 1, 59, 59});
  StartAlarm(u"2", u"30", u"0");
  TickAt({2024, 3, 31, 3, 0, 0});
  PassSeconds(12 * 3600);
  EXPECT_TRUE(Runs());
  EXPECT_EQ(Message(), nullptr);
  TickAt({2024, 4, 1, 2, 29, 59});
  PassSeconds(1);
  EXPECT_EQ(TakeMessage(), due_);
  // Summer time ends after the alarm: the repeated time is not another one.
  TickAt({2024, 10, 27, 2, 29, 59});
  Click("Command45");
  PassSeconds(1);
  EXPECT_EQ(TakeMessage(), due_);
  TickAt({2024, 10, 27, 2, 0, 0});
  PassSeconds(3600);
  EXPECT_EQ(TakeMessage(), "");
  // The clock is put back over an alarm that was missed.
  TickAt(At(12, 0, 0));
  StartAlarm(u"11", u"0", u"0");
  TickAt(At(10, 59, 59));
  PassSeconds(1);
  EXPECT_EQ(TakeMessage(), due_);
}

TEST_F(TimerAlarm, HoursBeyondTheDayAreCutAtActivationNotBefore) {
  Click("Option2");
  Enter(u"24", u"0", u"0");
  Named<Control>("SSTab1").PersonFocus();
  EXPECT_EQ(Fields(), "24 00 00");
  Click("Command45");
  EXPECT_EQ(Fields(), "23 00 00");
}

TEST_F(TimerAlarm, TheColonsBlinkAnewWithEachSecond) {
  TickAt(At(10, 0, 0));
  StartAlarm(u"12", u"0", u"0");
  std::vector<std::string> seen;
  for (int i = 0; i < 9; ++i) {
    Pass(250);
    EXPECT_EQ(Caption("Label3"), Caption("Label4"));
    seen.push_back(Caption("Label3"));
  }
  EXPECT_EQ(seen, (std::vector<std::string>{" : ", " ", "", ":", " : ", " ", "", ":", " : "}));
  Click("Command45");
  EXPECT_EQ(Separators(), ":|:|");
  Pass(500);
  EXPECT_EQ(Separators(), ":|:|");
  // A second that lasts: the cycle goes round.
  Click("Command45");
  world_.clock.Set(At(10, 0, 9));
  window_.Timer2.Fire();
  seen.clear();
  for (int i = 0; i < 5; ++i) {
    window_.Timer2.Fire();
    seen.push_back(Caption("Label3"));
  }
  EXPECT_EQ(seen, (std::vector<std::string>{" : ", " ", "", ":", " : "}));
}

}  // namespace
}  // namespace quillbox
