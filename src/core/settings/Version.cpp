#include "core/settings/Version.h"

namespace quillbox {

const int kMajor = QUILLBOX_VERSION_MAJOR;
const int kMinor = QUILLBOX_VERSION_MINOR;
const int kRevision = QUILLBOX_VERSION_PATCH;

}  // namespace quillbox
