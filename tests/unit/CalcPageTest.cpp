#include <fstream>

#include "unit/CalcFixture.h"

namespace quillbox {
namespace {

class CalcPageTest : public CalcFixture {
 protected:
  struct Case {
    const char* keys;
    const char* shown;
  };
  void ExpectShown(std::initializer_list<Case> cases) {
    for (const Case& c : cases) EXPECT_EQ(Press(c.keys), c.shown) << c.keys;
  }
};

TEST_F(CalcPageTest, StartsWithAFinishedZero) {
  EXPECT_EQ(Shown(), "0\r\n");
  EXPECT_EQ(State(), "||k");
  EXPECT_EQ(Press("+"), "0\r\n");
  EXPECT_EQ(State(), "+|0\r\n|k");
  EXPECT_EQ(Press("5 ="), "5");
}

TEST_F(CalcPageTest, WorksFromLeftToRight) {
  ExpectShown({
      {"5 + 3 + ", "8"},
      {"2 =", "10"},
      {"2 + 3 x 4 =", "20"},
      {"5 + =", "10"},
      {"5 x =", "25"},
      {"5 + - 3 =", "2"},
      {"7 + 3 = =", "10"},
      {"2 x^y 10 =", "1024"},
      {"1 ÷ 3 =", "0.333333333333333"},
      {"x 3 =", "0.999999999999999"},  // the text goes on, not the value behind it
      {"9 - 12 =", "-3"},
      // A function leaves the operation pending.
      {"2 + 9 Sqrt =", "5"},
      {"CE 200 + 50 % =", "200.5"},
      {"2 + 9 Sqrt +", "3"},
  });
  EXPECT_EQ(State(), "+|3|k");
}

TEST_F(CalcPageTest, EntersNumbers) {
  ExpectShown({
      {"007", "7"},
      {"CE 1,5,5", "1.55"},
      {"CE ,5", "0.5"},
      {"CE 12 +/- 3", "-123"},
      {"CE 1,50 +/-", "-1.5"},
      {"CE 0, +/-", "0"},
      {"CE +/-", "0"},
      {"5 - 5 = 25", "25"},
      {"CE 12345678901234567890 x 1 =", "1.23456789012346E+19"},
      {"CE 1,50 +", "1.50"},
  });
  EXPECT_EQ(State(), "+|1.50|k");
  EXPECT_EQ(Press(",2"), "0.2");
}

TEST_F(CalcPageTest, BackspaceTakesACharacterOrAFinishedValue) {
  ExpectShown({{"123 <", "12"}, {"< <", "0"}, {"<", "0"}, {"4 + 5 = <", "0"}});
  EXPECT_EQ(State(), "||");
  Field("Text7").SetText(u"7\U0001F600");
  EXPECT_EQ(Press("<"), "7");  // not half a character
}

TEST_F(CalcPageTest, PiKeepsTheEntryState) {
  ExpectShown(
      {{"Pi", "3.14159265358979"}, {"5", "5"}, {"Pi 5", "3.141592653589795"}, {"x 2 =", "6.28318530717959"}});
}

TEST_F(CalcPageTest, FailuresEnterTheErrorState) {
  const std::string large = "CE " + std::string(400, '9');  // no double holds it
  for (const std::string keys :
       {"1 ÷ 0 =", "0 ÷ 0 =", "0 1/x", "0 x^y 1 +/- =", "4 +/- x^y 0,5 =", "0 ln", "1 +/- ln", "1 asin",
        "1 acos", "2 asin", "90 tan", "9 x^y 999 =", "1000 e^x", "CE 10 x^y 308 = x 9 x"}) {
    EXPECT_EQ(Press("CE 5 + CE " + keys), "Error!") << keys;
    EXPECT_EQ(State(), "||k") << keys;
  }
  EXPECT_EQ(Press(large + " +/-"), "Error!");
  EXPECT_EQ(Press(large + " + 1 ="), "Error!");
  ExpectShown({{"CE 10 x^y 308 +/- = x^y 2 =", "0"},  // too small is no failure
               {"CE 0 x^y 0 =", "1"},
               {"8 +/- x^y 3 =", "-512"}});
}

TEST_F(CalcPageTest, GoesOnFromAnError) {
  ExpectShown({{"1 ÷ 0 = 7", "7"}, {"1 ÷ 0 =", "Error!"}, {"+", "Error!"}});
  EXPECT_EQ(State(), "+|Error!|k");
  ExpectShown({{"3 =", "3"}, {"1 ÷ 0 + <", "0"}});
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
  std::ifstream table(QUILLBOX_CALC_TABLE);
  std::string button;
  std::string number;
  std::string result;
  int rows = 0;
  while (std::getline(table, button, '\t') && std::getline(table, number, '\t') &&
         std::getline(table, result)) {
    ++rows;
    Put(number);
    Button(button).PersonClick();
    EXPECT_EQ(Shown(), result) << button << " of " << number;
    EXPECT_EQ(Value("Text10"), "k");
  }
  EXPECT_GT(rows, 1000) << "not the whole table: " << QUILLBOX_CALC_TABLE;
}

TEST_F(CalcPageTest, TheDisplayHasAPointWhateverTheSystemsSeparator) {
  for (const char16_t separator : {u',', u'.', u'\x66B'}) {
    system_.separator = separator;
    EXPECT_EQ(Press("CE 1 ÷ 4 = + 0,25 ="), "0.5");
  }
}

}  // namespace
}  // namespace quillbox
