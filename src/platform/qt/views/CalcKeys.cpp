#include "platform/qt/views/CalcKeys.h"

#include <QAbstractButton>
#include <QGridLayout>
#include <QHBoxLayout>
#include <algorithm>

#include "platform/forms/CommandButton.h"
#include "platform/qt/base/Icons.h"
#include "platform/qt/widgets/Bindings.h"
#include "platform/qt/widgets/ViewParts.h"

namespace quillbox {

namespace {

enum class Kind { Digit, Edit, Operator, Result, Function, Memory, Other };

struct Key {
  std::string_view control;
  Kind kind;
  const char* spoken;     // what a screen reader says
  const char* hint = "";  // the tip while the control has none
};

constexpr Key kKeys[] = {
    {"Command10", Kind::Digit, "0", "Key 0 in the display"},
    {"Command11", Kind::Digit, "1", "Key 1 in the display"},
    {"Command12", Kind::Digit, "2", "Key 2 in the display"},
    {"Command13", Kind::Digit, "3", "Key 3 in the display"},
    {"Command14", Kind::Digit, "4", "Key 4 in the display"},
    {"Command15", Kind::Digit, "5", "Key 5 in the display"},
    {"Command16", Kind::Digit, "6", "Key 6 in the display"},
    {"Command17", Kind::Digit, "7", "Key 7 in the display"},
    {"Command18", Kind::Digit, "8", "Key 8 in the display"},
    {"Command19", Kind::Digit, "9", "Key 9 in the display"},
    {"Command20", Kind::Digit, "decimal point", "Decimal point (key . or , in the display)"},
    {"Command21", Kind::Digit, "plus or minus", "Change the sign"},
    {"Command22", Kind::Edit, "backspace"},
    {"Command9", Kind::Edit, "clear"},
    {"Command23", Kind::Operator, "plus", "Plus (key + in the display)"},
    {"Command24", Kind::Operator, "minus", "Minus (key - in the display)"},
    {"Command25", Kind::Operator, "times", "Times (key x or * in the display)"},
    {"Command26", Kind::Operator, "divide", "Divide (key / in the display)"},
    {"Command34", Kind::Operator, "to the power of", "The number to a power"},
    {"Command27", Kind::Result, "equals"},
    {"Command7", Kind::Function, "sine", "Sine of an angle in degrees"},
    {"Command8", Kind::Function, "cosine", "Cosine of an angle in degrees"},
    {"Command28", Kind::Function, "tangent", "Tangent of an angle in degrees"},
    {"Command29", Kind::Function, "arc sine", "Arc sine, in degrees"},
    {"Command41", Kind::Function, "arc cosine", "Arc cosine, in degrees"},
    {"Command44", Kind::Function, "arc tangent", "Arc tangent, in degrees"},
    {"Command30", Kind::Function, "square root", "Square root"},
    {"Command32", Kind::Operator, "percent", "A hundredth of the number"},
    {"Command33", Kind::Function, "square", "Square"},
    {"Command36", Kind::Function, "e to the power of x", "e to the power of the number"},
    {"Command37", Kind::Function, "natural logarithm", "Natural logarithm"},
    {"Command40", Kind::Function, "reciprocal", "Reciprocal"},
    {"Command31", Kind::Memory, "pi", "The number pi"},
    {"Command35", Kind::Memory, "save to memory"},
    {"Command38", Kind::Memory, "recall memory"},
    {"Command39", Kind::Memory, "clear memory"},
    {"Command49", Kind::Other, "copy result to clipboard"},
    {"Command50", Kind::Other, "get number from clipboard"},
    {"Commandu1", Kind::Other, "centimeters to inches"},
    {"Commandu2", Kind::Other, "inches to centimeters"},
    {"Commandu3", Kind::Other, "grams to ounces"},
    {"Commandu4", Kind::Other, "ounces to grams"},
    {"Commandu5", Kind::Other, "kilograms to pounds"},
    {"Commandu6", Kind::Other, "pounds to kilograms"},
};

// The pad, a row of eight keys a line; an equal sign is as high as two rows.
constexpr std::string_view kPad[4][8] = {
    {"Command7", "Command8", "Command28", "Command17", "Command18", "Command19", "Command26", "Command34"},
    {"Command29", "Command41", "Command44", "Command14", "Command15", "Command16", "Command25", "Command32"},
    {"Command33", "Command30", "Command40", "Command11", "Command12", "Command13", "Command24", "Command27"},
    {"Command36", "Command37", "Command31", "Command10", "Command20", "Command21", "Command23", ""},
};
constexpr int kFirstDigitColumn = 4;  // a narrow gap stands before it

// The colour of a key: the button's own, a little towards one that tells its kind.
QColor ColorOf(Kind kind, const QPalette& palette) {
  const QColor button = palette.color(QPalette::Button);
  const bool dark = palette.color(QPalette::Window).lightness() < 128;
  const QColor accent = palette.color(QPalette::Highlight);
  switch (kind) {
    case Kind::Digit:
      return dark ? Blend(button, palette.color(QPalette::ButtonText), 0.16)
                  : Blend(button, palette.color(QPalette::Base), 0.85);
    case Kind::Operator:
      return Blend(button, accent, 0.22);
    case Kind::Result:
      return Blend(button, accent, dark ? 0.55 : 0.42);
    case Kind::Edit:
      return Blend(button, QColor::fromHsl(8, 200, 128), dark ? 0.28 : 0.2);
    case Kind::Memory:
      return Blend(button, QColor::fromHsl(42, 200, 128), dark ? 0.24 : 0.2);
    case Kind::Function:
    case Kind::Other:
      break;
  }
  return button;
}

}  // namespace

QAbstractButton* CalcKeys::Make(std::string_view control) {
  const Key& key = *std::find_if(std::begin(kKeys), std::end(kKeys),
                                 [control](const Key& candidate) { return candidate.control == control; });
  CommandButton& button = ControlOf<CommandButton>(view_.GetForm(), control);
  QAbstractButton* const widget = MakeButton(view_, button, QString::fromLatin1(key.spoken));
  if (key.kind == Kind::Digit || key.kind == Kind::Operator || key.kind == Kind::Result) {
    widget->setFont(Scaled(widget->font(), 1.2));
  }
  if (control == "Command22") widget->setIcon(NamedIcon("backspace"));
  if (key.hint[0]) GiveHint(view_, button, *widget, QString::fromLatin1(key.hint));
  if (key.kind != Kind::Function && key.kind != Kind::Other) {
    Tint(*widget, QPalette::Button,
         [kind = key.kind](const QPalette& palette) { return ColorOf(kind, palette); });
  }
  // Keys are as wide as their captions need, not as wide as buttons of a dialog.
  QSizePolicy policy(QSizePolicy::Ignored, QSizePolicy::MinimumExpanding);
  policy.setRetainSizeWhenHidden(true);
  widget->setSizePolicy(policy);
  const QFontMetrics metrics = widget->fontMetrics();
  const int em = metrics.horizontalAdvance(QLatin1Char('M'));
  widget->setMinimumSize(std::max(metrics.horizontalAdvance(widget->text()) + em, 3 * em),
                         metrics.height() + metrics.height() / 2);
  return widget;
}

QLayout* CalcKeys::MakePad() {
  auto* const rows = new QVBoxLayout;
  rows->setSpacing(8);
  auto* const stores = new QHBoxLayout;
  for (const char* store : {"Command35", "Command38", "Command39"}) stores->addWidget(Make(store), 2);
  stores->addSpacing(8);
  for (const char* store : {"Command49", "Command50"}) stores->addWidget(Make(store), 5);
  rows->addLayout(stores);

  auto* const grid = new QGridLayout;
  grid->setSpacing(4);
  for (int row = 0; row < 4; ++row) {
    for (int key = 0; key < 8; ++key) {
      const std::string_view control = kPad[row][key];
      if (control.empty()) continue;
      const int column = key < kFirstDigitColumn - 1 ? key : key + 1;
      grid->addWidget(Make(control), row, column, control == "Command27" ? 2 : 1, 1);
      grid->setColumnStretch(column, 1);
    }
    grid->setRowStretch(row, 1);
  }
  grid->setColumnMinimumWidth(kFirstDigitColumn - 1, 4);
  rows->addLayout(grid, 1);

  auto* const units = new QHBoxLayout;
  units->setSpacing(4);
  for (const char* unit : {"Commandu1", "Commandu2", "Commandu3", "Commandu4", "Commandu5", "Commandu6"}) {
    units->addWidget(Make(unit), 1);
  }
  rows->addLayout(units);
  return rows;
}

}  // namespace quillbox
