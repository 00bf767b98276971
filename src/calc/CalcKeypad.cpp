#include "calc/CalcKeypad.h"

#include <cmath>

#include "base/NumberText.h"

namespace quillbox {

namespace {

struct OperatorButton {
  std::string_view control;
  TextView caption;
  TextView operation;
};

constexpr OperatorButton kOperators[] = {
    {"Command23", u"+", u"+"},      {"Command24", u"-", u"-"},   {"Command25", u"x", u"x"},
    {"Command26", u"\u00F7", u"/"}, {"Command34", u"x^y", u"^"},
};

}  // namespace

CalcKeypad::CalcKeypad(const Place& place, CalcDisplay& display) : display_(display), place_(place) {
  for (int digit = 0; digit <= 9; ++digit) {
    const char16_t caption = static_cast<char16_t>(u'0' + digit);
    Add("Command1" + std::to_string(digit), {&caption, 1}, {}, [this, caption] { DigitClick(caption); });
  }
  Add("Command20", u",", {}, [this] { Command20_Click(); });
  Add("Command21", u"+/-", {}, [this] { Command21_Click(); });
  Add("Command22", {}, u"Delete the last number entered", [this] { Command22_Click(); });
  Add("Command9", u"CE", u"Clear the number field", [this] { Command9_Click(); });
  for (const OperatorButton& button : kOperators) {
    Add(button.control, button.caption, {}, [this, &button] { OperatorClick(button.operation); });
  }
  Add("Command27", u"=", u"Get the result of the calculation", [this] { Command27_Click(); });
  for (const CalcFunction& function : CalcFunctions()) {
    Add(function.control, function.caption, {}, [this, &function] { FunctionClick(function); });
  }
  Add("Command31", u"Pi", {}, [this] { Command31_Click(); });
}

void CalcKeypad::Add(std::string_view name, TextView caption, TextView toolTipText,
                     std::function<void()> handler) {
  CommandButton& button = buttons_.emplace_back(place_, name, Text(caption), Text(toolTipText));
  button.Click = std::move(handler);
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

void CalcKeypad::FunctionClick(const CalcFunction& function) {
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

void CalcKeypad::Command31_Click() { display_.Text7.SetText(u"3.14159265358979"); }

}  // namespace quillbox
