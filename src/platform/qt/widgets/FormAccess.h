#pragma once

namespace quillbox {

// From now on a screen reader is told that the window of a form is a window or a dialog.
void UseFormAccess();

}  // namespace quillbox
