#include "platform/qt/widgets/ViewParts.h"

#include <QApplication>
#include <QEvent>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QGroupBox>
#include <QHelpEvent>
#include <QLabel>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "platform/forms/Label.h"
#include "platform/forms/Picture.h"
#include "platform/qt/base/QtText.h"
#include "platform/qt/base/WindowHints.h"
#include "platform/qt/ports/QtTips.h"
#include "platform/qt/widgets/ClickLabel.h"

namespace quillbox {

namespace {

class ElidedLabel : public ClickLabel {
 public:
  using ClickLabel::ClickLabel;
  QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(contentsRect(), Qt::AlignLeft | Qt::AlignVCenter,
                     fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width()));
  }
};

class HintFilter : public QObject {
 public:
  HintFilter(QWidget& widget, QtTips& tips, const Control& control, const QString& hint)
      : QObject(&widget), tips_(tips), control_(control), widget_(widget), hint_(FromQt(hint)) {}

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() != QEvent::ToolTip || !control_.GetToolTipText().empty()) return false;
    tips_.Show(hint_, static_cast<QHelpEvent*>(event)->globalPos(), widget_);
    return true;
  }

 private:
  QtTips& tips_;
  const Control& control_;
  QWidget& widget_;
  Text hint_;
};

class UnderlineUnderMouse : public QObject {
 public:
  explicit UnderlineUnderMouse(QLabel& label) : QObject(&label), label_(label) {}

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Enter || event->type() == QEvent::Leave) {
      QFont font = label_.font();
      font.setUnderline(event->type() == QEvent::Enter);
      label_.setFont(font);
    }
    return false;
  }

 private:
  QLabel& label_;
};

class TintFilter : public QObject {
 public:
  TintFilter(QWidget& widget, QPalette::ColorRole role, ColorChoice choice)
      : QObject(&widget), widget_(widget), role_(role), choice_(std::move(choice)) {
    Apply();
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::PaletteChange) Apply();
    return false;
  }

 private:
  void Apply() {
    const QWidget* const around = widget_.parentWidget();
    const QColor color = choice_(around ? around->palette() : QPalette());
    if (color == applied_) return;
    applied_ = color;
    QPalette palette;
    palette.setColor(QPalette::Active, role_, color);
    palette.setColor(QPalette::Inactive, role_, color);
    widget_.setPalette(palette);
  }

  QWidget& widget_;
  QPalette::ColorRole role_;
  ColorChoice choice_;
  QColor applied_;
};

}  // namespace

void DialogView::AppearOrGo() {
  FormView::AppearOrGo();
  const unsigned shows = GetForm().Shows();
  if (std::exchange(shows_, shows) == shows || !GetForm().GetVisible()) return;
  if (coming_ == Coming::ToFrontWithFocus) {
    if (!isActiveWindow()) from_ = QApplication::activeWindow();
    ActivateWindow(*this);
  } else {
    raise();
  }
}

void DialogView::setVisible(bool visible) {
  const bool front = isActiveWindow();
  FormView::setVisible(visible);
  // Not every window manager gives the focus back to a window that isn't in the task bar.
  if (!visible && front && from_ && from_->isVisible()) ActivateWindow(*from_);
}

void DialogView::FinishCentered() {
  Form& form = GetForm();
  const int width = form.GetWidth();
  const int height = form.GetHeight();
  Finish();
  form.Move(std::max(0, form.GetLeft() + (width - form.GetWidth()) / 2),
            std::max(0, form.GetTop() + (height - form.GetHeight()) / 2));
}

QGroupBox* MakeFrame(FormView& view, Picture& frame) {
  auto* const widget = new QGroupBox(ToQt(frame.GetCaption()), &view);
  view.Join(frame, *widget, {});
  return widget;
}

QLabel* MakeImage(FormView& view, Picture& picture, const QIcon& icon, int size, const QString& name) {
  auto* const widget = new ClickLabel(&view, picture);
  widget->setPixmap(icon.pixmap(QSize(size, size), view.devicePixelRatioF()));
  widget->setAccessibleName(name);
  view.Join(picture, *widget, {});
  return widget;
}

QLabel* MakeElidedLabel(FormView& view, Label& label) {
  auto* const widget = new ElidedLabel(&view, label);
  widget->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  view.Join(label, *widget, [widget, &label] { widget->setText(ToQt(label.GetCaption()).simplified()); });
  return widget;
}

void GiveHint(FormView& view, const Control& control, QWidget& widget, const QString& hint) {
  // The filter that was installed last sees the event first.
  widget.installEventFilter(new HintFilter(widget, view.Tools().tips, control, hint));
}

void LookLikeLink(QLabel& label) {
  label.installEventFilter(new UnderlineUnderMouse(label));
  Tint(label, QPalette::WindowText, [](const QPalette& palette) {
    // The usual blue of links is glaring on a light window and hard to read on a dark one.
    const bool dark = palette.color(QPalette::Window).lightness() < 128;
    return dark ? QColor(0x8a, 0xb8, 0xff) : QColor(0x1a, 0x4a, 0xa8);
  });
}

void Tint(QWidget& widget, QPalette::ColorRole role, ColorChoice choice) {
  widget.installEventFilter(new TintFilter(widget, role, std::move(choice)));
}

QColor Blend(const QColor& one, const QColor& other, double share) {
  const auto between = [share](int from, int to) { return static_cast<int>(from + (to - from) * share); };
  return {between(one.red(), other.red()), between(one.green(), other.green()),
          between(one.blue(), other.blue())};
}

QFont Scaled(const QFont& font, double factor) {
  QFont scaled = font;
  if (font.pointSizeF() > 0) {
    scaled.setPointSizeF(font.pointSizeF() * factor);
  } else {
    scaled.setPixelSize(static_cast<int>(font.pixelSize() * factor));
  }
  return scaled;
}

QFont DigitFont(const QFont& font) {
  const QFontMetrics metrics(font);
  const int width = metrics.horizontalAdvance(QLatin1Char('0'));
  for (char digit = '1'; digit <= '9'; ++digit) {
    if (metrics.horizontalAdvance(QLatin1Char(digit)) != width) {
      QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
      fixed.setPointSizeF(QFontInfo(font).pointSizeF());
      return fixed;
    }
  }
  return font;
}

void ReserveWidthFor(QWidget& widget, const QStringList& captions) {
  int widest = 0;
  for (const QString& caption : captions) {
    widest = std::max(widest, widget.fontMetrics().horizontalAdvance(caption));
  }
  widget.setMinimumWidth(widest + 2 * widget.fontMetrics().horizontalAdvance(QLatin1Char('M')));
}

}  // namespace quillbox
