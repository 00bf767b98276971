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
  // "Select all" with the caret at the end already moves nothing and selects all the same.
  connect(this, &QPlainTextEdit::selectionChanged, this, [this] { CaretMoved(); });
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

Text AreaField::MarkedText() const { return box_.GetText().substr(box_.GetSelStart(), box_.GetSelLength()); }

void AreaField::PutIn(const Text& text) {
  // No field takes more than an entry holds; a huge text isn't laid out first.
  const Text in(CutTo(text, limits::kEntryLength + 1));
  QTextCursor cursor = textCursor();
  const std::size_t from = PlaceInText(drawnText_, cursor.selectionStart());
  const std::size_t to = PlaceInText(drawnText_, cursor.selectionEnd());
  // The text keeps its own line ends; what is shown of them is the field's business.
  Text edited = drawnText_;
  edited.replace(from, to - from, in);
  drawing_ = true;
  cursor.insertText(ShownText(in));
  setTextCursor(cursor);
  drawing_ = false;
  drawnText_ = edited;
  shown_ = toPlainText();
  box_.PersonEdit(edited, from + in.size());
}

bool AreaField::canInsertFromMimeData(const QMimeData* source) const { return OffersText(*source); }

void AreaField::insertFromMimeData(const QMimeData* source) {
  // Of a drag within the field itself; a drop from elsewhere is the control's.
  PutIn(FromQt(source->text()));
}

void AreaField::dragEnterEvent(QDragEnterEvent* event) {
  QPlainTextEdit::dragEnterEvent(event);
  TakeCopy(*event);
}

void AreaField::dragMoveEvent(QDragMoveEvent* event) {
  QPlainTextEdit::dragMoveEvent(event);
  TakeCopy(*event);
}

void AreaField::dropEvent(QDropEvent* event) {
  if (event->source() && (event->source() == this || event->source() == viewport())) {
    return QPlainTextEdit::dropEvent(event);
  }
  // The control's doing alone: the field's own would edit it and take the focus.
  if (!box_.OLEDragDrop) {
    const int place = cursorForPosition(event->position().toPoint()).position();
    box_.SetSelStart(PlaceInText(drawnText_, place));
  }
  box_.PersonDrop(DroppedText(*event));
  event->setDropAction(Qt::CopyAction);
  event->accept();
}

}  // namespace quillbox
