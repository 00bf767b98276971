#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <limits>
#include <random>
#include <sstream>
#include <string>

#include "base/NumberText.h"
#include "base/RuntimeError.h"

namespace quillbox {
namespace {

constexpr double kOverflows = std::numeric_limits<double>::infinity();

double Exactly(const std::string& text) { return std::strtod(text.c_str(), nullptr); }

std::string Written(double value) {
  const Text text = MakeTextFromNumber(value);
  return std::string(text.begin(), text.end());
}

// Rows with "|" between them, each of them "what goes in = what comes out".
void ForEach(const std::string& rows,
             const std::function<void(const std::string& in, const std::string& out)>& check) {
  std::istringstream all(rows);
  for (std::string row; std::getline(all, row, '|');) {
    SCOPED_TRACE(row.substr(0, 100));
    const std::size_t at = row.rfind(" = ");
    check(row.substr(0, at), row.substr(at + 3));
  }
}

// What is read, kOverflows where that fails.
double Read(const std::string& text) {
  try {
    return GetNumberFromText(Text(text.begin(), text.end()));
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), errors::kOverflow);
    return kOverflows;
  }
}

// The rule of the text, carried out on what the C library writes.
std::string Expected(double value) {
  char buffer[400];
  std::snprintf(buffer, sizeof buffer, "%.14E", value + 0.0);  // 0 has no sign
  const std::string written = buffer;
  const std::size_t letter = written.find('E');
  const std::size_t last = written.find_last_not_of('0', letter - 1);
  const std::string digits = written.substr(0, written[last] == '.' ? last : last + 1);
  const auto count = std::count_if(digits.begin(), digits.end(), [](char c) { return c >= '0'; });
  const int exponent = std::atoi(written.c_str() + letter + 1);
  const int decimals = std::max(0, static_cast<int>(count) - 1 - exponent);
  if (exponent >= 15 || decimals > 15) return digits + written.substr(letter);
  std::snprintf(buffer, sizeof buffer, "%.*f", decimals, value + 0.0);
  return buffer;
}

TEST(NumberText, WritesPlainOrScientific) {
  ForEach(
      "0 = 0|-0 = 0|-2.5 = -2.5|0.30000000000000004 = 0.3|0.33333333333333331 = 0.333333333333333"
      "|0.033333333333333333 = 3.33333333333333E-02|1e14 = 100000000000000|1e15 = 1E+15"
      "|1234567890123456 = 1.23456789012346E+15|999999999999999.4 = 999999999999999"
      "|999999999999999.6 = 1E+15|1e-15 = 0.000000000000001|1e-16 = 1E-16"
      "|0.000123456789012 = 0.000123456789012|0.0001234567890123 = 1.234567890123E-04"
      "|5e-324 = 4.94065645841247E-324",
      [](const std::string& value, const std::string& text) { EXPECT_EQ(Written(Exactly(value)), text); });
  for (const double value : {kOverflows, -kOverflows, std::nan("")}) {
    EXPECT_THROW(MakeTextFromNumber(value), RuntimeError);
  }
  EXPECT_EQ(MakeTextFromNumber(1.25e-20, u','), u"1,25E-20");
  EXPECT_EQ(MakeTextFromNumber(0.5, u'\x66B'), (Text{u'0', u'\x66B', u'5'}));
}

TEST(NumberText, ReadsTheNumberThatATextBeginsWith) {
  const std::string zeros(100'000, '0');
  // The middle between 1 and its successor rounds down to even; any digit above it, however far, rounds up.
  const std::string middle = "|1.00000000000000011102230246251565404236316680908203125";
  ForEach(
      " = 0|Error! = 0|- = 0|. = 0|-.E5 = 0|E5 = 0|--5 = 0|+-5 = 0|0\r\n = 0|inf = 0|nan = 0|0x10 = 0|-0 = 0"
      "|1\r2 = 1|1e = 1|1e+ = 1|1e-x = 1|1ee5 = 1|1F = 1|1\xA0\x32 = 1|1.5.5 = 1.5|12,5 = 12|12.5 kg = 12.5"
      "|-.5 = -0.5|+.5e1 = 5|5. = 5|5.e1 = 50|1d-2 = 0.01|1D+2 = 100|1e5.5 = 1e5|1E5E5 = 1e5|007 = 7"
      "|  - 1 2\t.\n5 E - 1  = -1.25|9007199254740993 = 9007199254740992"
      // Hexadecimal and octal; the limits of each size are in the rules of the calculator's bases.
      "|&h7fff = 32767|&H0000FFFF = -1|&H00000000000FF = 255|&o77777 = 32767|&O189 = 1|&H1G = 1"
      "| & H\tF\nF  = 255|&H = 0|& = 0|&X1 = 0|&H-1 = 0|-&H1 = 0|&H100000000 = inf"
      "|&HFFFFFFFFFFFFFFFFFFFF = inf|&O40000000000 = inf"
      // The ends of the range.
      "|1E309 = inf|-1E309 = inf|1.7976931348623159E308 = inf|1.7976931348623158E308 = 1.7976931348623157E308"
      "|1E99999999999999999999 = inf|1D400 = inf|5E-324 = 5E-324|-1E-400 = 0|2E-324 = 0"
      "|1E-99999999999999999999 = 0|0E99999 = 0|0.0E400 = 0" +
          // Every digit of a long text counts.
          middle + " = 1" + middle + zeros + " = 1" + middle + zeros + "1 = 1.0000000000000002|" + zeros +
          middle.substr(1) + " = 1|0." + zeros.substr(1) + "25E99999 = 0.25|25" + zeros +
          "E-100002 = 0.25|0." + zeros + "1 = 0|1" + zeros + " = inf|1E-" + zeros + "2 = 0.01|&H" + zeros +
          "10 = 16",
      [](const std::string& text, const std::string& value) { EXPECT_EQ(Read(text), Exactly(value)); });
  EXPECT_EQ(GetNumberFromText(Text{u'1', u'\0', u'2'}), 1);
}

TEST(NumberText, AnyValueIsWrittenRoundedAndReadExactly) {
  const auto check = [](double value) {
    if (!std::isfinite(value)) return;
    const std::string text = Written(value);
    ASSERT_EQ(text, Expected(value));
    ASSERT_EQ(std::fabs(Read(text)), std::fabs(Exactly(text))) << text;
    char buffer[800];
    std::snprintf(buffer, sizeof buffer, "%.766e", value);  // every digit of it
    ASSERT_EQ(Read(buffer), value);
  };
  std::mt19937_64 random(1);
  for (int i = 0; i < 5'000; ++i) {
    const auto value = std::bit_cast<double>(random());
    check(value);
    // Of everyday size, where the plain notation is, and of the smallest.
    if (std::isnormal(value))
      check(std::ldexp(value, static_cast<int>(random() % 120) - 60 - std::ilogb(value)));
    check(std::bit_cast<double>(static_cast<std::uint64_t>(i) << (i % 40)));
  }
  for (int exponent = -324; exponent <= 308; ++exponent) {
    // Powers of ten, and halves at the sixteenth digit, as near as a double comes.
    for (const char* digits : {"1e", "1.000000000000005e", "1.234567890123455e", "9.999999999999995e"}) {
      const double value = Exactly(digits + std::to_string(exponent));
      for (const double near : {value, -std::nextafter(value, 0), std::nextafter(value, 1e308)}) check(near);
    }
  }
  for (const double half : {100000000000000.5, 100000000000001.5, 562949953421311.5, 1e15 + 5}) check(half);
}

TEST(NumberText, WholeNumbersOfSettings) {
  ForEach(
      " = 0|-3 = -3|2.5 = 2|3.5 = 4|-0.5 = 0|12 rows = 12|1E3 = 1000|1E400 = 2147483648|-1E400 = -2147483648"
      "|99999999999 = 2147483648|2147483647 = 2147483647|&HFFFFFFFFF = 2147483648|&HFFFF = -1",
      [](const std::string& text, const std::string& number) {
        EXPECT_EQ(WholeNumber(Text(text.begin(), text.end())), std::atoll(number.c_str()));
      });
}

TEST(NumberText, RoundsTheDecimalDigitsAndTiesToEven) {
  // The digits of 2.675 are what is rounded, not the bits, which lie below the tie.
  ForEach(
      "2.5 0 = 2|-2.5 0 = -2|-3.5 0 = -4|0.5 0 = 0|0.51 0 = 1|0.05 0 = 0|9.5 0 = 10|99.96 1 = 100"
      "|2.675 2 = 2.68|2.665 2 = 2.66|0.123456789012355 14 = 0.12345678901236|1.22464679914735e-16 14 = 0"
      "|5e-15 14 = 0|5.00000000000001e-15 14 = 1e-14|-9.9e-15 14 = -1e-14|1e300 14 = 1e300|5e-324 14 = 0"
      "|1.23456789012345e+15 14 = 1.23456789012345e+15",
      [](const std::string& in, const std::string& rounded) {
        const int decimals = std::atoi(in.c_str() + in.find(' '));
        EXPECT_EQ(RoundToDecimals(Exactly(in), decimals), Exactly(rounded));
      });
  EXPECT_FALSE(std::signbit(RoundToDecimals(-1e-20, 14)));
}

}  // namespace
}  // namespace quillbox
