#include "unit/TimerFixture.h"

namespace quillbox {
namespace {

class TimerFieldsTest : public TimerFixture {
 protected:
  void Type(const std::string& field, const Text& keys) {
    for (const char16_t key : keys) Field(field).PersonCharacter(key);
  }
  void Leave() { Named<Control>("SSTab1").PersonFocus(); }
  // What a field shows when it is left with that text.
  std::string Left(const std::string& field, const Text& with) {
    Field(field).PersonSetText(with);
    Leave();
    return Value(field);
  }
};

TEST_F(TimerFieldsTest, TakeTwoDigitsByKey) {
  for (const std::string field : {"Text14", "Text16", "Text17"}) {
    Field(field).PersonSetText(u"");
    Type(field, u"a-.,+ e\r\u0663\uFF15x1y2345");
    EXPECT_EQ(Value(field), "12") << field;
    Type(field, u"\b7");
    EXPECT_EQ(Value(field), "17") << field;
    // A selection makes no room.
    Field(field).Select(0, 2);
    Type(field, u"3");
    EXPECT_EQ(Value(field), "17") << field;
    Type(field, u"\b3");
    EXPECT_EQ(Value(field), "3") << field;
  }
}

TEST_F(TimerFieldsTest, AreRepairedWhenTheyAreLeft) {
  struct Case {
    Text text;
    std::string hours, countdown, alarm;  // hours; minutes and seconds in either mode
  };
  const std::size_t million = 1000000;
  const std::vector<Case> cases{
      {u"", "0", "0", "00"},
      {u"7", "7", "7", "07"},
      {u"007", "7", "7", "07"},
      {u"00", "0", "0", "00"},
      {u"10", "10", "10", "10"},
      {u"59", "59", "59", "59"},
      {u"75", "75", "59", "59"},
      {u"99", "99", "59", "59"},
      {u"99999", "99", "59", "59"},
      {u"-1", "0", "0", "00"},
      {u"-", "0", "0", "00"},
      {u"abc", "0", "0", "00"},
      {u"8 o'clock", "8", "8", "08"},
      {u"\u0663\u0664", "0", "0", "00"},  // digits, but not those that are read
      {u"\uFF14", "0", "0", "00"},
      {u"\r\n\t9\u0001", "9", "9", "09"},
      {u"1E999", "99", "59", "59"},
      {u"-1E999", "0", "0", "00"},
      {u"&HFFFFFFFFF", "99", "59", "59"},
      {Text(million, u'9'), "99", "59", "59"},
      {Text(million, u'0'), "0", "0", "00"},
      {Text(million, u'x'), "0", "0", "00"},
  };
  for (const Case& expected : cases) {
    const std::string name = ToUtf8(expected.text.substr(0, 12));
    EXPECT_EQ(Left("Text14", expected.text), expected.countdown) << name;
    EXPECT_EQ(Left("Text17", expected.text), expected.countdown) << name;
    EXPECT_EQ(Left("Text16", expected.text), expected.hours) << name;
  }
  Click("Option2");
  for (const Case& expected : cases) {
    const std::string name = ToUtf8(expected.text.substr(0, 12));
    EXPECT_EQ(Left("Text14", expected.text), expected.alarm) << name;
    EXPECT_EQ(Left("Text17", expected.text), expected.alarm) << name;
    EXPECT_EQ(Left("Text16", expected.text), expected.hours) << name;
  }
}

TEST_F(TimerFieldsTest, AreLimitedAtActivationWhateverWasDropped) {
  // A drop leaves the focus where it is, so nothing repairs the fields before.
  for (const std::string field : {"Text14", "Text16", "Text17"}) Field(field).PersonDrop(Text(u"120"));
  EXPECT_EQ(Fields(), "1200 1200 1200");
  Click("Command45");
  EXPECT_EQ(Fields(), "99 59 59");
  EXPECT_EQ(StartingValues(), "99 59 59");
  Click("Option2");
  Click("Option1");
  for (const std::string field : {"Text14", "Text16", "Text17"}) {
    Field(field).SetSelStart(0);
    Field(field).PersonDrop(Text(u"-5\n"));
    Field(field).PersonDrop(std::nullopt);
  }
  Click("Command45");
  EXPECT_EQ(Fields(), "0 0 0");
}

TEST_F(TimerFieldsTest, ADropOnTheSecondsStoresTheMessage) {
  page_.Text13.SetText(u"kept");
  settings_.WriteSetting(u"MessageEntry", u"MessageEntry", Text(u"other"));
  Field("Text17").PersonDrop(Text(u"1"));
  EXPECT_EQ(Stored(), "other");
  Field("Text14").PersonDrop(std::nullopt);
  EXPECT_EQ(Stored(), "kept");
  EXPECT_EQ(Value("Text14"), "0");
}

class TimerTouch : public TimerFixture, public testing::WithParamInterface<const char*> {};

// Whoever touches the settings stops the timer first.
TEST_P(TimerTouch, StopsARunningTimerAndNothingElse) {
  for (const bool alarm : {false, true}) {
    if (alarm) {
      StartAlarm(u"12", u"34", u"56");
      Pass(500);
      ASSERT_NE(Separators(), ":|:|");
    } else {
      StartCountdown(u"12", u"34", u"56");
    }
    Named<CommandButton>("Command46").SetEnabled(false);
    Click(GetParam());
    EXPECT_FALSE(Runs());
    EXPECT_EQ(Fields(), "12 34 56");
    EXPECT_EQ(ButtonCaption(), alarm ? "Activate Alarm Clock" : "Activate Countdown");
    EXPECT_EQ(Separators(), alarm ? ":|:|" : "h|m|s");
    EXPECT_FALSE(Named<CommandButton>("Command46").GetEnabled());
    PassSeconds(5);
    EXPECT_EQ(Message(), nullptr);
  }
}

INSTANTIATE_TEST_SUITE_P(Touched, TimerTouch,
                         testing::Values("Text13", "Text14", "Text16", "Text17", "Command1", "Command42",
                                         "Command43"),
                         [](const auto& touched) { return std::string(touched.param); });

TEST_F(TimerFieldsTest, TheFocusStopsTheTimerInAFieldButNotInTheMessage) {
  StartCountdown(u"0", u"1", u"0");
  page_.Text13.PersonFocus();
  EXPECT_TRUE(Runs());
  Field("Text17").PersonFocus();
  EXPECT_FALSE(Runs());
}

TEST_F(TimerFieldsTest, AModeThatIsChosenEndsWhateverRuns) {
  StartCountdown(u"0", u"1", u"0");
  Click("Option1");
  EXPECT_TRUE(Runs());  // it was chosen already
  Click("Option2");
  EXPECT_FALSE(Runs());
  Click("Command45");
  Click("Option1");
  EXPECT_FALSE(Runs());
  EXPECT_EQ(Fields(), "0 0 0");
  EXPECT_FALSE(Named<CommandButton>("Command46").GetEnabled());
  EXPECT_EQ(ToUtf8(Named<CommandButton>("Command46").GetToolTipText()),
            "Reset the Countdown to the last starting value");
}

}  // namespace
}  // namespace quillbox
