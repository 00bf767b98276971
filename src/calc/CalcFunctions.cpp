#include "calc/CalcFunctions.h"

#include <cmath>
#include <optional>

#include "base/NumberText.h"
#include "base/RuntimeError.h"

namespace quillbox {

namespace {

// One degree in radians, in the digits with which the program has always reckoned; not pi / 180 to the last
// bit.
constexpr double kDegree = 0.0174532925199433;

// A negative number and NaN have no root.
double Root(double x) {
  if (!(x >= 0)) throw RuntimeError(errors::kBadCall, "Invalid procedure call or argument");
  return std::sqrt(x);
}

double Sine(double x) { return std::sin(x * kDegree); }

double Cosine(double x) { return std::cos(x * kDegree); }

double Tangent(double x) { return std::tan(x * kDegree); }

// The arc functions are made of the arc tangent; at 1 and -1 they have no value.
double ArcSine(double x) { return std::atan(Quotient(x, Root(-x * x + 1))); }

double ArcCosine(double x) { return std::atan(Quotient(-x, Root(-x * x + 1))) + 2 * std::atan(1.0); }

double ArcTangent(double x) { return std::atan(x); }

double Percent(double x) { return x / 100; }

double Square(double x) { return Power(x, 2); }

double Exponential(double x) { return std::exp(x); }

double Logarithm(double x) {
  if (!(x > 0)) throw RuntimeError(errors::kBadCall, "Invalid procedure call or argument");
  return std::log(x);
}

double Reciprocal(double x) { return Quotient(1, x); }

}  // namespace

// Up to three steps, each of which goes through the text of the display.
struct CalcFunctions::Function {
  CommandButton& button;
  // First step. RuntimeError where the function isn't defined; beyond the range the result is infinite.
  double (*compute)(double x);
  bool toDegrees = false;            // second step: the result is an angle
  std::optional<int> decimals = {};  // last step: places behind the point
  std::optional<double> limit = {};  // a last result whose absolute value is above it is an error
  TextView negativeMessage = {};     // shown for a negative x instead of all that
};

CalcFunctions::CalcFunctions(const Place& place, CalcDisplay& display)
    : Command7(place, "Command7", u"sin"),
      Command8(place, "Command8", u"cos"),
      Command28(place, "Command28", u"tan"),
      Command29(place, "Command29", u"asin"),
      Command41(place, "Command41", u"acos"),
      Command44(place, "Command44", u"atan"),
      Command30(place, "Command30", u"Sqrt"),
      Command32(place, "Command32", u"%"),
      Command33(place, "Command33", u"x^2"),
      Command36(place, "Command36", u"e^x"),
      Command37(place, "Command37", u"ln"),
      Command40(place, "Command40", u"1/x"),
      display_(display) {
  const Function functions[] = {
      {.button = Command7, .compute = Sine, .decimals = 14},
      {.button = Command8, .compute = Cosine, .decimals = 14},
      {.button = Command28, .compute = Tangent, .decimals = 14, .limit = 1E+15},
      {.button = Command29, .compute = ArcSine, .toDegrees = true, .decimals = 12},
      {.button = Command41, .compute = ArcCosine, .toDegrees = true, .decimals = 12},
      {.button = Command44, .compute = ArcTangent, .toDegrees = true, .decimals = 12},
      {.button = Command30, .compute = Root, .negativeMessage = u"Sorry... no complex numbers!"},
      {.button = Command32, .compute = Percent},
      {.button = Command33, .compute = Square},
      {.button = Command36, .compute = Exponential},
      {.button = Command37, .compute = Logarithm},
      {.button = Command40, .compute = Reciprocal},
  };
  for (const Function& function : functions) {
    function.button.Click = [this, function] { Apply(function); };
  }
}

void CalcFunctions::Apply(const Function& function) {
  display_.OrShowCalcError([&] {
    const double x = display_.Number();
    if (x < 0 && !function.negativeMessage.empty()) {
      display_.Text7.SetText(Text(function.negativeMessage));
      return;
    }
    display_.Show(function.compute(x));
    if (function.toDegrees) display_.Show(display_.Number() * (1 / kDegree));
    if (function.decimals) display_.Show(RoundToDecimals(display_.Number(), *function.decimals));
    if (function.limit && std::abs(display_.Number()) > *function.limit) {
      throw RuntimeError(errors::kOverflow, "Overflow");
    }
    display_.SetFinished();
  });
}

}  // namespace quillbox
