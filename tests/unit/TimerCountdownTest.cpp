#include "unit/TimerFixture.h"

namespace quillbox {
namespace {

class TimerCountdown : public TimerFixture {
 protected:
  // The clock is shown already: the first time that it shows is a change, too.
  TimerCountdown() { PassSeconds(1); }
  // What the fields show after each of the next `seconds` seconds.
  std::vector<std::string> Following(int seconds) {
    std::vector<std::string> shown;
    for (int i = 0; i < seconds; ++i) {
      PassSeconds(1);
      shown.push_back(Fields());
    }
    return shown;
  }
  using Shown = std::vector<std::string>;
};

TEST_F(TimerCountdown, RunsDownEndsOnTheChangeAfterZeroAndIsReadyAgain) {
  StartCountdown(u"0", u"0", u"5");
  EXPECT_EQ(ButtonCaption(), "Stop Countdown");
  EXPECT_EQ(Following(5), (Shown{"0 0 4", "0 0 3", "0 0 2", "0 0 1", "0 0 0"}));
  EXPECT_EQ(Message(), nullptr);
  PassSeconds(1);
  ASSERT_NE(Message(), nullptr);
  EXPECT_EQ(Message()->Label4.GetCaption(), u"00:00:07");
  EXPECT_FALSE(Runs());
  EXPECT_EQ(ButtonCaption(), "Activate Countdown");
  EXPECT_EQ(ToUtf8(Named<CommandButton>("Command45").GetToolTipText()), "Activate the Countdown");
  EXPECT_EQ(TakeMessage(), "5 seconds have passed!");
  EXPECT_EQ(Following(2), (Shown{"0 0 5", "0 0 5"}));
  Click("Command45");
  EXPECT_EQ(MessageAfter(6), "5 seconds have passed!");
}

TEST_F(TimerCountdown, BorrowsFromTheGreaterUnits) {
  const struct {
    Text hours, minutes, seconds;
    std::string next;
  } cases[] = {{u"0", u"1", u"0", "0 0 59"},
               {u"1", u"0", u"0", "0 59 59"},
               {u"10", u"10", u"0", "10 9 59"},
               {u"99", u"59", u"59", "99 59 58"}};
  for (const auto& [hours, minutes, seconds, next] : cases) {
    StartCountdown(hours, minutes, seconds);
    EXPECT_EQ(Following(1), Shown{next});
  }
}

TEST_F(TimerCountdown, BuildsItsTextFromTheStartingValues) {
  const struct {
    Text hours, minutes, seconds;
    std::string message;
  } cases[] = {{u"0", u"0", u"0", "0 seconds have passed!"},
               {u"", u"", u"", "0 seconds have passed!"},
               {u"0", u"2", u"0", "2 minutes have passed!"},
               {u"1", u"30", u"0", "1 hours 30 minutes have passed!"},
               {u"2", u"0", u"09", "2 hours 9 seconds have passed!"},
               {u"3", u"4", u"5", "3 hours 4 minutes 5 seconds have passed!"}};
  for (const auto& [hours, minutes, seconds, message] : cases) {
    StartCountdown(hours, minutes, seconds);
    // Straight to the end.
    for (const char* field : {"Text16", "Text17", "Text14"}) Field(field).SetText(u"0");
    EXPECT_EQ(MessageAfter(1), message);
  }
}

TEST_F(TimerCountdown, EndsBetweenNAndNPlusOneSecondsAfterItsActivation) {
  for (const int within : {0, 1, 249, 250, 999}) {
    Pass(1000 - world_.timers.Elapsed() % 1000 + within);
    StartCountdown(u"0", u"0", u"3");
    const std::int64_t activated = world_.timers.Elapsed();
    while (!Message() && world_.timers.Elapsed() < activated + 10000) Pass(1);
    const std::int64_t lasted = world_.timers.Elapsed() - activated;
    EXPECT_GT(lasted, 3000) << within;
    EXPECT_LE(lasted, 4000) << within;
    TakeMessage();
  }
}

TEST_F(TimerCountdown, ADayOfSecondsIsCountedWithoutDrift) {
  StartCountdown(u"23", u"59", u"59");
  EXPECT_EQ(MessageAfter(86399), "");
  EXPECT_EQ(Fields(), "0 0 0");
  EXPECT_EQ(MessageAfter(1), "23 hours 59 minutes 59 seconds have passed!");
}

TEST_F(TimerCountdown, CountsChangesOfTheClockWhateverItsJumps) {
  TickAt(At(10, 0, 0));
  StartCountdown(u"0", u"0", u"30");
  const auto leftAfter = [this](const LocalTime& time) {
    TickAt(time);
    return Value("Text14");
  };
  EXPECT_EQ(leftAfter(At(10, 0, 0)), "30");             // the same second
  EXPECT_EQ(leftAfter({2024, 5, 18, 10, 0, 0}), "30");  // whole days are no change of the time
  EXPECT_EQ(Caption("Label8"), "2024-05-18");
  EXPECT_EQ(leftAfter(At(10, 0, 1)), "29");
  EXPECT_EQ(leftAfter(At(10, 0, 5)), "28");  // seconds left out, a busy computer
  EXPECT_EQ(leftAfter(At(10, 0, 4)), "27");  // a second back
  EXPECT_EQ(leftAfter(At(11, 0, 5)), "26");  // summer time begins, or an hour of sleep
  EXPECT_EQ(leftAfter(At(10, 0, 6)), "25");  // summer time ends
  EXPECT_EQ(leftAfter({1999, 12, 31, 23, 59, 59}), "24");
}

TEST_F(TimerCountdown, StopsWhereItStandsAndGoesBackToTheStartOnRequest) {
  StartCountdown(u"0", u"1", u"10");
  PassSeconds(5);
  Named("Command46").SetEnabled(false);
  Click("Command45");
  EXPECT_TRUE(Enabled("Command46"));
  EXPECT_EQ(Fields(), "0 1 5");
  EXPECT_EQ(ButtonCaption(), "Activate Countdown");
  PassSeconds(3);
  EXPECT_EQ(Fields(), "0 1 5");
  Click("Command46");
  EXPECT_EQ(Fields(), "0 1 10");
  Click("Command45");
  PassSeconds(2);
  Click("Command46");
  EXPECT_FALSE(Runs());
  EXPECT_EQ(Fields(), "0 1 10");
  // A new start takes what stands in the fields.
  Click("Command45");
  PassSeconds(1);
  Click("Command45");
  Click("Command45");
  EXPECT_EQ(StartingValues(), "0 1 9");
}

TEST_F(TimerCountdown, AMessageThatIsStillOpenTakesTheNewText) {
  page_.Text13.SetText(u"first");
  StartCountdown(u"0", u"0", u"0");
  PassSeconds(1);
  frmMessage* const open = Message();
  ASSERT_NE(open, nullptr);
  page_.Text13.SetText(u"second");
  Click("Command45");
  PassSeconds(1);
  EXPECT_EQ(Message(), open);
  EXPECT_EQ(open->Label3.GetCaption(), u"second");
  EXPECT_EQ(open->Label4.GetCaption(), u"00:00:03");
}

}  // namespace
}  // namespace quillbox
