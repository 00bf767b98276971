#pragma once

namespace quillbox {

// Mends what Qt's own style draws too dark on a dark window, frames of check boxes and options, hints in
// empty fields, and what it draws too small for a large font or loses at a fractional scale. A style of the
// user's choice is left alone.
void UseReadableStyle();

}  // namespace quillbox
