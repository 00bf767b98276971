#include "unit/CalcFixture.h"

namespace quillbox {
namespace {

class CalcKeyboardTest : public CalcFixture {
 protected:
  // Types into the display, which gets the focus first if it hasn't got it.
  std::string Enter(const Text& keys) {
    Type("Text7", keys);
    return Shown();
  }
  bool SelectorShown() {
    bool shown = Named("Label9").GetVisible();
    for (const char* name : {"Label10", "Label11", "Shape1", "Line8", "Line9"}) {
      EXPECT_EQ(Named(name).GetVisible(), shown) << name;
    }
    return shown;
  }
};

TEST_F(CalcKeyboardTest, TheFocusMarksAndTheSelector) {
  EXPECT_FALSE(SelectorShown());
  Field("Text7").PersonFocus();
  EXPECT_TRUE(SelectorShown());
  EXPECT_EQ(Shown(), "");
  EXPECT_EQ(Value("Text23"), "got");
  EXPECT_EQ(State(), "||");
  MoveFocusAway();
  EXPECT_FALSE(SelectorShown());
  EXPECT_EQ(Shown(), "0");
  EXPECT_EQ(Value("Text23"), "");
  Press("12");
  Field("Text7").PersonFocus();
  EXPECT_EQ(Shown(), "12");  // under entry it stays
  MoveFocusAway();
  Press("+ 3 =");
  Field("Text7").PersonFocus();
  EXPECT_EQ(Shown(), "");
}

TEST_F(CalcKeyboardTest, TypesAndComputes) {
  EXPECT_EQ(Enter(u"12+5\r"), "17");
  EXPECT_EQ(Value("Text22"), "k");
  EXPECT_EQ(State(), "||");
  const std::pair<Text, std::string> cases[] = {
      {u"3", "3"},
      {u"\b12+5=0", "0"},
      {u"\b12+5=9", "9"},
      {u"\b12+5=.5", "0.5"},
      {u"\b12+5=\b", ""},
      {u"\b12+5=-7=", "10"},
      {u" 2*3x4/6=", "4"},
      {u" 5*=", "0"},  // unlike the buttons the key wipes the right operand
      {u" 5++", "5"},
      {u" 5**", "0"},
      // The point goes to the end.
      {u" .", "0."},
      {u"5.5", "0.55"},
      // Other keys are refused; the blank wipes what was there.
      {u"1g^!X(abcdefABCDEF\x16\x03\x1B ä€2", "2"},
      {u"1yz", "21"},
      {u" 1/0=", "Error!"},
  };
  for (const auto& [keys, shown] : cases) EXPECT_EQ(Enter(keys), shown) << ToUtf8(keys);
  EXPECT_EQ(State(), "||k");
  EXPECT_EQ(Enter(u"8"), "8");
}

TEST_F(CalcKeyboardTest, ATypedResultBecomesAnOrdinaryOneForTheButtons) {
  Enter(u"12+5\r");
  EXPECT_EQ(Press("x"), "17");
  EXPECT_EQ(State(), "x|17|k");
  EXPECT_EQ(Press("2 ="), "34");
  // A pending operation of the buttons can be finished by the keyboard.
  Press("CE 6 -");
  EXPECT_EQ(Enter(u"2\r"), "4");
}

TEST_F(CalcKeyboardTest, TheCaretGoesWithThePointOrStays) {
  Enter(u" 12");
  Field("Text7").SetSelStart(1);
  EXPECT_EQ(Enter(u",3"), "12.3");
  Field("Text7").SetSelStart(1);
  EXPECT_EQ(Enter(u"9"), "192.3");
  EXPECT_EQ(Enter(u"\b"), "12.3");
}

TEST_F(CalcKeyboardTest, SpaceClearsAllAndLeavesTheFieldEmpty) {
  EXPECT_EQ(Enter(u"12+3 "), "");
  EXPECT_EQ(State(), "||");
  MoveFocusAway();
  EXPECT_EQ(Shown(), "0");
}

TEST_F(CalcKeyboardTest, InAnotherBaseOnlyDigits) {
  Field("Text7").PersonFocus();
  Click("Label10");
  EXPECT_EQ(Enter(u"1f+-/x*=.,\raG9"), "1FA9");
  Click("Label11");
  EXPECT_EQ(Shown(), "17651");
  EXPECT_EQ(Enter(u"7a8+"), "78");
  EXPECT_EQ(Press("+"), "78");  // no conversion when the display is left
  EXPECT_EQ(Press("1 ="), "79");
  Field("Text7").PersonFocus();
  EXPECT_EQ(Enter(u"1+1="), "2");
}

TEST_F(CalcKeyboardTest, ADroppedTextBecomesItsNumber) {
  const std::pair<Text, std::string> cases[] = {
      {u"12,5 kg", "12.5"}, {u"1,234,567", "1.234"}, {u"no number", "0"}, {u"1E3", "1000"}};
  for (const auto& [dropped, shown] : cases) {
    Put("7");
    Named("Text7").PersonDrop(dropped);
    EXPECT_EQ(Shown(), shown);
    EXPECT_EQ(State(), "||");
  }
  Put("12.5");
  Named("Text7").PersonDrop(std::nullopt);
  EXPECT_EQ(State(), "||k");
  Named("Text7").PersonDrop(Text(u"1E999"));
  EXPECT_EQ(Shown(), "12.5");
  EXPECT_EQ(State(), "||");
  EXPECT_EQ(Press("3"), "12.53");
}

}  // namespace
}  // namespace quillbox
