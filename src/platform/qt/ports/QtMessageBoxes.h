#pragma once

#include <QObject>
#include <QPointer>
#include <vector>

#include "platform/ports/MessageBoxes.h"

class QMessageBox;

namespace quillbox {

// Modal boxes with plain text. The program's timers, its icon and the icon's menu live on behind an open one;
// the toolkit's own modal state would take them along, so what a person does to the other windows is held
// back here.
class QtMessageBoxes : public QObject, public MessageBoxes {
 public:
  BoxAnswer Show(const Text& text, BoxCode code, const Text& title) override;
  // Closes all open boxes as if none had been answered; for the exit.
  void CloseAll();

 protected:
  // While a box is open: sees what comes to each window of the program.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // The last box that has been opened, null if none is open.
  QMessageBox* Front() const;

  std::vector<QPointer<QMessageBox>> open_;
};

}  // namespace quillbox
