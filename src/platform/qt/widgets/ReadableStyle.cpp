#include "platform/qt/widgets/ReadableStyle.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "platform/qt/widgets/ViewParts.h"

namespace quillbox {

namespace {

constexpr int kLeastContrast = 60;  // of lightness, 0 to 255

// At a scale between two whole ones (125 %, 150 %) a frame of one unit begins and ends within a pixel: one
// half of its line is cut off, and what stands in the frame covers the other.
bool LosesItsFrame(const QWidget* widget) {
  const auto* const area = qobject_cast<const QAbstractScrollArea*>(widget);
  return area && area->devicePixelRatio() != std::floor(area->devicePixelRatio());
}

// Two units: a line, of a whole pixel at least, and one for what is in the frame.
void DrawFrameOfWholePixels(const QStyleOption& option, QPainter& painter) {
  constexpr int kLineDarker = 140;  // percent, as the style draws it
  painter.fillRect(option.rect, option.palette.color(QPalette::Window).darker(kLineDarker));
  painter.fillRect(option.rect.adjusted(1, 1, -1, -1), option.palette.base());
}

class ReadableStyle : public QProxyStyle {
 public:
  ReadableStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("fusion"))) {}

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    if (element == PE_Frame && LosesItsFrame(widget)) return DrawFrameOfWholePixels(*option, *painter);
    const QColor window = option->palette.color(QPalette::Window);
    const bool indicator = element == PE_IndicatorCheckBox || element == PE_IndicatorRadioButton ||
                           element == PE_IndicatorItemViewItemCheck;
    if (!indicator || window.lightness() > 128)
      return QProxyStyle::drawPrimitive(element, option, painter, widget);
    // The frame is drawn in a darker shade of the window's colour.
    QStyleOptionViewItem item;
    QStyleOptionButton button;
    QStyleOption* lighter = &button;
    if (const auto* const given = qstyleoption_cast<const QStyleOptionViewItem*>(option)) {
      item = *given;
      lighter = &item;
    } else if (const auto* const plain = qstyleoption_cast<const QStyleOptionButton*>(option)) {
      button = *plain;
    } else {
      return QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
    lighter->palette.setColor(QPalette::Window,
                              Blend(window, option->palette.color(QPalette::WindowText), 0.6));
    QProxyStyle::drawPrimitive(element, lighter, painter, widget);
  }

  // Boxes and pictures grow with a font that is larger than usual.
  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
    const int usual = QProxyStyle::pixelMetric(metric, option, widget);
    const int height = (widget ? widget->fontMetrics() : QFontMetrics(QApplication::font())).height();
    switch (metric) {
      case PM_IndicatorWidth:
      case PM_IndicatorHeight:
      case PM_ExclusiveIndicatorWidth:
      case PM_ExclusiveIndicatorHeight:
        return std::max(usual, height * 3 / 4);
      case PM_ButtonIconSize:
        return std::max(usual, height * 7 / 8);
      case PM_DefaultFrameWidth:
        return LosesItsFrame(widget) ? usual + 1 : usual;
      default:
        return usual;
    }
  }

  // A caption doesn't touch the frame of its button.
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                         const QWidget* widget) const override {
    QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    if (type == CT_PushButton && widget) size.rwidth() += widget->fontMetrics().height() * 3 / 4;
    return size;
  }

  void polish(QPalette& palette) override {
    QProxyStyle::polish(palette);
    const QColor base = palette.color(QPalette::Active, QPalette::Base);
    const QColor hint = palette.color(QPalette::Active, QPalette::PlaceholderText);
    if (std::abs(Blend(base, hint, hint.alphaF()).lightness() - base.lightness()) < kLeastContrast) {
      palette.setColor(QPalette::PlaceholderText,
                       Blend(base, palette.color(QPalette::Active, QPalette::Text), 0.6));
    }
  }
  using QProxyStyle::polish;
};

}  // namespace

void UseReadableStyle() {
  if (QApplication::style()->name() == QStringLiteral("fusion")) QApplication::setStyle(new ReadableStyle);
}

}  // namespace quillbox
