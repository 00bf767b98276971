#include "unit/TimerFixture.h"

namespace quillbox {
namespace {

constexpr const char* kFields[] = {"Text14", "Text16", "Text17"};  // seconds, hours, minutes

class TimerFieldsTest : public TimerFixture {
 protected:
  // What a field shows when it is left with that text.
  std::string Left(const std::string& field, const Text& with) {
    Field(field).PersonSetText(with);
    MoveFocusAway();
    return Value(field);
  }
};

TEST_F(TimerFieldsTest, TakeTwoDigitsByKey) {
  for (const char* field : kFields) {
    SCOPED_TRACE(field);
    Field(field).PersonSetText(u"");
    const auto typed = [&](const Text& keys) {
      Type(field, keys);
      return Value(field);
    };
    EXPECT_EQ(typed(u"a-.,+ e\r\u0663\uFF15x1y2345"), "12");
    EXPECT_EQ(typed(u"\b7"), "17");
    // A selection makes no room.
    Field(field).Select(0, 2);
    EXPECT_EQ(typed(u"3"), "17");
    EXPECT_EQ(typed(u"\b3"), "3");
  }
}

TEST_F(TimerFieldsTest, AreRepairedWhenTheyAreLeft) {
  const struct {
    Text text;
    std::string hours, countdown, alarm;  // hours; minutes and seconds in either mode
  } cases[] = {
      {u"", "0", "0", "00"},
      {u"007", "7", "7", "07"},
      {u"00", "0", "0", "00"},
      {u"10", "10", "10", "10"},
      {u"59", "59", "59", "59"},
      {u"75", "75", "59", "59"},
      {u"99999", "99", "59", "59"},
      {u"-1", "0", "0", "00"},
      {u"abc", "0", "0", "00"},
      {u"8 o'clock", "8", "8", "08"},
      {u"\u0663\u0664", "0", "0", "00"},  // digits, but not those that are read
      {u"\r\n\t9\u0001", "9", "9", "09"},
      {u"1E999", "99", "59", "59"},
      {u"-1E999", "0", "0", "00"},
      {u"&HFFFFFFFFF", "99", "59", "59"},
      {Text(1000000, u'9'), "99", "59", "59"},
      {Text(1000000, u'0'), "0", "0", "00"},
  };
  for (const bool alarm : {false, true}) {
    if (alarm) Click("Option2");
    for (const auto& expected : cases) {
      SCOPED_TRACE(ToUtf8(expected.text.substr(0, 12)));
      EXPECT_EQ(Left("Text14", expected.text), alarm ? expected.alarm : expected.countdown);
      EXPECT_EQ(Left("Text17", expected.text), alarm ? expected.alarm : expected.countdown);
      EXPECT_EQ(Left("Text16", expected.text), expected.hours);
    }
  }
}

TEST_F(TimerFieldsTest, AreLimitedAtActivationWhateverWasDropped) {
  // A drop leaves the focus where it is, so nothing repairs the fields before.
  for (const char* field : kFields) Field(field).PersonDrop(Text(u"120"));
  EXPECT_EQ(Fields(), "1200 1200 1200");
  Click("Command45");
  EXPECT_EQ(Fields(), "99 59 59");
  EXPECT_EQ(StartingValues(), "99 59 59");
  Click("Option2");
  Click("Option1");
  for (const char* field : kFields) {
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

// Whoever touches the settings stops the timer first.
TEST_F(TimerFieldsTest, AClickStopsARunningTimerAndNothingElse) {
  for (const std::string touched :
       {"Text13", "Text14", "Text16", "Text17", "Command1", "Command42", "Command43"}) {
    for (const bool alarm : {false, true}) {
      SCOPED_TRACE(touched + (alarm ? " with an alarm" : ""));
      Click("Option1");
      if (alarm) Click("Option2");
      StartCountdown(u"12", u"34", u"56");
      Pass(500);
      ASSERT_EQ(Separators(), alarm ? " | |" : "h|m|s") << "an alarm blinks";
      const std::string fields = Fields();
      Named("Command46").SetEnabled(false);
      Click(touched);
      EXPECT_FALSE(Runs());
      EXPECT_EQ(Fields(), fields);
      EXPECT_EQ(ButtonCaption(), alarm ? "Activate Alarm Clock" : "Activate Countdown");
      EXPECT_EQ(Separators(), alarm ? ":|:|" : "h|m|s");
      EXPECT_FALSE(Enabled("Command46"));
      Pass(1500);
      EXPECT_EQ(Fields(), fields);
    }
  }
}

TEST_F(TimerFieldsTest, AModeThatIsChosenEndsWhateverRuns) {
  StartCountdown(u"0", u"1", u"0");
  page_.Text13.PersonFocus();
  Click("Option1");
  EXPECT_TRUE(Runs());  // it was chosen already, and the message's focus does nothing
  Click("Option2");
  EXPECT_FALSE(Runs());
  Click("Command45");
  Click("Option1");
  EXPECT_FALSE(Runs());
  EXPECT_EQ(Fields(), "0 0 0");
  EXPECT_FALSE(Enabled("Command46"));
  EXPECT_EQ(ToUtf8(Named<CommandButton>("Command46").GetToolTipText()),
            "Reset the Countdown to the last starting value");
}

}  // namespace
}  // namespace quillbox
