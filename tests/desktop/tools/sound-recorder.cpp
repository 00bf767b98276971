// Stands in for the sound module: notes which files it is asked to play, beside itself, and makes no sound.
#include <dlfcn.h>

#include <QFile>
#include <QFileInfo>

#include "platform/qt/sound/SoundPlayer.h"

namespace quillbox {
namespace {

class Recorder : public SoundPlayer {
 public:
  explicit Recorder(const QString& file) : file_(file) {}
  void Play(const QString& path) override {
    QFile file(file_);
    if (file.open(QFile::Append)) file.write(path.toUtf8() + '\n');
  }

 private:
  QString file_;
};

}  // namespace
}  // namespace quillbox

extern "C" Q_DECL_EXPORT quillbox::SoundPlayer* quillboxMakeSoundPlayer() {
  Dl_info here = {};
  dladdr(reinterpret_cast<void*>(&quillboxMakeSoundPlayer), &here);
  return new quillbox::Recorder(QFileInfo(QString::fromLocal8Bit(here.dli_fname)).absolutePath() +
                                QStringLiteral("/played"));
}
