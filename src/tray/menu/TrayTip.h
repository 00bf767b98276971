#pragma once

#include "core/settings/Settings.h"

namespace quillbox {

// The tip for the clipboard's text; `name` alone for an empty one. Ampersands are written as the shell reads
// them: three for one, five for a pair.
Text ComposeTrayTip(TrayTipMode mode, const Text& entry, const Text& name);

}  // namespace quillbox
