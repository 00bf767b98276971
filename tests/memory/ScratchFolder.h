#pragma once

#include <stdlib.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <system_error>

namespace quillbox {

// A new, empty folder that goes away, with all that is in it, with this object.
class ScratchFolder {
 public:
  ScratchFolder() : path_(std::filesystem::temp_directory_path() / "quillbox-XXXXXX") {
    if (!mkdtemp(path_.data())) throw std::system_error(errno, std::generic_category(), path_);
  }
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  // Its own path, or that of `name` in it.
  std::string Path(const std::string& name = "") const { return name.empty() ? path_ : path_ + "/" + name; }

 private:
  std::string path_;
};

}  // namespace quillbox
