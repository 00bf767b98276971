#include "platform/qt/widgets/Bindings.h"

#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyleOptionSpinBox>
#include <QToolButton>
#include <QVBoxLayout>

#include "platform/forms/CheckBox.h"
#include "platform/forms/ComboBox.h"
#include "platform/forms/CommandButton.h"
#include "platform/forms/Label.h"
#include "platform/forms/OptionButton.h"
#include "platform/forms/Picture.h"
#include "platform/forms/ScrollBar.h"
#include "platform/forms/UpDown.h"
#include "platform/qt/base/Icons.h"
#include "platform/qt/base/QtText.h"
#include "platform/qt/widgets/ClickLabel.h"

namespace quillbox {

namespace {

void Name(QWidget& widget, const QString& name) {
  if (!name.isEmpty()) widget.setAccessibleName(name);
}

// The widget keeps its place in the layout while it is hidden, so that nothing jumps.
void KeepPlace(QWidget& widget) {
  QSizePolicy policy = widget.sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  widget.setSizePolicy(policy);
}

// A scroll bar without room for a slider: its arrows look like those of any field of numbers.
class ArrowPair : public QScrollBar {
 public:
  explicit ArrowPair(QWidget* parent) : QScrollBar(Qt::Vertical, parent) {}

 protected:
  void paintEvent(QPaintEvent* event) override {
    if (height() > 4 * width()) return QScrollBar::paintEvent(event);
    QStyleOptionSpinBox option;
    option.initFrom(this);
    option.frame = true;
    option.subControls = QStyle::SC_SpinBoxFrame | QStyle::SC_SpinBoxUp | QStyle::SC_SpinBoxDown;
    option.stepEnabled = QAbstractSpinBox::StepUpEnabled | QAbstractSpinBox::StepDownEnabled;
    QPainter painter(this);
    style()->drawComplexControl(QStyle::CC_SpinBox, &option, &painter, this);
  }
};

QColor Of(Color color, const QPalette& palette) {
  switch (color) {
    case Color::Blue:
      // Readable on a dark window too.
      return palette.color(QPalette::Window).lightness() < 128 ? QColor(0x6c, 0xa8, 0xff)
                                                               : QColor(0x00, 0x40, 0xd0);
    case Color::ButtonText:
      return palette.color(QPalette::ButtonText);
    default:
      return palette.color(QPalette::WindowText);
  }
}

}  // namespace

QAbstractButton* MakeButton(FormView& view, CommandButton& button, const QString& name) {
  auto* const widget = new QPushButton(&view);
  widget->setAutoDefault(false);
  widget->setFocusPolicy(Qt::StrongFocus);
  Name(*widget, name);
  KeepPlace(*widget);
  QObject::connect(widget, &QPushButton::clicked, widget, [&button] { button.PersonClick(); });
  view.Join(button, *widget, [widget, &button] {
    // Blanks that pad a caption are the layout's business here.
    widget->setText(ToQt(button.GetCaption()).simplified());
    if (!button.GetPicture().empty()) widget->setIcon(PictureIcon(button.GetPicture()));
  });
  return widget;
}

QLabel* MakeLabel(FormView& view, Label& label, const QString& name) {
  auto* const widget = new ClickLabel(&view, label);
  Name(*widget, name);
  KeepPlace(*widget);
  view.Join(label, *widget, [widget, &label] {
    widget->setText(ToQt(label.GetCaption()));
    widget->setAlignment((label.GetAlignment() == Alignment::Center  ? Qt::AlignHCenter
                          : label.GetAlignment() == Alignment::Right ? Qt::AlignRight
                                                                     : Qt::AlignLeft) |
                         Qt::AlignVCenter);
    if (label.GetForeColor() != Color::Default) {
      QPalette palette = widget->palette();
      palette.setColor(QPalette::WindowText, Of(label.GetForeColor(), palette));
      widget->setPalette(palette);
    }
  });
  return widget;
}

QCheckBox* MakeCheckBox(FormView& view, CheckBox& box) {
  auto* const widget = new QCheckBox(ToQt(box.GetCaption()), &view);
  QObject::connect(widget, &QCheckBox::clicked, widget, [&box](bool checked) {
    if (box.GetValue() != checked) box.PersonClick();
  });
  view.Join(box, *widget, [widget, &box] {
    const QSignalBlocker quiet(widget);
    widget->setChecked(box.GetValue());
  });
  return widget;
}

QRadioButton* MakeOption(FormView& view, OptionButton& option) {
  auto* const widget = new QRadioButton(ToQt(option.GetCaption()), &view);
  // The group is the form's, and the widgets of a group lie in one frame: Tab goes to the chosen one, arrows
  // choose.
  QObject::connect(widget, &QRadioButton::clicked, widget, [&option, widget] {
    option.PersonClick();
    widget->setChecked(option.GetValue());
  });
  view.Join(option, *widget, [widget, &option] {
    const QSignalBlocker quiet(widget);
    widget->setChecked(option.GetValue());
    widget->setFocusPolicy(option.GetValue() ? Qt::StrongFocus : Qt::ClickFocus);
  });
  return widget;
}

QComboBox* MakeComboBox(FormView& view, ComboBox& box, const QString& name) {
  auto* const widget = new QComboBox(&view);
  Name(*widget, name);
  for (const Text& item : box.Items()) widget->addItem(ToQt(item));
  QObject::connect(widget, &QComboBox::activated, widget, [&box](int index) { box.PersonChoose(index); });
  view.Join(box, *widget, [widget, &box] {
    const QSignalBlocker quiet(widget);
    widget->setCurrentIndex(box.GetListIndex());
  });
  return widget;
}

QScrollBar* MakeScrollBar(FormView& view, ScrollBar& bar, const QString& name) {
  auto* const widget = new ArrowPair(&view);
  Name(*widget, name);
  widget->setFocusPolicy(Qt::StrongFocus);
  widget->setRange(bar.GetMin(), bar.GetMax());
  widget->setSingleStep(bar.GetSmallChange());
  widget->setPageStep(bar.GetLargeChange());
  QObject::connect(widget, &QScrollBar::valueChanged, widget, [&bar](int value) { bar.PersonScroll(value); });
  view.Join(bar, *widget, [widget, &bar] {
    const QSignalBlocker quiet(widget);
    widget->setValue(bar.GetValue());
  });
  return widget;
}

QWidget* MakeUpDown(FormView& view, UpDown& upDown, const QString& name) {
  auto* const widget = new QWidget(&view);
  auto* const layout = new QVBoxLayout(widget);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  for (const bool up : {true, false}) {
    auto* const arrow = new QToolButton(widget);
    arrow->setIcon(NamedIcon(up ? "up" : "down"));
    arrow->setAccessibleName(name + (up ? QStringLiteral(": up") : QStringLiteral(": down")));
    arrow->setAutoRepeat(true);
    // The list beside the arrows keeps the focus, and its selection means what is moved.
    arrow->setFocusPolicy(Qt::NoFocus);
    QObject::connect(arrow, &QToolButton::clicked, widget, [&upDown, up] { upDown.PersonSpin(up); });
    layout->addWidget(arrow);
  }
  view.Join(upDown, *widget, {});
  return widget;
}

QFrame* MakeLine(FormView& view, Picture& line) {
  auto* const widget = new QFrame(&view);
  widget->setFrameShape(QFrame::HLine);
  widget->setFrameShadow(QFrame::Sunken);
  KeepPlace(*widget);
  view.Join(line, *widget, {});
  return widget;
}

}  // namespace quillbox
