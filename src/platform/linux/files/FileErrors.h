#pragma once

#include <string>

#include "base/RuntimeError.h"

namespace quillbox {

// The failure of a system call on `path`, as error traps sort it: number and a description in English.
RuntimeError FileError(int error, const std::string& path);

}  // namespace quillbox
