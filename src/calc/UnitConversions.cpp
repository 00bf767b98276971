#include "calc/UnitConversions.h"

namespace quillbox {

namespace {

constexpr double kCentimetersPerInch = 2.54;
constexpr double kGramsPerOunce = 28.34952313;
constexpr double kPoundsPerKilogram = 2.204622622;

}  // namespace

UnitConversions::UnitConversions(const Place& place, CalcDisplay& display)
    : Commandu1(place, "Commandu1", u"cm > in  ", u"Transform centimeters into inches"),
      Commandu2(place, "Commandu2", u"  in > cm", u"Transform inches into centimeters"),
      Commandu3(place, "Commandu3", u" g > oz", u"Transform grams into ounces"),
      Commandu4(place, "Commandu4", u"oz > g  ", u"Transform ounces into grams"),
      Commandu5(place, "Commandu5", u"kg > lb ", u"Transform kilograms into pounds"),
      Commandu6(place, "Commandu6", u" lb > kg", u"Transform pounds into kilograms"),
      display_(display) {
  Divide(Commandu1, kCentimetersPerInch);
  Multiply(Commandu2, kCentimetersPerInch);
  Divide(Commandu3, kGramsPerOunce);
  Multiply(Commandu4, kGramsPerOunce);
  Multiply(Commandu5, kPoundsPerKilogram);
  Divide(Commandu6, kPoundsPerKilogram);
}

void UnitConversions::Divide(CommandButton& button, double by) {
  button.Click = [this, by] { display_.OrShowCalcError([&] { Finish(display_.Number() / by); }); };
}

void UnitConversions::Multiply(CommandButton& button, double by) {
  button.Click = [this, by] { display_.OrShowCalcError([&] { Finish(display_.Number() * by); }); };
}

void UnitConversions::Finish(double result) {
  display_.Show(result);
  display_.SetFinished();
}

}  // namespace quillbox
