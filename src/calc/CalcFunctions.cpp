#include "calc/CalcFunctions.h"

#include <cmath>

#include "calc/CalcDisplay.h"

namespace quillbox {

namespace {

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

constexpr CalcFunction kFunctions[] = {
    {.control = "Command7", .caption = u"sin", .compute = Sine, .decimals = 14},
    {.control = "Command8", .caption = u"cos", .compute = Cosine, .decimals = 14},
    {.control = "Command28", .caption = u"tan", .compute = Tangent, .decimals = 14, .limit = 1E+15},
    {.control = "Command29", .caption = u"asin", .compute = ArcSine, .toDegrees = true, .decimals = 12},
    {.control = "Command41", .caption = u"acos", .compute = ArcCosine, .toDegrees = true, .decimals = 12},
    {.control = "Command44", .caption = u"atan", .compute = ArcTangent, .toDegrees = true, .decimals = 12},
    {.control = "Command30",
     .caption = u"Sqrt",
     .compute = Root,
     .negativeMessage = u"Sorry... no complex numbers!"},
    {.control = "Command32", .caption = u"%", .compute = Percent},
    {.control = "Command33", .caption = u"x^2", .compute = Square},
    {.control = "Command36", .caption = u"e^x", .compute = Exponential},
    {.control = "Command37", .caption = u"ln", .compute = Logarithm},
    {.control = "Command40", .caption = u"1/x", .compute = Reciprocal},
};

}  // namespace

std::span<const CalcFunction> CalcFunctions() { return kFunctions; }

}  // namespace quillbox
