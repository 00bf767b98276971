#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "base/Text.h"

namespace quillbox {

// A function button: up to three steps, each of which goes through the text of the display.
struct CalcFunction {
  std::string_view control;
  TextView caption;
  // First step. RuntimeError where the function isn't defined; beyond the range the result is infinite.
  double (*compute)(double x);
  bool toDegrees = false;            // second step: the result is an angle
  std::optional<int> decimals = {};  // last step: places behind the point
  std::optional<double> limit = {};  // a last result whose absolute value is above it is an error
  TextView negativeMessage = {};     // shown for a negative x instead of all that
};

std::span<const CalcFunction> CalcFunctions();

// One degree in radians, in the digits with which the program has always reckoned; not pi / 180 to the last
// bit.
inline constexpr double kDegree = 0.0174532925199433;

}  // namespace quillbox
