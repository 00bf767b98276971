#include "calc/CalcKeypad.h"

namespace quillbox {

CalcKeypad::CalcKeypad(const Place& place, CalcDisplay& display)
    : Command10(place, "Command10", u"0"),
      Command11(place, "Command11", u"1"),
      Command12(place, "Command12", u"2"),
      Command13(place, "Command13", u"3"),
      Command14(place, "Command14", u"4"),
      Command15(place, "Command15", u"5"),
      Command16(place, "Command16", u"6"),
      Command17(place, "Command17", u"7"),
      Command18(place, "Command18", u"8"),
      Command19(place, "Command19", u"9"),
      Command20(place, "Command20", u","),
      Command21(place, "Command21", u"+/-"),
      Command22(place, "Command22", u"", u"Delete the last number entered"),
      Command9(place, "Command9", u"CE", u"Clear the number field"),
      Command23(place, "Command23", u"+"),
      Command24(place, "Command24", u"-"),
      Command25(place, "Command25", u"x"),
      Command26(place, "Command26", u"\u00F7"),
      Command34(place, "Command34", u"x^y"),
      Command27(place, "Command27", u"=", u"Get the result of the calculation"),
      Command31(place, "Command31", u"Pi"),
      display_(display) {
  char16_t digit = u'0';
  for (CommandButton* button : {&Command10, &Command11, &Command12, &Command13, &Command14, &Command15,
                                &Command16, &Command17, &Command18, &Command19}) {
    button->Click = [this, digit] { DigitClick(digit); };
    ++digit;
  }
  Command20.Click = [this] { Command20_Click(); };
  Command21.Click = [this] { Command21_Click(); };
  Command22.Click = [this] { Command22_Click(); };
  Command9.Click = [this] { Command9_Click(); };
  Command23.Click = [this] { OperatorClick(u"+"); };
  Command24.Click = [this] { OperatorClick(u"-"); };
  Command25.Click = [this] { OperatorClick(u"x"); };
  Command26.Click = [this] { OperatorClick(u"/"); };
  Command34.Click = [this] { OperatorClick(u"^"); };
  Command27.Click = [this] { Command27_Click(); };
  Command31.Click = [this] { Command31_Click(); };
}

void CalcKeypad::DigitClick(char16_t digit) {
  const Text text(1, digit);
  if (display_.IsFinished()) {
    display_.Text7.SetText(text);
    display_.Text10.SetText({});
  } else if (display_.Text7.GetText() == u"0") {
    display_.Text7.SetText(text);
  } else {
    display_.Text7.SetText(display_.Text7.GetText() + text);
  }
}

void CalcKeypad::Command20_Click() {
  const Text& shown = display_.Text7.GetText();
  if (display_.IsFinished()) {
    display_.Text7.SetText(u"0.");
    display_.Text10.SetText({});
  } else if (shown.empty()) {
    display_.Text7.SetText(u"0.");
  } else if (shown.find(u'.') == Text::npos) {
    display_.Text7.SetText(shown + u'.');
  }
}

void CalcKeypad::Command21_Click() {
  display_.OrShowCalcError([this] { display_.Show(-display_.Number()); });
}

void CalcKeypad::Command22_Click() {
  if (display_.IsFinished()) {
    display_.Text7.SetText({});
    display_.Text10.SetText({});
    return;
  }
  const Text& shown = display_.Text7.GetText();
  if (!shown.empty()) display_.Text7.SetText(Text(CutTo(shown, shown.size() - 1)));
}

void CalcKeypad::Command9_Click() {
  display_.Text7.SetText({});
  display_.Text8.SetText({});
  display_.Text9.SetText({});
  display_.Text10.SetText({});
}

void CalcKeypad::OperatorClick(TextView operation) {
  display_.OrShowCalcError([&] {
    if (!display_.IsFinished()) display_.DoPendingOperation();
    display_.Text8.SetText(Text(operation));
    display_.SetFinished();
    display_.Text9.SetText(display_.Text7.GetText());
  });
}

void CalcKeypad::Command27_Click() {
  display_.OrShowCalcError([this] {
    display_.DoPendingOperation();
    display_.Text8.SetText({});
    display_.SetFinished();
    display_.Text9.SetText({});
  });
}

void CalcKeypad::Command31_Click() { display_.Text7.SetText(u"3.14159265358979"); }

}  // namespace quillbox
