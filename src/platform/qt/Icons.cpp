#include "platform/qt/Icons.h"

namespace quillbox {

namespace {

QIcon Load(const QString& name, std::initializer_list<int> sizes) {
  QIcon icon;
  for (const int size : sizes) {
    icon.addFile(QStringLiteral(":/icons/%1-%2.png").arg(name).arg(size), QSize(size, size));
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
