#include "calc/CalcDisplay.h"

#include <cmath>

#include "base/NumberText.h"

namespace quillbox {

CalcDisplay::CalcDisplay(const Place& place, SystemInfo& system)
    : Text7(place, "Text7", TextBox::Lines::Many, u"0\r\n"),
      Text8(place, "Text8", TextBox::Lines::Many, {}, false),
      Text9(place, "Text9", TextBox::Lines::Many, {}, false),
      Text10(place, "Text10", TextBox::Lines::Many, u"k", false),
      Text22(place, "Text22", TextBox::Lines::Many, {}, false),
      Text23(place, "Text23", TextBox::Lines::Many, {}, false),
      system_(system) {
  Text7.SetAlignment(Alignment::Right);
  Text7.Change = [this] { Text7_Change(); };
}

void CalcDisplay::Text7_Change() {
  if (Text7.GetText().find(u',') != Text::npos) Text7.SetText(WithPoint(Text7.GetText()));
  if (Text23.GetText().empty() && Text7.GetText().empty()) Text7.SetText(u"0");
}

double CalcDisplay::Number() const { return GetNumberFromText(Text7.GetText()); }

void CalcDisplay::Show(double value) {
  // A separator that couldn't be read back is shown as the point.
  Text7.SetText(MakeTextFromNumber(value, system_.DecimalSeparator() == u',' ? u',' : u'.'));
}

void CalcDisplay::PutCaretAtEnd() { Text7.SetSelStart(Text7.GetText().size()); }

void CalcDisplay::DoPendingOperation() {
  const Text& operation = Text8.GetText();
  if (operation.empty()) return;
  const double left = GetNumberFromText(Text9.GetText());
  const double right = Number();
  if (operation == u"+") Show(left + right);
  if (operation == u"-") Show(left - right);
  if (operation == u"x") Show(left * right);
  if (operation == u"/") Show(Quotient(left, right));
  if (operation == u"^") Show(Power(left, right));
}

void CalcDisplay::ShowCalcError() {
  Text7.SetText(u"Error!");
  Text8.SetText({});
  Text9.SetText({});
  Text10.SetText(u"k");
}

double Power(double base, double exponent) {
  const bool isReal = base > 0 || (base == 0 ? exponent >= 0 : std::trunc(exponent) == exponent);
  if (!isReal) throw RuntimeError(errors::kBadCall, "Invalid procedure call or argument");
  return std::pow(base, exponent);
}

double Quotient(double dividend, double divisor) {
  if (divisor == 0) throw RuntimeError(errors::kDivisionByZero, "Division by zero");
  return dividend / divisor;
}

Text WithPoint(Text text) {
  if (const std::size_t comma = text.find(u','); comma != Text::npos) text[comma] = u'.';
  return text;
}

}  // namespace quillbox
