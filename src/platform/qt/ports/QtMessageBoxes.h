#pragma once

#include <QPointer>
#include <vector>

#include "platform/ports/MessageBoxes.h"

class QMessageBox;

namespace quillbox {

// Modal boxes with plain text. The program's timers and its icon live on behind an open one.
class QtMessageBoxes : public MessageBoxes {
 public:
  BoxAnswer Show(const Text& text, BoxCode code, const Text& title) override;
  // Closes all open boxes as if none had been answered; for the exit.
  void CloseAll();

 private:
  std::vector<QPointer<QMessageBox>> open_;
};

}  // namespace quillbox
