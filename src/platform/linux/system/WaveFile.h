#pragma once

#include "base/Text.h"

namespace quillbox {

// Whether the file is a wave file that can be handed to a player without risk: a plain file of 50 MB at most,
// with uncompressed samples in a usual format, whose header promises no more than the file holds.
bool IsPlayableWave(const Text& path);

}  // namespace quillbox
