#include "platform/qt/ports/QtTips.h"

#include <QApplication>
#include <QEvent>
#include <QFontMetrics>
#include <QPainter>
#include <QPointer>
#include <QScreen>
#include <QTimer>
#include <QToolTip>

#include "platform/qt/base/QtText.h"
#include "tray/tips/MLToolTip.h"

namespace quillbox {

namespace {

constexpr int kBelowMouse = 20;        // pixels
constexpr PixelSize kBorder = {5, 3};  // a line, and room inside it
// How long a tip stays: a while, and more for more text.
int MillisecondsFor(std::size_t length) {
  return 10000 + 40 * static_cast<int>(std::min<std::size_t>(length, 1000));
}

}  // namespace

// The window that the tips share. It goes away when the mouse leaves the control, or at a key or click.
class TipPopup : public QWidget {
 public:
  TipPopup() : QWidget(nullptr, Qt::ToolTip | Qt::BypassGraphicsProxyWidget) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_ShowWithoutActivating);
    end_.setSingleShot(true);
    connect(&end_, &QTimer::timeout, this, &QWidget::hide);
  }

  void Show(TipLayout layout, const QPoint& place, QWidget& widget, std::size_t length) {
    layout_ = std::move(layout);
    if (widget_ != &widget) {
      if (widget_) widget_->removeEventFilter(this);
      widget_ = &widget;
      widget.installEventFilter(this);
    }
    setFont(QToolTip::font());
    setPalette(QToolTip::palette());
    setGeometry(QRect(place, QSize(layout_.width, layout_.height)));
    show();
    raise();
    update();
    end_.start(MillisecondsFor(length));
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    switch (event->type()) {
      case QEvent::Leave:
      case QEvent::MouseButtonPress:
      case QEvent::KeyPress:
      case QEvent::Wheel:
      case QEvent::Hide:
      case QEvent::FocusOut:
        hide();
        break;
      default:
        break;
    }
    return false;
  }

  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::ToolTipBase));
    painter.setPen(palette().color(QPalette::ToolTipText));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    const QFontMetrics metrics(font());
    const QRect inside =
        rect().adjusted(kBorder.width + 1, kBorder.height + 1, -kBorder.width - 1, -kBorder.height - 1);
    int top = inside.top();
    for (const TipLine& line : layout_.lines) {
      const QString text = ToQt(line.text);
      const int width = metrics.horizontalAdvance(text);
      const int left = layout_.alignment == 1   ? inside.left() + (inside.width() - width) / 2
                       : layout_.alignment == 2 ? inside.right() + 1 - width
                                                : inside.left();
      painter.drawText(left, top + metrics.ascent(), text);
      for (const std::size_t at : line.underlined) {
        const int from = left + metrics.horizontalAdvance(text.left(static_cast<qsizetype>(at)));
        const int to = left + metrics.horizontalAdvance(text.left(static_cast<qsizetype>(at) + 1));
        painter.drawLine(from, top + metrics.ascent() + metrics.underlinePos(), to - 1,
                         top + metrics.ascent() + metrics.underlinePos());
      }
      top += metrics.height();
    }
  }

 private:
  TipLayout layout_;
  QPointer<QWidget> widget_;
  QTimer end_;
};

QtTips::QtTips() = default;
QtTips::~QtTips() = default;

void QtTips::Hide() {
  if (popup_) popup_->hide();
}

void QtTips::Show(const Text& tip, const QPoint& place, QWidget& widget) {
  if (tip.empty() || !layout_ || !layout_->IsInstalled()) return Hide();
  if (!popup_) popup_ = std::make_unique<TipPopup>();
  const QScreen* const screen =
      QApplication::screenAt(place) ? QApplication::screenAt(place) : widget.screen();
  const QRect area = screen->geometry();
  TipLayout layout = layout_->Layout(tip, place.x() - area.left(), area.width(), *this);
  // Below the mouse, above it where there is no room.
  const int left = area.left() + layout.left;
  int top = place.y() + kBelowMouse;
  if (top + layout.height > area.bottom() + 1) top = std::max(area.top(), place.y() - layout.height - 4);
  popup_->Show(std::move(layout), QPoint(left, top), widget, tip.size());
}

int QtTips::LineHeight() { return QFontMetrics(QToolTip::font()).height(); }

int QtTips::TextWidth(TextView text) { return QFontMetrics(QToolTip::font()).horizontalAdvance(ToQt(text)); }

PixelSize QtTips::Border() { return kBorder; }

}  // namespace quillbox
