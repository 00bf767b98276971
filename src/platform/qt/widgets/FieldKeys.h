#pragma once

#include "platform/forms/Control.h"

class QDropEvent;
class QKeyEvent;

namespace quillbox {

class TextBox;

// The key as the forms know it; code 0 for one that they don't.
KeyEvent KeyOf(const QKeyEvent& event);
// Hands a key to a field's own rules where it has any for it. False: the widget is to edit as any field does.
bool HandKeyOver(TextBox& box, const QKeyEvent& event);
// The plain text of what was dropped; nothing if it holds none.
DragData DroppedText(const QDropEvent& event);

}  // namespace quillbox
