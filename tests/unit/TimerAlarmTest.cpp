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
  ChooseAlarmAt(At(23, 50, 30));
  EXPECT_EQ(Fields(), "0 00 00");
  ChooseAlarmAt(At(9, 15, 30));
  EXPECT_EQ(Fields(), "9 30 00");
  EXPECT_EQ(Separators(), ":|:|");
  EXPECT_EQ(Named<Label>("Label4").GetAlignment(), Alignment::Center);
  EXPECT_EQ(ButtonCaption(), "Activate Alarm Clock");
  Click("Option1");
  EXPECT_EQ(Separators(), "h|m|s");
  EXPECT_EQ(Named<Label>("Label4").GetAlignment(), Alignment::Left);
  EXPECT_EQ(Fields() + " " + StartingValues(), "0 0 0 0 0 0");
}

TEST_F(TimerAlarm, StepsThroughTheQuartersOfTheFields) {
  const auto next = [this] {
    Click("Command46");
    return Fields();
  };
  ChooseAlarmAt(At(23, 20, 0));
  for (const char* step : {"23 45 00", "0 00 00", "0 15 00"}) EXPECT_EQ(next(), step);
  Enter(u"07", u"5", u"33");
  EXPECT_EQ(next(), "7 15 00");
  Enter(u"99", u"59", u"0");
  EXPECT_EQ(next(), "0 00 00");
}

TEST(FullQuarterTest, EveryTimeOfDayMovesToTheQuarterBehindIt) {
  for (int time = 0; time < 24 * 60; ++time) {
    const int hour = time / 60;
    const FullQuarter next = NextFullQuarter(time % 60, hour);
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
  EXPECT_EQ(MessageAfter(1), "");
  PassSeconds(1);
  ASSERT_NE(Message(), nullptr);
  EXPECT_EQ(Message()->Label4.GetCaption(), u"07:30:00");
  EXPECT_EQ(TakeMessage(), due_);
  EXPECT_EQ(ButtonCaption(), "Activate Alarm Clock");
  EXPECT_EQ(Fields(), "7 30 00");
  EXPECT_EQ(MessageAfter(24 * 3600), "");
}

TEST_F(TimerAlarm, ATimeThatIsOverIsTomorrows) {
  TickAt({2024, 2, 28, 7, 30, 2});
  page_.Text13.SetText(u"Up!");
  StartAlarm(u"7", u"30", u"0");
  EXPECT_EQ(MessageAfter(24 * 3600 - 3), "");
  EXPECT_EQ(MessageAfter(1), "Up!");
  EXPECT_EQ(Caption("Label8") + " " + Caption("Label5"), "2024-02-29 07:30:00");
}

TEST_F(TimerAlarm, MidnightIsATimeLikeAnyOther) {
  TickAt({2023, 12, 31, 23, 59, 57});
  StartAlarm(u"0", u"0", u"0");
  EXPECT_EQ(MessageAfter(2), "");
  EXPECT_EQ(MessageAfter(1), due_);
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
  EXPECT_EQ(MessageAfter(12 * 3600), "");
  EXPECT_TRUE(Runs());
  TickAt({2024, 4, 1, 2, 29, 59});
  EXPECT_EQ(MessageAfter(1), due_);
  // Summer time ends after the alarm: the repeated time is not another one.
  TickAt({2024, 10, 27, 2, 29, 59});
  Click("Command45");
  EXPECT_EQ(MessageAfter(1), due_);
  TickAt({2024, 10, 27, 2, 0, 0});
  EXPECT_EQ(MessageAfter(3600), "");
  // The clock is put back over an alarm that was missed.
  TickAt(At(12, 0, 0));
  StartAlarm(u"11", u"0", u"0");
  TickAt(At(10, 59, 59));
  EXPECT_EQ(MessageAfter(1), due_);
}

TEST_F(TimerAlarm, HoursBeyondTheDayAreCutAtActivationNotBefore) {
  Click("Option2");
  Enter(u"24", u"0", u"0");
  MoveFocusAway();
  EXPECT_EQ(Fields(), "24 00 00");
  Click("Command45");
  EXPECT_EQ(Fields(), "23 00 00");
}

TEST_F(TimerAlarm, TheColonsBlinkAnewWithEachSecond) {
  TickAt(At(10, 0, 0));
  StartAlarm(u"12", u"0", u"0");
  const std::vector<std::string> cycle = {" : ", " ", "", ":", " : "};
  for (int i = 0; i < 9; ++i) {
    Pass(250);
    EXPECT_EQ(Caption("Label3"), cycle[i % 4]);
    EXPECT_EQ(Caption("Label4"), cycle[i % 4]);
  }
  Click("Command45");
  EXPECT_EQ(Separators(), ":|:|");
  Pass(500);
  EXPECT_EQ(Separators(), ":|:|");
  // A second that lasts: the cycle goes round.
  Click("Command45");
  world_.clock.Set(At(10, 0, 9));
  window_.Timer2.Fire();
  for (const std::string& colon : cycle) {
    window_.Timer2.Fire();
    EXPECT_EQ(Caption("Label3"), colon);
  }
}

}  // namespace
}  // namespace quillbox
