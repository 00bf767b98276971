// The sound module: everything that needs Qt's multimedia.
#include <QPointer>
#include <QSoundEffect>
#include <QUrl>

#include "platform/qt/sound/SoundPlayer.h"

namespace quillbox {

namespace {

class EffectPlayer : public SoundPlayer {
 public:
  ~EffectPlayer() override { delete effect_; }

  void Play(const QString& path) override {
    delete effect_;
    // A new one each time: the file may have changed.
    effect_ = new QSoundEffect;
    QSoundEffect* const effect = effect_;
    QObject::connect(effect, &QSoundEffect::playingChanged, effect, [effect] {
      if (!effect->isPlaying()) effect->deleteLater();
    });
    QObject::connect(effect, &QSoundEffect::statusChanged, effect, [effect] {
      if (effect->status() == QSoundEffect::Error) effect->deleteLater();
    });
    effect->setSource(QUrl::fromLocalFile(path));
    effect->play();
  }

 private:
  QPointer<QSoundEffect> effect_;
};

}  // namespace

}  // namespace quillbox

extern "C" Q_DECL_EXPORT quillbox::SoundPlayer* quillboxMakeSoundPlayer() {
  return new quillbox::EffectPlayer;
}
