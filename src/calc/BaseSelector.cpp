#include "calc/BaseSelector.h"

namespace quillbox {

BaseSelector::BaseSelector(const Place& place, CalcDisplay& display)
    : Label9(place, "Label9", u"D"),
      Label10(place, "Label10", u"H"),
      Label11(place, "Label11", u"O"),
      Shape1(place, "Shape1"),
      Line8(place, "Line8"),
      Line9(place, "Line9"),
      display_(display) {
  Label9.SetToolTipText(u"Decimal");
  Label10.SetToolTipText(u"Hexadecimal");
  Label11.SetToolTipText(u"Octal");
  Label9.Click = [this] { LabelClick(NumberBase::Decimal); };
  Label10.Click = [this] { LabelClick(NumberBase::Hexadecimal); };
  Label11.Click = [this] { LabelClick(NumberBase::Octal); };
  Hide();
}

NumberBase BaseSelector::Base() const {
  if (Label10.GetForeColor() == Color::Blue) return NumberBase::Hexadecimal;
  if (Label11.GetForeColor() == Color::Blue) return NumberBase::Octal;
  return NumberBase::Decimal;
}

void BaseSelector::Select(NumberBase base) {
  const auto color = [base](NumberBase of) { return of == base ? Color::Blue : Color::ButtonText; };
  Label9.SetForeColor(color(NumberBase::Decimal));
  Label10.SetForeColor(color(NumberBase::Hexadecimal));
  Label11.SetForeColor(color(NumberBase::Octal));
}

void BaseSelector::SetVisible(bool visible) {
  for (Control* control :
       std::initializer_list<Control*>{&Label9, &Label10, &Label11, &Shape1, &Line8, &Line9}) {
    control->SetVisible(visible);
  }
}

void BaseSelector::Show() { SetVisible(true); }

void BaseSelector::Hide() {
  SetVisible(false);
  Select(NumberBase::Decimal);
}

void BaseSelector::LabelClick(NumberBase base) {
  display_.OrShowCalcError([&] {
    if (display_.Text7.GetText().empty()) display_.Text7.SetText(u"0");
    if (base != Base()) Convert(Base(), base);
    Select(base);
    display_.SetFinished();
    display_.PutCaretAtEnd();
  });
}

void BaseSelector::Convert(NumberBase from, NumberBase to) {
  if (from != NumberBase::Decimal) display_.Show(NumberFromBaseText(display_.Text7.GetText(), from));
  if (to != NumberBase::Decimal) display_.Text7.SetText(BaseTextFromDecimal(display_.Text7.GetText(), to));
}

}  // namespace quillbox
