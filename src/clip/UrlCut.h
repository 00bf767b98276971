#pragma once

#include "base/Text.h"

namespace quillbox {

// The address that is embedded in an address, else what stands behind the first "=", else behind the first
// "?", else all; each up to the next "&". Works on any text.
Text CutUrlPart(TextView text);

}  // namespace quillbox
