#include "platform/qt/widgets/LineField.h"

#include <QDropEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <utility>

#include "platform/qt/base/QtText.h"
#include "platform/qt/widgets/FieldKeys.h"

namespace quillbox {

LineField::LineField(QWidget* parent, TextBox& box) : QLineEdit(parent), box_(box) {
  setFocusPolicy(Qt::StrongFocus);
  setReadOnly(box.IsReadOnly());
  setDragEnabled(true);
  connect(this, &QLineEdit::textEdited, this, [this] { Edited(); });
  connect(this, &QLineEdit::selectionChanged, this, [this] {
    if (drawing_) return;
    if (hasSelectedText()) {
      box_.Select(static_cast<std::size_t>(selectionStart()), static_cast<std::size_t>(selectionLength()));
    } else {
      // "End" in a text that is marked up to its end unmarks it and moves no caret.
      box_.SetSelStart(static_cast<std::size_t>(cursorPosition()));
    }
  });
  connect(this, &QLineEdit::cursorPositionChanged, this, [this](int, int now) {
    if (!drawing_ && !hasSelectedText()) box_.SetSelStart(static_cast<std::size_t>(now));
  });
}

void LineField::Draw() {
  drawing_ = true;
  const QString shown = ToQt(box_.GetText());
  // A text that the program has ended with a line end shows without it.
  const qsizetype end = shown.indexOf(QLatin1Char('\r'));
  const QString line = end < 0 ? shown : shown.left(end);
  if (text() != line) setText(line);
  const int start = static_cast<int>(box_.GetSelStart());
  if (box_.GetSelLength() > 0) {
    if (selectionStart() != start) setSelection(start, static_cast<int>(box_.GetSelLength()));
  } else if (cursorPosition() != start || hasSelectedText()) {
    setCursorPosition(start);
  }
  const Qt::Alignment side = box_.GetAlignment() == Alignment::Right    ? Qt::AlignRight
                             : box_.GetAlignment() == Alignment::Center ? Qt::AlignHCenter
                                                                        : Qt::AlignLeft;
  setAlignment(side | Qt::AlignVCenter);
  drawing_ = false;
}

void LineField::Edited() {
  if (!drawing_) box_.PersonEdit(FromQt(text()), static_cast<std::size_t>(cursorPosition()));
}

void LineField::keyPressEvent(QKeyEvent* event) {
  if (!HandKeyOver(box_, *event)) QLineEdit::keyPressEvent(event);
}

void LineField::inputMethodEvent(QInputMethodEvent* event) {
  if (!box_.KeyPress || event->commitString().isEmpty()) return QLineEdit::inputMethodEvent(event);
  for (const char16_t unit : FromQt(event->commitString())) box_.PersonCharacter(unit);
}

bool LineField::TakesAsCharacter(const QKeyEvent& event) {
  const bool withCtrl =
      event.modifiers() == Qt::ControlModifier && event.key() >= Qt::Key_A && event.key() <= Qt::Key_Z;
  if (!takesCommands_ || !withCtrl) return false;
  box_.PersonCharacter(static_cast<char16_t>(event.key() - Qt::Key_A + 1));
  return true;
}

void LineField::focusInEvent(QFocusEvent* event) {
  entered_ = event->reason() == Qt::MouseFocusReason;
  QLineEdit::focusInEvent(event);
}

void LineField::mousePressEvent(QMouseEvent* event) {
  // What the control has selected when it got the focus stays so under the click that brought it.
  const auto start = static_cast<int>(box_.GetSelStart());
  const auto selected = static_cast<int>(box_.GetSelLength());
  QLineEdit::mousePressEvent(event);
  if (std::exchange(entered_, false) && selected > 0) setSelection(start, selected);
  if (event->button() == Qt::LeftButton) box_.PersonClick();
}

void LineField::dragEnterEvent(QDragEnterEvent* event) {
  if (OffersText(*event->mimeData())) event->acceptProposedAction();
  TakeCopy(*event);
}

void LineField::dragMoveEvent(QDragMoveEvent* event) {
  QLineEdit::dragMoveEvent(event);
  TakeCopy(*event);
}

void LineField::dropEvent(QDropEvent* event) {
  box_.SetSelStart(static_cast<std::size_t>(cursorPositionAt(event->position().toPoint())));
  box_.PersonDrop(DroppedText(*event));
  event->acceptProposedAction();
  TakeCopy(*event);
}

}  // namespace quillbox
