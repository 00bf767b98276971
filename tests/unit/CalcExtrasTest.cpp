#include "calc/BaseText.h"
#include "unit/CalcFixture.h"

namespace quillbox {
namespace {

TEST(BaseText, WholeNumbersThereAndBack) {
  const struct {
    TextView decimal, hexadecimal, octal;
    double back;
  } cases[] = {
      {u"0", u"0", u"0", 0},
      {u"255", u"FF", u"377", 255},
      {u"-1", u"FFFFFFFF", u"37777777777", -1},
      {u"32767", u"7FFF", u"77777", 32767},
      {u"32768", u"8000", u"100000", -32768},
      {u"65535", u"FFFF", u"177777", -1},
      {u"65536", u"10000", u"200000", 65536},
      {u"-32769", u"FFFF7FFF", u"37777677777", -32769},
      {u"2147483647", u"7FFFFFFF", u"17777777777", 2147483647},
      {u"-2147483648", u"80000000", u"20000000000", -2147483648.0},
      {u"2.5", u"2", u"2", 2},
      {u"3.5", u"4", u"4", 4},
      {u"-0.4", u"0", u"0", 0},
      {u"2147483647.4", u"7FFFFFFF", u"17777777777", 2147483647},
      {u"-2147483648.5", u"80000000", u"20000000000", -2147483648.0},
      {u"1E+5", u"186A0", u"303240", 100000},
      {u" 0.\r\n", u"0", u"0", 0},
      {u".5e1", u"5", u"5", 5},
      {u"1E-400", u"0", u"0", 0},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(BaseTextFromDecimal(c.decimal, NumberBase::Hexadecimal), c.hexadecimal);
    EXPECT_EQ(BaseTextFromDecimal(c.decimal, NumberBase::Octal), c.octal);
    EXPECT_EQ(NumberFromBaseText(c.hexadecimal, NumberBase::Hexadecimal), c.back);
    EXPECT_EQ(NumberFromBaseText(c.octal, NumberBase::Octal), c.back);
  }
}

TEST(BaseText, OnlyACompleteNumberInRangeHasOne) {
  for (const TextView text :
       {u"", u" ", u"Error!", u"1,5", u"1.5.5", u"12 kg", u"1 2", u"-", u".", u"1E", u"1E+", u"--1", u"FF",
        u"2147483647.5", u"2147483648", u"-2147483649", u"5000000000", u"1E400"}) {
    EXPECT_THROW(BaseTextFromDecimal(text, NumberBase::Hexadecimal), RuntimeError) << ToUtf8(text);
  }
}

class CalcExtras : public CalcFixture {
 protected:
  // Puts a number into the display that has the focus.
  void Enter(const std::string& text) {
    Field("Text7").PersonFocus();
    Field("Text7").SetText(FromUtf8(text));
  }
  std::string Choose(const std::string& base) {
    Click(base == "D" ? "Label9" : base == "H" ? "Label10" : "Label11");
    return Shown();
  }
  std::string BaseShown() {
    std::string blue;
    for (const char* name : {"Label9", "Label10", "Label11"}) {
      const auto& label = Named<Label>(name);
      if (label.GetForeColor() == Color::Blue) {
        blue += ToUtf8(label.GetCaption());
      } else {
        EXPECT_EQ(label.GetForeColor(), Color::ButtonText);
      }
    }
    return blue;
  }
};

TEST_F(CalcExtras, TheSelectorConvertsTheDisplay) {
  EXPECT_EQ(BaseShown(), "D");
  Enter("255");
  EXPECT_EQ(Choose("H"), "FF");
  EXPECT_EQ(BaseShown(), "H");
  EXPECT_EQ(Value("Text10"), "k");
  EXPECT_EQ(Field("Text7").GetSelStart(), 2U);
  EXPECT_EQ(Choose("H"), "FF");
  EXPECT_EQ(Choose("O"), "377");
  EXPECT_EQ(Choose("H"), "FF");
  EXPECT_EQ(Choose("D"), "255");
  Enter("65535");
  EXPECT_EQ(Choose("H"), "FFFF");
  EXPECT_EQ(Choose("O"), "37777777777");  // read as signed on the way
  EXPECT_EQ(Choose("D"), "-1");
  Enter("");
  EXPECT_EQ(Choose("O"), "0");
}

TEST_F(CalcExtras, AConversionThatFailsLeavesTheBase) {
  Press("1 +");
  Enter("5000000000");
  EXPECT_EQ(Choose("H"), "Error!");
  EXPECT_EQ(BaseShown(), "D");
  EXPECT_EQ(State(), "||k");
  EXPECT_EQ(Choose("H"), "Error!");
  Enter("1");
  Choose("H");
  Type("Text7", u"123456789");
  EXPECT_EQ(Choose("D"), "Error!");
  EXPECT_EQ(BaseShown(), "H");
}

TEST_F(CalcExtras, UnitsKeepThePendingOperation) {
  Press("1 + 100");
  Button("cm > in  ").PersonClick();
  EXPECT_EQ(Shown(), "39.3700787401575");
  EXPECT_EQ(State(), "+|1|k");
  EXPECT_EQ(Press("="), "40.3700787401575");
}

TEST_F(CalcExtras, MemoryKeepsTheTextInTheSettings) {
  const auto stored = [this] { return settings_.ReadSetting(section::kCalcEntry, u"M1", u"nothing"); };
  const auto canRecall = [this] {
    EXPECT_EQ(Enabled("Command38"), Enabled("Command39"));
    return Enabled("Command38");
  };
  EXPECT_FALSE(canRecall());
  EXPECT_EQ(Press("0 M"), "Value must be unequal 0!");
  EXPECT_FALSE(canRecall());
  EXPECT_EQ(Press("1,50 M"), "1.50");
  EXPECT_TRUE(canRecall());
  EXPECT_EQ(stored(), u"1.50");
  EXPECT_EQ(Press("2 + MR"), "1.5");
  EXPECT_EQ(Press("="), "3.5");
  EXPECT_EQ(Press("CE MR"), "1.5");
  EXPECT_EQ(Press("9 MC"), "9");
  EXPECT_EQ(State(), "||k");
  EXPECT_FALSE(canRecall());
  EXPECT_EQ(stored(), u"nothing");
  // A number that no double holds is none.
  const auto restoredFrom = [&](const Text& text) {
    settings_.WriteSetting(section::kCalcEntry, u"M1", text);
    page_.RestoreMemory();
    return canRecall();
  };
  EXPECT_FALSE(restoredFrom(u"1E400"));
  EXPECT_TRUE(restoredFrom(u"2"));
  settings_.WriteSetting(section::kCalcEntry, u"M1", u"1E400");
  EXPECT_EQ(Press("1 + MR"), "Error!");
  EXPECT_EQ(State(), "||k");
  Put("1E400");
  EXPECT_EQ(Press("M"), "1E400");
}

TEST_F(CalcExtras, TheNumberGoesToTheClipboardUnlessZero) {
  system_.separator = u',';
  Press("12,50");
  Button("Clipboard  <=").PersonClick();
  EXPECT_EQ(ToUtf8(clipboard_.Content()), "12,5");
  EXPECT_EQ(Shown(), "12.50");
  for (const char* text : {"0", "Error!", "1E400"}) {
    Put(text);
    Button("Clipboard  <=").PersonClick();
    EXPECT_EQ(ToUtf8(clipboard_.Content()), "12,5") << text;
    EXPECT_EQ(Shown(), text);
  }
  EXPECT_EQ(clipboard_.OwnWrites(), 1);
}

TEST_F(CalcExtras, ANumberComesFromTheClipboardUnlessZero) {
  Press("7");
  for (const Text& text : {Text(u"0"), Text(u"none"), Text(), Text(u"1E400")}) {
    clipboard_.OtherSets(text);
    Button("Clipboard  =>").PersonClick();
    EXPECT_EQ(Shown(), "7");
  }
  clipboard_.OtherSets(u"12,5 EUR");
  clipboard_.OtherLocks(true);
  Button("Clipboard  =>").PersonClick();
  EXPECT_EQ(Shown(), "7");
  clipboard_.OtherLocks(false);
  Button("Clipboard  =>").PersonClick();
  EXPECT_EQ(Shown(), "12.5");
  EXPECT_EQ(Press("1"), "12.51");
}

}  // namespace
}  // namespace quillbox
