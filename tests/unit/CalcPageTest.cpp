#include "unit/CalcFixture.h"
#include "unit/CalcTable.h"

namespace quillbox {
namespace {

class CalcPageTest : public CalcFixture {};

TEST_F(CalcPageTest, StartsWithAFinishedZero) {
  EXPECT_EQ(Shown(), "0\r\n");
  EXPECT_EQ(State(), "||k");
  EXPECT_EQ(Press("+"), "0\r\n");
  EXPECT_EQ(State(), "+|0\r\n|k");
  EXPECT_EQ(Press("5 ="), "5");
}

TEST_F(CalcPageTest, WorksFromLeftToRight) {
  EXPECT_EQ(Press("5 + 3 + "), "8");
  EXPECT_EQ(Press("2 ="), "10");
  EXPECT_EQ(Press("2 + 3 x 4 ="), "20");
  EXPECT_EQ(Press("5 + ="), "10");
  EXPECT_EQ(Press("5 x ="), "25");
  EXPECT_EQ(Press("5 + - 3 ="), "2");
  EXPECT_EQ(Press("7 + 3 = ="), "10");
  EXPECT_EQ(Press("2 x^y 10 ="), "1024");
  EXPECT_EQ(Press("1 ÷ 3 ="), "0.333333333333333");
  EXPECT_EQ(Press("x 3 ="), "0.999999999999999");  // the text goes on, not the value behind it
  EXPECT_EQ(Press("9 - 12 ="), "-3");
}

TEST_F(CalcPageTest, AFunctionLeavesTheOperationPending) {
  EXPECT_EQ(Press("2 + 9 Sqrt ="), "5");
  EXPECT_EQ(Press("2 + 9 Sqrt +"), "3");
  EXPECT_EQ(State(), "+|3|k");
  EXPECT_EQ(Press("CE 200 + 50 % ="), "200.5");
}

TEST_F(CalcPageTest, EntersNumbers) {
  EXPECT_EQ(Press("007"), "7");
  EXPECT_EQ(Press("CE 1,5,5"), "1.55");
  EXPECT_EQ(Press("CE ,5"), "0.5");
  EXPECT_EQ(Press("CE 1,50 +"), "1.50");
  EXPECT_EQ(State(), "+|1.50|k");
  EXPECT_EQ(Press(",2"), "0.2");
  EXPECT_EQ(Press("CE 12 +/- 3"), "-123");
  EXPECT_EQ(Press("CE 1,50 +/-"), "-1.5");
  EXPECT_EQ(Press("CE 0, +/-"), "0");
  EXPECT_EQ(Press("CE +/-"), "0");
  EXPECT_EQ(Press("5 - 5 = 25"), "25");
  EXPECT_EQ(Press("CE 12345678901234567890 x 1 ="), "1.23456789012346E+19");
}

TEST_F(CalcPageTest, BackspaceTakesACharacterOrAFinishedValue) {
  EXPECT_EQ(Press("123 <"), "12");
  EXPECT_EQ(Press("< <"), "0");
  EXPECT_EQ(Press("<"), "0");
  EXPECT_EQ(Press("4 + 5 = <"), "0");
  EXPECT_EQ(State(), "||");
  Field("Text7").SetText(u"7\U0001F600");
  EXPECT_EQ(Press("<"), "7");  // not half a character
}

TEST_F(CalcPageTest, PiKeepsTheEntryState) {
  EXPECT_EQ(Press("Pi"), "3.14159265358979");
  EXPECT_EQ(Press("5"), "5");
  EXPECT_EQ(Press("Pi 5"), "3.141592653589795");
  EXPECT_EQ(Press("x 2 ="), "6.28318530717959");
}

TEST_F(CalcPageTest, FailuresEnterTheErrorState) {
  for (const char* keys : {"1 ÷ 0 =", "0 ÷ 0 =", "0 1/x", "0 x^y 1 +/- =", "4 +/- x^y 0,5 =", "0 ln",
                           "1 +/- ln", "1 asin", "1 acos", "2 asin", "90 tan", "9 x^y 999 =", "1000 e^x"}) {
    EXPECT_EQ(Press(std::string("CE 5 + CE ") + keys), "Error!") << keys;
    EXPECT_EQ(State(), "||k") << keys;
  }
  // A large number that no double holds, in the display and as the left operand.
  const std::string large(400, '9');
  EXPECT_EQ(Press("CE " + large + " +/-"), "Error!");
  EXPECT_EQ(Press("CE " + large + " + 1 ="), "Error!");
  EXPECT_EQ(Press("CE 10 x^y 308 = x 9 x"), "Error!");
  EXPECT_EQ(Press("CE 10 x^y 308 +/- = x^y 2 ="), "0");  // too small is no failure
  EXPECT_EQ(Press("CE 0 x^y 0 ="), "1");
  EXPECT_EQ(Press("8 +/- x^y 3 ="), "-512");
}

TEST_F(CalcPageTest, GoesOnFromAnError) {
  EXPECT_EQ(Press("1 ÷ 0 = 7"), "7");
  EXPECT_EQ(Press("1 ÷ 0 ="), "Error!");
  EXPECT_EQ(Press("+"), "Error!");
  EXPECT_EQ(State(), "+|Error!|k");
  EXPECT_EQ(Press("3 ="), "3");
  EXPECT_EQ(Press("1 ÷ 0 + <"), "0");
  // The failed operator isn't armed.
  Press("CE 1 ÷ 0 x");
  EXPECT_EQ(State(), "||k");
}

TEST_F(CalcPageTest, ARootOfANegativeNumberOnlySaysSo) {
  const std::string message = "Sorry... no complex numbers!";
  EXPECT_EQ(Press("3 + 4 +/- Sqrt"), message);
  EXPECT_EQ(State(), "+|3|");
  EXPECT_EQ(Press("1"), message + "1");
  EXPECT_EQ(Press("<"), message);
  EXPECT_EQ(Press("="), "3");
}

TEST_F(CalcPageTest, FunctionsAndUnitsShowTheTabledValues) {
  for (const CalcRow& row : kCalcTable) {
    Put(row.number);
    Button(row.button).PersonClick();
    EXPECT_EQ(Shown(), row.result) << row.button << " of " << row.number;
    EXPECT_EQ(Value("Text10"), "k");
  }
}

TEST_F(CalcPageTest, TheDisplayHasAPointWhateverTheSystemsSeparator) {
  for (const char16_t separator : {u',', u'.', u'\x66B'}) {
    system_.separator = separator;
    EXPECT_EQ(Press("CE 1 ÷ 4 = + 0,25 ="), "0.5");
  }
}

}  // namespace
}  // namespace quillbox
