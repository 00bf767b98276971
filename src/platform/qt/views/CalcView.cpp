#include "platform/qt/views/CalcView.h"

#include <QAbstractButton>
#include <QEvent>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "calc/CalcPage.h"
#include "platform/qt/base/Icons.h"
#include "platform/qt/base/QtText.h"
#include "platform/qt/views/CalcKeys.h"
#include "platform/qt/widgets/Bindings.h"
#include "platform/qt/widgets/LineField.h"
#include "platform/qt/widgets/ViewParts.h"

namespace quillbox {

namespace {

// The chosen base is blue, and bold for whoever doesn't see the difference.
class BoldWhenBlue : public QObject {
 public:
  BoldWhenBlue(QLabel& widget, const Label& label) : QObject(&widget), widget_(widget), label_(label) {
    Apply();
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::PaletteChange) Apply();
    return false;
  }

 private:
  void Apply() {
    QFont font = widget_.font();
    font.setBold(label_.GetForeColor() == Color::Blue);
    widget_.setFont(font);
  }

  QLabel& widget_;
  const Label& label_;
};

QWidget* MakeBases(FormView& view, BaseSelector& selector) {
  auto* const frame = new QFrame(&view);
  frame->setFrameShape(QFrame::StyledPanel);
  QSizePolicy policy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  policy.setRetainSizeWhenHidden(true);
  frame->setSizePolicy(policy);
  auto* const layout = new QHBoxLayout(frame);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  const struct {
    Label& label;
    const char* name;
    Picture* lineBehind;
  } bases[] = {{selector.Label9, "decimal", &selector.Line8},
               {selector.Label10, "hexadecimal", &selector.Line9},
               {selector.Label11, "octal", nullptr}};
  for (const auto& base : bases) {
    QLabel* const widget = MakeLabel(view, base.label, QString::fromLatin1(base.name));
    widget->installEventFilter(new BoldWhenBlue(*widget, base.label));
    // Room to hit it; the caption is one letter, so that equal margins centre it.
    const int em = widget->fontMetrics().horizontalAdvance(QLatin1Char('M'));
    widget->setContentsMargins(em, em / 4, em, em / 4);
    widget->setMinimumWidth(3 * em);
    layout->addWidget(widget);
    if (!base.lineBehind) continue;
    QFrame* const line = MakeLine(view, *base.lineBehind);
    line->setFrameShape(QFrame::VLine);
    layout->addWidget(line);
  }
  view.Join(selector.Shape1, *frame, {});
  return frame;
}

// What waits for its right operand, such as "12 +".
QWidget* MakePending(FormView& view, TextBox& operation, TextBox& left) {
  auto* const label = new QLabel(&view);
  label->setTextFormat(Qt::PlainText);
  label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  label->setFont(Scaled(DigitFont(label->font()), 1.15));
  label->setAccessibleName(QStringLiteral("Pending operation"));
  Tint(*label, QPalette::WindowText, [](const QPalette& palette) {
    return Blend(palette.color(QPalette::WindowText), palette.color(QPalette::Window), 0.25);
  });
  const auto draw = [label, &operation, &left] {
    if (operation.GetText().empty()) return label->clear();
    const QString sign = operation.GetText() == u"/" ? QString(QChar(0x00F7)) : ToQt(operation.GetText());
    label->setText(ToQt(left.GetText()).simplified() + QLatin1Char(' ') + sign);
  };
  // Both carriers are invisible, as the widgets that stand for them are; the label beside shows them.
  for (TextBox* carrier : {&operation, &left}) view.Join(*carrier, *new QWidget(label), draw);
  return label;
}

QWidget* MakeDisplay(FormView& view, TextBox& text) {
  auto* const display = new LineField(&view, text);
  display->TakeCommandsAsCharacters();
  display->setAccessibleName(QStringLiteral("Display"));
  display->setFont(Scaled(DigitFont(display->font()), 1.8));
  // The longest number, and the longest message in its size.
  const QFontMetrics metrics(display->font());
  display->setMinimumWidth(metrics.horizontalAdvance(QStringLiteral("-0.00000000000000E-000")));
  display->setMinimumHeight(metrics.height() + metrics.height() / 3);
  view.Join(text, *display, [display] { display->Draw(); });
  return display;
}

}  // namespace

QWidget* MakeCalcPage(FormView& view, CalcPage& page) {
  auto* const widget = new QWidget(&view);
  auto* const layout = new QVBoxLayout(widget);
  layout->setContentsMargins(0, 4, 0, 4);
  auto* const top = new QHBoxLayout;
  top->addWidget(MakeBases(view, page.bases));
  top->addWidget(MakePending(view, page.display.Text8, page.display.Text9), 1);
  layout->addLayout(top);
  CalcKeys keys(view, page);
  auto* const display = new QHBoxLayout;
  display->setSpacing(4);
  // In step with the eight columns below.
  display->addWidget(MakeDisplay(view, page.display.Text7), 6);
  keys.AddEditKeys(*display);
  layout->addLayout(display);
  layout->addLayout(keys.MakePad(), 1);
  return widget;
}

}  // namespace quillbox
