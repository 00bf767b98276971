#include "platform/qt/base/Icons.h"

#include <QFile>
#include <QIconEngine>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <algorithm>
#include <vector>

namespace quillbox {

namespace {

QPixmap Drawing(const QString& name, int size) {
  QFile file(QStringLiteral(":/icons/%1-%2").arg(name).arg(size));
  if (!file.open(QIODevice::ReadOnly)) return {};
  QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
  file.read(reinterpret_cast<char*>(image.bits()), image.sizeInBytes());
  return QPixmap::fromImage(std::move(image));
}

std::vector<QPixmap> Drawings(const QString& name, std::initializer_list<int> sizes) {
  std::vector<QPixmap> drawings;
  for (const int size : sizes) drawings.push_back(Drawing(name, size));
  return drawings;
}

QIcon Load(const QString& name, std::initializer_list<int> sizes) {
  QIcon icon;
  for (const QPixmap& drawing : Drawings(name, sizes)) icon.addPixmap(drawing);
  return icon;
}

// Drawings from small to large, drawn as they are. Qt's own icons go through a cache that wakes the program
// up half a minute later to look at itself.
class UncachedIcon : public QIconEngine {
 public:
  explicit UncachedIcon(std::vector<QPixmap> drawings) : drawings_(std::move(drawings)) {}

  void paint(QPainter* painter, const QRect& place, QIcon::Mode, QIcon::State) override {
    const qreal ratio = painter->device()->devicePixelRatioF();
    const int side = std::min(place.width(), place.height());
    const QPixmap& drawing = ForSide(qRound(side * ratio));
    // Smaller where need be, never larger than drawn.
    const int shown = std::min(side, qRound(drawing.width() / ratio));
    const QRect target(place.center() - QPoint((shown - 1) / 2, (shown - 1) / 2), QSize(shown, shown));
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->drawPixmap(target, drawing);
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap result(size);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    paint(&painter, QRect(QPoint(0, 0), size), mode, state);
    return result;
  }

  QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override {
    QList<QSize> sizes;
    for (const QPixmap& drawing : drawings_) sizes.append(drawing.size());
    return sizes;
  }

  bool isNull() override { return drawings_.empty(); }
  QIconEngine* clone() const override { return new UncachedIcon(drawings_); }

 private:
  const QPixmap& ForSide(int side) const {
    const auto fits = [side](const QPixmap& drawing) { return drawing.width() >= side; };
    const auto found = std::find_if(drawings_.begin(), drawings_.end(), fits);
    return found == drawings_.end() ? drawings_.back() : *found;
  }

  std::vector<QPixmap> drawings_;
};

}  // namespace

// Loaded once: Qt's cache of drawings would keep those of every window that ever was. Never destroyed, since
// the application is gone by then.
QIcon WindowIcon() {
  static const auto* const icon = new QIcon(Load(QStringLiteral("icon"), {16, 32, 48, 128}));
  return *icon;
}

QIcon TrayImageIcon(TrayImage image) {
  const QString name = image == TrayImage::Window ? QStringLiteral("tray") : QStringLiteral("tray-alt");
  return QIcon(new UncachedIcon(Drawings(name, {16, 22, 24, 32, 44, 48})));
}

QIcon NamedIcon(const char* name) { return Load(QString::fromLatin1(name), {16, 32}); }

QIcon PictureIcon(const std::string& holder) { return NamedIcon(holder == "Image4" ? "script" : "insert"); }

}  // namespace quillbox
