#include "platform/qt/widgets/AreaField.h"

#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>

#include "core/settings/Limits.h"
#include "platform/qt/base/QtText.h"
#include "platform/qt/widgets/FieldKeys.h"
#include "platform/qt/widgets/ShownText.h"

namespace quillbox {

AreaField::AreaField(QWidget* parent, TextBox& box) : QPlainTextEdit(parent), box_(box) {
  setTabChangesFocus(true);
  setReadOnly(box.IsReadOnly());
  setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  connect(this, &QPlainTextEdit::textChanged, this, [this] { Edited(); });
  connect(this, &QPlainTextEdit::cursorPositionChanged, this, [this] { CaretMoved(); });
}

void AreaField::Draw() {
  const QSignalBlocker quiet(this);
  drawing_ = true;
  if (drawnText_ != box_.GetText()) {
    drawnText_ = box_.GetText();
    setPlainText(ShownText(drawnText_));
    shown_ = toPlainText();
  }
  QTextCursor cursor = textCursor();
  const int caret = static_cast<int>(PlaceInShown(drawnText_, box_.GetSelStart()));
  if (!cursor.hasSelection() && cursor.position() != caret) {
    cursor.setPosition(caret);
    setTextCursor(cursor);
  }
  drawing_ = false;
}

void AreaField::Edited() {
  if (drawing_) return;
  const QString now = toPlainText();
  if (now == shown_) return;
  Text text = WithEdit(box_.GetText(), shown_, now);
  const std::size_t caret = PlaceInText(text, textCursor().position());
  // In step with the control, unless its handlers make something else of it.
  drawnText_ = text;
  shown_ = now;
  box_.PersonEdit(text, caret);
}

void AreaField::CaretMoved() {
  if (drawing_ || toPlainText() != shown_) return;
  const QTextCursor cursor = textCursor();
  const std::size_t start = PlaceInText(drawnText_, cursor.selectionStart());
  box_.Select(start, PlaceInText(drawnText_, cursor.selectionEnd()) - start);
}

void AreaField::keyPressEvent(QKeyEvent* event) {
  if (!HandKeyOver(box_, *event)) QPlainTextEdit::keyPressEvent(event);
}

void AreaField::mousePressEvent(QMouseEvent* event) {
  QPlainTextEdit::mousePressEvent(event);
  if (box_.Click) box_.PersonClick();
}

bool AreaField::canInsertFromMimeData(const QMimeData* source) const { return source->hasText(); }

void AreaField::insertFromMimeData(const QMimeData* source) {
  // No field takes more than an entry holds; a huge text isn't laid out first.
  insertPlainText(ToQt(CutTo(FromQt(source->text()), limits::kEntryLength + 1)));
}

void AreaField::dropEvent(QDropEvent* event) {
  if (!box_.OLEDragDrop) return QPlainTextEdit::dropEvent(event);
  box_.PersonDrop(DroppedText(*event));
  event->acceptProposedAction();
}

}  // namespace quillbox
