// What is read of a text and written of a number. How numbers look, whole ones and the rounding of results
// are in the rules of the calculator and of the settings.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <utility>

#include "base/CodePage.h"
#include "base/NumberText.h"
#include "base/RuntimeError.h"
#include "base/Utf8.h"

namespace quillbox {
namespace {

constexpr double kOverflows = std::numeric_limits<double>::infinity();

double Exactly(const std::string& text) { return std::strtod(text.c_str(), nullptr); }

// What is read, kOverflows where that fails.
double Read(const std::string& text) {
  try {
    return GetNumberFromText(FromBytes(text));
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), errors::kOverflow);
    return kOverflows;
  }
}

TEST(NumberText, ReadsTheNumberThatATextBeginsWith) {
  const std::string zeros(100'000, '0');
  // The middle between 1 and its successor rounds down to even; any digit above it, however far, rounds up.
  const std::string middle = "|1.00000000000000011102230246251565404236316680908203125";
  // Rows with "|" between them, each of them "what goes in = what comes out".
  std::istringstream rows(
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
      middle.substr(1) + " = 1|0." + zeros.substr(1) + "25E99999 = 0.25|25" + zeros + "E-100002 = 0.25|0." +
      zeros + "1 = 0|1" + zeros + " = inf|1E-" + zeros + "2 = 0.01|&H" + zeros + "10 = 16");
  for (std::string row; std::getline(rows, row, '|');) {
    const std::size_t at = row.rfind(" = ");
    EXPECT_EQ(Read(row.substr(0, at)), Exactly(row.substr(at + 3))) << row.substr(0, 100);
  }
  EXPECT_EQ(GetNumberFromText(Text{u'1', u'\0', u'2'}), 1);
}

TEST(NumberText, AnyDigitsAreReadExactlyAndWrittenToFifteenOfThem) {
  const auto check = [](double value) {
    if (!std::isfinite(value)) return;
    char buffer[800];
    std::snprintf(buffer, sizeof buffer, "%.766e", value);  // every digit of it
    ASSERT_EQ(Read(buffer), value);
    std::snprintf(buffer, sizeof buffer, "%.14e", value + 0.0);  // 0 has no sign
    ASSERT_EQ(Exactly(ToUtf8(MakeTextFromNumber(value))), Exactly(buffer)) << buffer;
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
  for (const double half : {100000000000000.5, 100000000000001.5, 562949953421311.5, 1e15 + 5}) check(half);
  for (const double value : {kOverflows, -kOverflows, std::nan("")}) {
    EXPECT_THROW(MakeTextFromNumber(value), RuntimeError);
  }
}

}  // namespace
}  // namespace quillbox
