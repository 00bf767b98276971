#pragma once

#include "base/Text.h"

namespace quillbox {

// What the tray icon's tip shows.
enum class TrayTipMode { NameOnly = 0, SingleLine = 1, MultiLine = 2 };

// The tip for the clipboard's text; `name` alone for an empty one. Ampersands are written as the shell reads
// them: three for one, five for a pair.
Text ComposeTrayTip(TrayTipMode mode, const Text& entry, const Text& name);

}  // namespace quillbox
