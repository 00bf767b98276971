#include "calc/UnitConversions.h"

namespace quillbox {

namespace {

constexpr double kCentimetersPerInch = 2.54;
constexpr double kGramsPerOunce = 28.34952313;
constexpr double kPoundsPerKilogram = 2.204622622;

struct Conversion {
  std::string_view control;
  const char16_t* caption;
  const char16_t* toolTipText;
  double factor;
  bool divides;
};

constexpr Conversion kConversions[] = {
    {"Commandu1", u"cm > in  ", u"Transform centimeters into inches", kCentimetersPerInch, true},
    {"Commandu2", u"  in > cm", u"Transform inches into centimeters", kCentimetersPerInch, false},
    {"Commandu3", u" g > oz", u"Transform grams into ounces", kGramsPerOunce, true},
    {"Commandu4", u"oz > g  ", u"Transform ounces into grams", kGramsPerOunce, false},
    {"Commandu5", u"kg > lb ", u"Transform kilograms into pounds", kPoundsPerKilogram, false},
    {"Commandu6", u" lb > kg", u"Transform pounds into kilograms", kPoundsPerKilogram, true},
};

}  // namespace

UnitConversions::UnitConversions(const Place& place, CalcDisplay& display) : display_(display) {
  for (const Conversion& conversion : kConversions) {
    CommandButton& button =
        buttons_.emplace_back(place, conversion.control, conversion.caption, conversion.toolTipText);
    button.Click = [this, &conversion] {
      display_.OrShowCalcError([&] {
        const double x = display_.Number();
        display_.Show(conversion.divides ? x / conversion.factor : x * conversion.factor);
        display_.SetFinished();
      });
    };
  }
}

}  // namespace quillbox
