#include "platform/qt/widgets/FieldKeys.h"

#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QUrl>
#include <algorithm>

#include "platform/forms/TextBox.h"
#include "platform/qt/base/QtText.h"

namespace quillbox {

KeyEvent KeyOf(const QKeyEvent& event) {
  KeyEvent key;
  key.ctrl = event.modifiers().testFlag(Qt::ControlModifier);
  key.shift = event.modifiers().testFlag(Qt::ShiftModifier);
  key.alt = event.modifiers().testFlag(Qt::AltModifier);
  switch (event.key()) {
    case Qt::Key_Backspace:
      key.code = keys::kBackspace;
      break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      key.code = keys::kEnter;
      break;
    case Qt::Key_Escape:
      key.code = keys::kEscape;
      break;
    case Qt::Key_Space:
      key.code = keys::kSpace;
      break;
    case Qt::Key_PageUp:
      key.code = keys::kPageUp;
      break;
    case Qt::Key_PageDown:
      key.code = keys::kPageDown;
      break;
    case Qt::Key_End:
      key.code = keys::kEnd;
      break;
    case Qt::Key_Home:
      key.code = keys::kHome;
      break;
    case Qt::Key_Left:
      key.code = keys::kLeft;
      break;
    case Qt::Key_Up:
      key.code = keys::kUp;
      break;
    case Qt::Key_Right:
      key.code = keys::kRight;
      break;
    case Qt::Key_Down:
      key.code = keys::kDown;
      break;
    case Qt::Key_Delete:
      key.code = keys::kDelete;
      break;
    case Qt::Key_A:
      if (key.ctrl) key.code = keys::kA;
      break;
    default:
      break;
  }
  return key;
}

// Ctrl alone with C, V or X.
static bool IsClipboardCommand(const QKeyEvent& event) {
  return event.modifiers() == Qt::ControlModifier &&
         (event.key() == Qt::Key_C || event.key() == Qt::Key_V || event.key() == Qt::Key_X);
}

bool HandKeyOver(TextBox& box, const QKeyEvent& event) {
  if (!box.KeyPress) return false;
  const bool command = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
  if (box.TakesCommandsAsCharacters() && IsClipboardCommand(event)) {
    box.PersonCharacter(static_cast<char16_t>(event.key() - Qt::Key_A + 1));
    return true;
  }
  const QString text = event.text();
  if (command || text.isEmpty() || event.key() == Qt::Key_Delete || event.key() == Qt::Key_Tab ||
      event.key() == Qt::Key_Backtab || event.key() == Qt::Key_Escape) {
    return false;
  }
  const bool enter = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
  for (const char16_t unit : FromQt(text)) box.PersonCharacter(enter ? u'\r' : unit);
  return true;
}

bool OffersText(const QMimeData& data) { return data.hasFormat(QStringLiteral("text/plain")); }

void TakeCopy(QDropEvent& event) {
  if (!event.source()) event.setDropAction(Qt::CopyAction);
}

DragData DroppedText(const QDropEvent& event) {
  const QMimeData& data = *event.mimeData();
  if (!OffersText(data)) return std::nullopt;
  if (data.hasUrls()) {
    const QList<QUrl> addresses = data.urls();
    const bool files =
        std::all_of(addresses.begin(), addresses.end(), [](const QUrl& url) { return url.isLocalFile(); });
    if (files && !addresses.isEmpty()) return std::nullopt;
  }
  return FromQt(data.text());
}

}  // namespace quillbox
