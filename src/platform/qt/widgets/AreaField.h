#pragma once

#include <QPlainTextEdit>

#include "platform/forms/TextBox.h"

namespace quillbox {

// Shows a TextBox of many lines.
class AreaField : public QPlainTextEdit {
 public:
  AreaField(QWidget* parent, TextBox& box);
  void Draw();
  // What is marked, with its own line ends.
  Text MarkedText() const;
  // By the person, in place of what is marked.
  void PutIn(const Text& text);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  bool canInsertFromMimeData(const QMimeData* source) const override;
  void insertFromMimeData(const QMimeData* source) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void Edited();
  void CaretMoved();

  TextBox& box_;
  Text drawnText_;  // what the control held when the field was last in step with it
  QString shown_;   // what the field gave for it
  bool drawing_ = false;
};

}  // namespace quillbox
