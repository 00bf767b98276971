#include "memory/ScratchFolder.h"

#include <stdlib.h>

#include <cerrno>
#include <filesystem>

#include "base/Utf8.h"

namespace quillbox {

ScratchFolder::ScratchFolder()
    : path_((std::filesystem::temp_directory_path() / "quillbox-XXXXXX").string()) {
  if (!mkdtemp(path_.data())) {
    throw std::filesystem::filesystem_error("mkdtemp", path_, std::error_code(errno, std::system_category()));
  }
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

Text ScratchFolder::PathText() const { return FromUtf8(path_); }

}  // namespace quillbox
