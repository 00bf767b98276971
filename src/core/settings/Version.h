#pragma once

namespace quillbox {

// The program's own version, as the build's project states it.
extern const int kMajor;
extern const int kMinor;
extern const int kRevision;

}  // namespace quillbox
