#pragma once

#include <string>

#include "platform/linux/files/SystemCalls.h"

// The names of files that are being written, so that those of a process that was killed can be told and
// removed.
namespace quillbox {

// A name that no other call and no other process gives.
std::string NewTemporaryName();

// Removes what killed processes left in the folder: files with a name of the above pattern whose process is
// gone, or that are older than a minute. Failures are ignored.
void RemoveStaleTemporaries(SystemCalls& calls, const std::string& folder);

}  // namespace quillbox
