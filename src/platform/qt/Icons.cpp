#include "platform/qt/Icons.h"

#include <QFile>
#include <QImage>
#include <QPixmap>

namespace quillbox {

namespace {

QIcon Load(const QString& name, std::initializer_list<int> sizes) {
  QIcon icon;
  for (const int size : sizes) {
    QFile file(QStringLiteral(":/icons/%1-%2").arg(name).arg(size));
    if (!file.open(QIODevice::ReadOnly)) continue;
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    file.read(reinterpret_cast<char*>(image.bits()), image.sizeInBytes());
    icon.addPixmap(QPixmap::fromImage(std::move(image)));
  }
  return icon;
}

}  // namespace

QIcon WindowIcon() { return Load(QStringLiteral("icon"), {16, 32, 48, 128}); }

QIcon TrayImageIcon(TrayImage image) {
  return Load(image == TrayImage::Window ? QStringLiteral("tray") : QStringLiteral("tray-alt"),
              {16, 22, 24, 32, 44, 48});
}

QIcon NamedIcon(const char* name) { return Load(QString::fromLatin1(name), {16, 32}); }

QIcon PictureIcon(const std::string& holder) { return NamedIcon(holder == "Image4" ? "script" : "insert"); }

}  // namespace quillbox
