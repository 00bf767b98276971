// Turns an image file into bare pixels: run when the program is built, so that the program itself needs no
// image reader, which would load every image module of the system. Usage: quillbox-icon-pixels IMAGE PIXELS
#include <QFile>
#include <QImage>

int main(int, char** argv) {
  const QImage image =
      QImage(QString::fromLocal8Bit(argv[1])).convertToFormat(QImage::Format_ARGB32_Premultiplied);
  QFile file(QString::fromLocal8Bit(argv[2]));
  if (image.isNull() || !file.open(QIODevice::WriteOnly)) return 1;
  // Lines of 32-bit pixels have no padding.
  return file.write(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes()) ==
                 image.sizeInBytes()
             ? 0
             : 1;
}
