#pragma once

#include "platform/forms/Control.h"

class QDropEvent;
class QKeyEvent;
class QMimeData;

namespace quillbox {

class TextBox;

// The key as the forms know it; code 0 for one that they don't.
KeyEvent KeyOf(const QKeyEvent& event);
// Hands a key to a field's own rules where it has any for it. False: the widget is to edit as any field does.
bool HandKeyOver(TextBox& box, const QKeyEvent& event);
// Whether plain text is offered; asks the source for nothing.
bool OffersText(const QMimeData& data);
// Another program keeps what is dragged from it, though it offers to move it.
void TakeCopy(QDropEvent& event);
// The plain text of what was dropped; nothing if it holds none. Addresses of files are no text.
DragData DroppedText(const QDropEvent& event);

}  // namespace quillbox
