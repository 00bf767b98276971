#include "unit/CalcFixture.h"

namespace quillbox {
namespace {

class CalcKeyboardTest : public CalcFixture {
 protected:
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
  FocusDisplay();
  EXPECT_TRUE(SelectorShown());
  EXPECT_EQ(Shown(), "");
  EXPECT_EQ(Value("Text23"), "got");
  EXPECT_EQ(State(), "||");
  LeaveDisplay();
  EXPECT_FALSE(SelectorShown());
  EXPECT_EQ(Shown(), "0");
  EXPECT_EQ(Value("Text23"), "");
  Press("12");
  FocusDisplay();
  EXPECT_EQ(Shown(), "12");  // under entry it stays
  LeaveDisplay();
  Press("+ 3 =");
  FocusDisplay();
  EXPECT_EQ(Shown(), "");
}

TEST_F(CalcKeyboardTest, TypesAndComputes) {
  EXPECT_EQ(Type(u"12+5\r"), "17");
  EXPECT_EQ(Value("Text22"), "k");
  EXPECT_EQ(State(), "||");
  EXPECT_EQ(Type(u"3"), "3");
  EXPECT_EQ(Type(u"\b12+5=0"), "0");
  EXPECT_EQ(Type(u"\b12+5=9"), "9");
  EXPECT_EQ(Type(u"\b12+5=.5"), "0.5");
  EXPECT_EQ(Type(u"\b12+5=\b"), "");
  EXPECT_EQ(Type(u"\b12+5=-7="), "10");
  EXPECT_EQ(Type(u" 2*3x4/6="), "4");
  EXPECT_EQ(Type(u" 5*="), "0");  // unlike the buttons the key wipes the right operand
  EXPECT_EQ(Type(u" 5++"), "5");
  EXPECT_EQ(Type(u" 5**"), "0");
  EXPECT_EQ(Type(u" 1/0="), "Error!");
  EXPECT_EQ(State(), "||k");
  EXPECT_EQ(Type(u"8"), "8");
}

TEST_F(CalcKeyboardTest, ATypedResultBecomesAnOrdinaryOneForTheButtons) {
  Type(u"12+5\r");
  EXPECT_EQ(Press("x"), "17");
  EXPECT_EQ(State(), "x|17|k");
  EXPECT_EQ(Press("2 ="), "34");
  // A pending operation of the buttons can be finished by the keyboard.
  Press("CE 6 -");
  EXPECT_EQ(Type(u"2\r"), "4");
}

TEST_F(CalcKeyboardTest, ThePointGoesToTheEnd) {
  EXPECT_EQ(Type(u"."), "0.");
  EXPECT_EQ(Type(u"5.5"), "0.55");
  Type(u" 12");
  Field("Text7").SetSelStart(1);
  EXPECT_EQ(Type(u",3"), "12.3");
  Field("Text7").SetSelStart(1);
  EXPECT_EQ(Type(u"9"), "192.3");
  EXPECT_EQ(Type(u"\b"), "12.3");
}

TEST_F(CalcKeyboardTest, OtherKeysAreRefused) {
  EXPECT_EQ(Type(u"1g^!X(abcdefABCDEF\x16\x03\x1B ä€2"), "2");  // the blank wipes what was there
  EXPECT_EQ(Type(u"1yz"), "21");
}

TEST_F(CalcKeyboardTest, SpaceClearsAllAndLeavesTheFieldEmpty) {
  Type(u"12+3 ");
  EXPECT_EQ(Shown(), "");
  EXPECT_EQ(State(), "||");
  LeaveDisplay();
  EXPECT_EQ(Shown(), "0");
}

TEST_F(CalcKeyboardTest, InAnotherBaseOnlyDigits) {
  FocusDisplay();
  Named("Label10").PersonClick();
  EXPECT_EQ(Type(u"1f+-/x*=.,\raG9"), "1FA9");
  Named("Label11").PersonClick();
  EXPECT_EQ(Shown(), "17651");
  EXPECT_EQ(Type(u"7a8+"), "78");
  LeaveDisplay();
  EXPECT_EQ(Shown(), "78");  // no conversion
  FocusDisplay();
  EXPECT_EQ(Type(u"+1="), "79");
}

TEST_F(CalcKeyboardTest, ADroppedTextBecomesItsNumber) {
  struct Case {
    Text dropped;
    std::string shown;
  };
  const Case cases[] = {{u"12,5 kg", "12.5"}, {u"1,234,567", "1.234"}, {u"no number", "0"}, {u"1E3", "1000"}};
  for (const Case& c : cases) {
    Put("7");
    Named("Text7").PersonDrop(c.dropped);
    EXPECT_EQ(Shown(), c.shown);
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
