#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>

#include "base/NumberText.h"
#include "base/RuntimeError.h"

namespace quillbox {
namespace {

using Limits = std::numeric_limits<double>;

Text Wide(const std::string& text) { return Text(text.begin(), text.end()); }

std::string Narrow(const Text& text) { return std::string(text.begin(), text.end()); }

std::string Written(double value) { return Narrow(MakeTextFromNumber(value)); }

double Read(const std::string& text) { return GetNumberFromText(Wide(text)); }

int FailureOf(const std::string& text) {
  try {
    Read(text);
  } catch (const RuntimeError& error) {
    return error.Number();
  }
  return 0;
}

// The rule of the text, carried out on what the C library writes.
std::string Expected(double value) {
  if (value == 0) return "0";
  char buffer[40];
  std::snprintf(buffer, sizeof buffer, "%.14e", std::fabs(value));
  const std::string written = buffer;
  const int exponent = std::atoi(written.c_str() + 17);
  std::string digits = written[0] + written.substr(2, 14);
  while (digits.size() > 1 && digits.back() == '0') digits.pop_back();
  const int count = static_cast<int>(digits.size());
  std::string text;
  if (exponent >= 0 && exponent < 15) {
    while (static_cast<int>(digits.size()) < exponent + 1) digits += '0';
    text = digits;
    if (count > exponent + 1) text.insert(static_cast<std::size_t>(exponent) + 1, ".");
  } else if (exponent < 0 && count - exponent - 1 <= 15) {
    text = "0.";
    for (int i = -1; i > exponent; --i) text += '0';
    text += digits;
  } else {
    std::snprintf(buffer, sizeof buffer, "E%+03d", exponent);
    text = digits.substr(0, 1) + (count > 1 ? "." : "") + digits.substr(1) + buffer;
  }
  return (value < 0 ? "-" : "") + text;
}

struct Reading {
  const char* text;
  double value;
};

void ExpectRead(std::initializer_list<Reading> readings) {
  for (const Reading& reading : readings) EXPECT_EQ(Read(reading.text), reading.value) << reading.text;
}

void ExpectOverflow(std::initializer_list<const char*> texts) {
  for (const char* text : texts) EXPECT_EQ(FailureOf(text), errors::kOverflow) << text;
}

TEST(NumberText, WritesPlainOrScientific) {
  const std::pair<double, const char*> cases[] = {
      {0, "0"},
      {-0.0, "0"},
      {-2.5, "-2.5"},
      {0.1 + 0.2, "0.3"},
      {1.0 / 3, "0.333333333333333"},
      {1.0 / 30, "3.33333333333333E-02"},
      {1e14, "100000000000000"},
      {1e15, "1E+15"},
      {1234567890123456, "1.23456789012346E+15"},
      {999999999999999.4, "999999999999999"},
      {999999999999999.6, "1E+15"},  // it is the rounded value that counts
      {1e-15, "0.000000000000001"},
      {1e-16, "1E-16"},
      {0.000123456789012, "0.000123456789012"},
      {0.0001234567890123, "1.234567890123E-04"},
      {-1.5e300, "-1.5E+300"},
      {Limits::denorm_min(), "4.94065645841247E-324"},
  };
  for (const auto& [value, text] : cases) EXPECT_EQ(Written(value), text);
  for (const double value : {Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN()}) {
    EXPECT_THROW(MakeTextFromNumber(value), RuntimeError);
  }
}

TEST(NumberText, WritesTheSeparatorThatIsAskedFor) {
  EXPECT_EQ(MakeTextFromNumber(-2.5, u','), u"-2,5");
  EXPECT_EQ(MakeTextFromNumber(1.25e-20, u','), u"1,25E-20");
  EXPECT_EQ(MakeTextFromNumber(1000000, u','), u"1000000");
  EXPECT_EQ(MakeTextFromNumber(0.5, u'\x66B'), (Text{u'0', u'\x66B', u'5'}));
}

TEST(NumberText, ReadsTheNumberThatATextBeginsWith) {
  for (const char* text : {"", "Error!", "Sorry... no complex numbers!", "-", "+", ".", "-.E5", "E5", "--5",
                           "+-5", "0\r\n", "FF", "inf", "nan", "0x10", "-0"}) {
    EXPECT_EQ(Read(text), 0) << text;
  }
  for (const char* text : {"1\r2", "1e", "1e+", "1e-x", "1ee5", "1F", "1\xA0\x32"}) {
    EXPECT_EQ(Read(text), 1) << text;
  }
  EXPECT_EQ(GetNumberFromText(Text{u'1', u'\0', u'2'}), 1);
  ExpectRead({
      {"1.5.5", 1.5},
      {"12,5", 12},
      {"12.5 kg", 12.5},
      {".5", 0.5},
      {"-.5", -0.5},
      {"+.5e1", 5},
      {"5.", 5},
      {"5.e1", 50},
      {"1E5", 1e5},
      {"1d-2", 0.01},
      {"1D+2", 100},
      {"1e5.5", 1e5},
      {"1E5E5", 1e5},
      {"007", 7},
      {"  - 1 2\t.\n5 E - 1 ", -1.25},
      {"9007199254740993", 9007199254740992},
  });
}

TEST(NumberText, ReadsHexadecimalAndOctalAsSigned) {
  ExpectRead({
      // The limits of each size are in the tests of the calculator's bases.
      {"&h7fff", 32767},
      {"&H0000FFFF", -1},
      {"&H00000000000FF", 255},
      {"&o77777", 32767},
      {"&O189", 1},
      {"&H1G", 1},
      {" & H\tF\nF ", 255},
  });
  for (const char* text : {"&H", "&", "&X1", "&H-1", "-&H1"}) EXPECT_EQ(Read(text), 0) << text;
  ExpectOverflow({"&H100000000", "&HFFFFFFFFFFFFFFFFFFFF", "&O40000000000"});
}

TEST(NumberText, TooLargeFailsAndTooSmallIsZero) {
  ExpectOverflow({"1E309", "-1E309", "1.8E308", "1.7976931348623159E308", "1E99999999999999999999", "1D400"});
  EXPECT_EQ(Read("1.7976931348623158E308"), Limits::max());
  EXPECT_EQ(Read("5E-324"), Limits::denorm_min());
  for (const char* text : {"1E-400", "-1E-400", "2E-324", "1E-99999999999999999999", "0E99999", "0.0E400"}) {
    EXPECT_EQ(Read(text), 0) << text;
  }
}

TEST(NumberText, AnyValueIsWrittenRoundedAndReadExactly) {
  std::mt19937_64 random(1);
  char buffer[64];
  for (int i = 0; i < 200'000; ++i) {
    // Half of them of everyday size, where the plain notation is.
    double value = std::bit_cast<double>(random());
    if (!std::isfinite(value) || value == 0) continue;
    if (i % 2 == 0) value = std::ldexp(value, static_cast<int>(random() % 120) - 60 - std::ilogb(value));
    const std::string text = Written(value);
    ASSERT_EQ(text, Expected(value));
    if (std::isinf(std::strtod(text.c_str(), nullptr))) {
      ASSERT_EQ(FailureOf(text), errors::kOverflow);
      continue;
    }
    ASSERT_EQ(Read(text), std::strtod(text.c_str(), nullptr)) << text;
    if (i % 4 != 0) continue;
    std::snprintf(buffer, sizeof buffer, "%.16e", value);
    ASSERT_EQ(Read(buffer), value) << buffer;
  }
}

TEST(NumberText, PowersHalvesAndNeighbours) {
  const auto check = [](double value) {
    ASSERT_EQ(Written(value), Expected(value));
    char buffer[1200];
    std::snprintf(buffer, sizeof buffer, "%.1100f", value);  // every digit of it
    ASSERT_EQ(Read(buffer), value);
  };
  for (int exponent = -324; exponent <= 308; ++exponent) {
    const double power = std::strtod(("1e" + std::to_string(exponent)).c_str(), nullptr);
    check(power);
    check(-std::nextafter(power, 0));
    check(std::nextafter(power, 1e308));
    // Halves at the sixteenth digit, as near as a double comes.
    for (const char* digits : {"1.000000000000005e", "1.234567890123455e", "9.999999999999995e"}) {
      const double half = std::strtod((digits + std::to_string(exponent)).c_str(), nullptr);
      if (!std::isfinite(half)) continue;
      check(half);
      check(std::nextafter(half, 0));
    }
  }
  for (const double half : {100000000000000.5, 100000000000001.5, 562949953421311.5, 1000000000000005.0})
    check(half);
  for (int i = 0; i < 2000; ++i) check(std::bit_cast<double>(static_cast<std::uint64_t>(i) << (i % 40)));
}

TEST(NumberText, EveryDigitOfALongTextCounts) {
  // The middle between 1 and its successor rounds down to even; any digit above it, however far, rounds up.
  const std::string middle = "1.00000000000000011102230246251565404236316680908203125";
  const std::string zeros(100'000, '0');
  EXPECT_EQ(Read(middle), 1.0);
  EXPECT_EQ(Read(middle + zeros), 1.0);
  EXPECT_EQ(Read(middle + zeros + "1"), std::nextafter(1.0, 2.0));
  EXPECT_EQ(Read(zeros + middle), 1.0);
  EXPECT_EQ(Read("0." + std::string(99'999, '0') + "25E99999"), 0.25);
  EXPECT_EQ(Read("25" + zeros + "E-100002"), 0.25);
  EXPECT_EQ(Read("0." + zeros + "1"), 0);
  EXPECT_EQ(FailureOf("1" + zeros), errors::kOverflow);
  EXPECT_EQ(Read("1E-" + zeros + "2"), 0.01);
  EXPECT_EQ(Read("&H" + zeros + "10"), 16);
}

TEST(NumberText, WholeNumbersOfSettings) {
  const std::pair<const char*, long long> cases[] = {
      {"", 0},
      {"-3", -3},
      {"2.5", 2},
      {"3.5", 4},
      {"-0.5", 0},
      {"12 rows", 12},
      {"1E3", 1000},
      {"1E400", 2147483648LL},
      {"-1E400", -2147483648LL},
      {"99999999999", 2147483648LL},
      {"2147483647", 2147483647},
      {"&HFFFFFFFFF", 2147483648LL},
      {"&HFFFF", -1},
  };
  for (const auto& [text, value] : cases) EXPECT_EQ(WholeNumber(Wide(text)), value) << text;
}

TEST(NumberText, RoundsTheDecimalDigitsAndTiesToEven) {
  const struct {
    double value;
    int decimals;
    double rounded;
  } cases[] = {
      {2.5, 0, 2},
      {-2.5, 0, -2},
      {-3.5, 0, -4},
      {0.5, 0, 0},
      {0.51, 0, 1},
      {0.05, 0, 0},
      {9.5, 0, 10},
      {99.96, 1, 100},
      {2.675, 2, 2.68},  // its digits are what is rounded, not the bits, which lie below the tie
      {2.665, 2, 2.66},
      {0.123456789012355, 14, 0.12345678901236},
      {1.22464679914735e-16, 14, 0},
      {5e-15, 14, 0},
      {5.00000000000001e-15, 14, 1e-14},
      {-9.9e-15, 14, -1e-14},
      {1e300, 14, 1e300},
      {Limits::denorm_min(), 14, 0},
      {1.23456789012345e+15, 14, 1.23456789012345e+15},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(RoundToDecimals(c.value, c.decimals), c.rounded) << c.value << ", " << c.decimals;
  }
  EXPECT_FALSE(std::signbit(RoundToDecimals(-1e-20, 14)));
}

}  // namespace
}  // namespace quillbox
