#include "platform/qt/widgets/FieldClipboard.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>

#include "platform/ports/Clipboard.h"
#include "platform/qt/base/QtText.h"
#include "platform/qt/widgets/AreaField.h"
#include "platform/qt/widgets/KeyField.h"
#include "platform/qt/widgets/LineField.h"

namespace quillbox {

namespace {

bool IsReadOnly(const QWidget& field) {
  const auto* const line = qobject_cast<const QLineEdit*>(&field);
  return line ? line->isReadOnly() : static_cast<const AreaField&>(field).isReadOnly();
}

Text MarkedText(const QWidget& field) {
  const auto* const line = qobject_cast<const QLineEdit*>(&field);
  return line ? FromQt(line->selectedText()) : static_cast<const AreaField&>(field).MarkedText();
}

void Remove(QWidget& field) {
  if (auto* const line = qobject_cast<QLineEdit*>(&field)) {
    if (line->hasSelectedText()) line->del();
  } else {
    static_cast<AreaField&>(field).textCursor().removeSelectedText();
  }
}

// The field itself, of a field or of the part of it that gets the mouse; null for anything else.
QWidget* FieldOf(QObject* watched) {
  if (auto* const line = qobject_cast<QLineEdit*>(watched)) return line;
  if (auto* const area = dynamic_cast<AreaField*>(watched)) return area;
  QObject* const parent = watched ? watched->parent() : nullptr;
  return dynamic_cast<AreaField*>(parent);
}

}  // namespace

void FieldClipboard::Serve(QWidget& widget) {
  // In a field for keys those of the clipboard are keys like others.
  if (!FieldOf(&widget) || dynamic_cast<KeyField*>(&widget)) return;
  widget.installEventFilter(this);
  if (auto* const area = dynamic_cast<AreaField*>(&widget)) area->viewport()->installEventFilter(this);
}

bool FieldClipboard::eventFilter(QObject* watched, QEvent* event) {
  QWidget* const field = FieldOf(watched);
  if (!field) return false;
  switch (event->type()) {
    case QEvent::KeyPress:
      return Key(*field, static_cast<QKeyEvent&>(*event));
    case QEvent::MouseButtonRelease:
      return static_cast<QMouseEvent*>(event)->button() == Qt::MiddleButton;
    case QEvent::ContextMenu:
      OpenMenu(*field, static_cast<QContextMenuEvent&>(*event));
      return true;
    default:
      return false;
  }
}

bool FieldClipboard::Key(QWidget& field, const QKeyEvent& event) {
  const bool copies = event.matches(QKeySequence::Copy);
  const bool cuts = event.matches(QKeySequence::Cut);
  if (!copies && !cuts && !event.matches(QKeySequence::Paste)) return false;
  auto* const line = dynamic_cast<LineField*>(&field);
  if (line && line->TakesAsCharacter(event)) return true;
  if (copies || cuts) Copy(field);
  if (cuts && !IsReadOnly(field)) Remove(field);
  if (!copies && !cuts) Paste(field);
  return true;
}

void FieldClipboard::Copy(const QWidget& field) {
  const Text text = MarkedText(field);
  if (text.empty()) return;
  IgnoreFailure([&] { clipboard_.Put(text); });
}

void FieldClipboard::Paste(QWidget& field) {
  if (IsReadOnly(field)) return;
  Text text;
  IgnoreFailure([&] { text = clipboard_.Read(); });
  if (text.empty()) return;
  if (auto* const line = qobject_cast<QLineEdit*>(&field)) {
    line->insert(ToQt(text));
  } else {
    static_cast<AreaField&>(field).PutIn(text);
  }
}

bool FieldClipboard::HasText() {
  bool has = false;
  IgnoreFailure([&] { has = !clipboard_.Read().empty(); });
  return has;
}

void FieldClipboard::OpenMenu(QWidget& field, const QContextMenuEvent& event) {
  auto* const menu = new QMenu(&field);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  auto* const line = qobject_cast<QLineEdit*>(&field);
  auto* const area = line ? nullptr : static_cast<AreaField*>(&field);
  const bool writes = !IsReadOnly(field);
  const bool marks = !MarkedText(field).empty();
  const auto add = [&](const QString& caption, QKeySequence::StandardKey key, bool enabled, auto action) {
    QAction* const item = menu->addAction(caption, &field, action);
    item->setShortcut(key);
    item->setEnabled(enabled);
  };
  if (writes) {
    add(tr("&Undo"), QKeySequence::Undo, line ? line->isUndoAvailable() : area->document()->isUndoAvailable(),
        [line, area] { line ? line->undo() : area->undo(); });
    add(tr("&Redo"), QKeySequence::Redo, line ? line->isRedoAvailable() : area->document()->isRedoAvailable(),
        [line, area] { line ? line->redo() : area->redo(); });
    menu->addSeparator();
    add(tr("Cu&t"), QKeySequence::Cut, marks, [this, &field] {
      Copy(field);
      Remove(field);
    });
  }
  add(tr("&Copy"), QKeySequence::Copy, marks, [this, &field] { Copy(field); });
  if (writes) {
    add(tr("&Paste"), QKeySequence::Paste, HasText(), [this, &field] { Paste(field); });
    add(tr("Delete"), QKeySequence::Delete, marks, [&field] { Remove(field); });
  }
  menu->addSeparator();
  add(tr("Select All"), QKeySequence::SelectAll, true,
      [line, area] { line ? line->selectAll() : area->selectAll(); });
  menu->popup(event.globalPos());
}

}  // namespace quillbox
