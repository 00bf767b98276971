#include "platform/qt/views/CalcKeys.h"

#include <QAbstractButton>
#include <QGridLayout>
#include <QHBoxLayout>
#include <algorithm>

#include "calc/CalcPage.h"
#include "platform/forms/CommandButton.h"
#include "platform/qt/base/Icons.h"
#include "platform/qt/widgets/Bindings.h"
#include "platform/qt/widgets/ViewParts.h"

namespace quillbox {

namespace {

enum class Kind { Digit, Edit, Operator, Result, Function, Memory, Other };

struct Key {
  CommandButton& control;
  Kind kind;
  const char* spoken;     // what a screen reader says
  const char* hint = "";  // the tip while the control has none
};

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

QAbstractButton* Make(FormView& view, const Key& key) {
  QAbstractButton* const widget = MakeButton(view, key.control, QString::fromLatin1(key.spoken));
  if (key.kind == Kind::Digit || key.kind == Kind::Operator || key.kind == Kind::Result) {
    widget->setFont(Scaled(widget->font(), 1.2));
  }
  if (key.hint[0]) GiveHint(view, key.control, *widget, QString::fromLatin1(key.hint));
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

}  // namespace

void CalcKeys::AddEditKeys(QHBoxLayout& display) {
  CalcKeypad& pad = page_.keypad;
  QAbstractButton* const backspace = Make(view_, {pad.Command22, Kind::Edit, "backspace"});
  backspace->setIcon(NamedIcon("backspace"));
  display.addWidget(backspace, 1);
  display.addWidget(Make(view_, {pad.Command9, Kind::Edit, "clear"}), 1);
}

QLayout* CalcKeys::MakePad() {
  auto* const rows = new QVBoxLayout;
  rows->setSpacing(8);
  rows->addLayout(MakeStores());
  rows->addLayout(MakeGrid(), 1);
  rows->addLayout(MakeUnits());
  return rows;
}

QLayout* CalcKeys::MakeStores() {
  CalcMemory& memory = page_.memory;
  CalcClipboard& clipboard = page_.clipboardButtons;
  const Key memoryKeys[] = {{memory.Command35, Kind::Memory, "save to memory"},
                            {memory.Command38, Kind::Memory, "recall memory"},
                            {memory.Command39, Kind::Memory, "clear memory"}};
  const Key clipboardKeys[] = {{clipboard.Command49, Kind::Other, "copy result to clipboard"},
                               {clipboard.Command50, Kind::Other, "get number from clipboard"}};
  auto* const stores = new QHBoxLayout;
  for (const Key& key : memoryKeys) stores->addWidget(Make(view_, key), 2);
  stores->addSpacing(8);
  for (const Key& key : clipboardKeys) stores->addWidget(Make(view_, key), 5);
  return stores;
}

QLayout* CalcKeys::MakeGrid() {
  CalcKeypad& pad = page_.keypad;
  CalcFunctions& functions = page_.functions;
  constexpr int kColumns = 8;
  constexpr int kFirstDigitColumn = 4;  // a narrow gap stands before it
  // Row by row; the equal sign is as high as two, so that the last row has a key less.
  const Key keys[] = {
      {functions.Command7, Kind::Function, "sine", "Sine of an angle in degrees"},
      {functions.Command8, Kind::Function, "cosine", "Cosine of an angle in degrees"},
      {functions.Command28, Kind::Function, "tangent", "Tangent of an angle in degrees"},
      {pad.Command17, Kind::Digit, "7", "Key 7 in the display"},
      {pad.Command18, Kind::Digit, "8", "Key 8 in the display"},
      {pad.Command19, Kind::Digit, "9", "Key 9 in the display"},
      {pad.Command26, Kind::Operator, "divide", "Divide (key / in the display)"},
      {pad.Command34, Kind::Operator, "to the power of", "The number to a power"},

      {functions.Command29, Kind::Function, "arc sine", "Arc sine, in degrees"},
      {functions.Command41, Kind::Function, "arc cosine", "Arc cosine, in degrees"},
      {functions.Command44, Kind::Function, "arc tangent", "Arc tangent, in degrees"},
      {pad.Command14, Kind::Digit, "4", "Key 4 in the display"},
      {pad.Command15, Kind::Digit, "5", "Key 5 in the display"},
      {pad.Command16, Kind::Digit, "6", "Key 6 in the display"},
      {pad.Command25, Kind::Operator, "times", "Times (key x or * in the display)"},
      {functions.Command32, Kind::Operator, "percent", "A hundredth of the number"},

      {functions.Command33, Kind::Function, "square", "Square"},
      {functions.Command30, Kind::Function, "square root", "Square root"},
      {functions.Command40, Kind::Function, "reciprocal", "Reciprocal"},
      {pad.Command11, Kind::Digit, "1", "Key 1 in the display"},
      {pad.Command12, Kind::Digit, "2", "Key 2 in the display"},
      {pad.Command13, Kind::Digit, "3", "Key 3 in the display"},
      {pad.Command24, Kind::Operator, "minus", "Minus (key - in the display)"},
      {pad.Command27, Kind::Result, "equals"},

      {functions.Command36, Kind::Function, "e to the power of x", "e to the power of the number"},
      {functions.Command37, Kind::Function, "natural logarithm", "Natural logarithm"},
      {pad.Command31, Kind::Memory, "pi", "The number pi"},
      {pad.Command10, Kind::Digit, "0", "Key 0 in the display"},
      {pad.Command20, Kind::Digit, "decimal point", "Decimal point (key . or , in the display)"},
      {pad.Command21, Kind::Digit, "plus or minus", "Change the sign"},
      {pad.Command23, Kind::Operator, "plus", "Plus (key + in the display)"},
  };
  auto* const grid = new QGridLayout;
  grid->setSpacing(4);
  int place = 0;
  for (const Key& key : keys) {
    const int row = place / kColumns;
    const int inRow = place % kColumns;
    const int column = inRow < kFirstDigitColumn - 1 ? inRow : inRow + 1;
    grid->addWidget(Make(view_, key), row, column, key.kind == Kind::Result ? 2 : 1, 1);
    grid->setColumnStretch(column, 1);
    grid->setRowStretch(row, 1);
    ++place;
  }
  grid->setColumnMinimumWidth(kFirstDigitColumn - 1, 4);
  return grid;
}

QLayout* CalcKeys::MakeUnits() {
  UnitConversions& units = page_.units;
  const Key keys[] = {{units.Commandu1, Kind::Other, "centimeters to inches"},
                      {units.Commandu2, Kind::Other, "inches to centimeters"},
                      {units.Commandu3, Kind::Other, "grams to ounces"},
                      {units.Commandu4, Kind::Other, "ounces to grams"},
                      {units.Commandu5, Kind::Other, "kilograms to pounds"},
                      {units.Commandu6, Kind::Other, "pounds to kilograms"}};
  auto* const row = new QHBoxLayout;
  row->setSpacing(4);
  for (const Key& key : keys) row->addWidget(Make(view_, key), 1);
  return row;
}

}  // namespace quillbox
