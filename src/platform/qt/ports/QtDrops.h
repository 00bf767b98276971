#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>

namespace quillbox {

class DropText;

// Drops from other programs reach our widgets when their text is there. The toolkit would give them at once
// and wait, the whole program with it, until the other one delivers. Drags of our own aren't touched.
class QtDrops : public QObject, public QAbstractNativeEventFilter {
 public:
  // From now on, until it goes, for all widgets.
  explicit QtDrops(DropText& texts);
  ~QtDrops() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

 private:
  DropText& texts_;
  bool delivers_ = false;
};

}  // namespace quillbox
