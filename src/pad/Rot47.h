#pragma once

#include "base/Text.h"

namespace quillbox {

// Each character from "!" to "~" moved on by 47 of those 94; all others stay. Its own inverse.
Text Rot47(TextView text);

}  // namespace quillbox
