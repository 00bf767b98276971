#pragma once

#include <QLineEdit>

#include "platform/forms/TextBox.h"

namespace quillbox {

// Shows a TextBox in one line.
class LineField : public QLineEdit {
 public:
  LineField(QWidget* parent, TextBox& box);
  void Draw();
  // The keys of copy, cut and paste with Ctrl are characters here, for the control's own rules.
  void TakeCommandsAsCharacters() { takesCommands_ = true; }
  // True if it has taken such a key as one.
  bool TakesAsCharacter(const QKeyEvent& event);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void Edited();

  TextBox& box_;
  bool drawing_ = false;
  bool entered_ = false;  // the press that comes next has brought the focus here
  bool takesCommands_ = false;
};

}  // namespace quillbox
