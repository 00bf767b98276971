#pragma once

#include <string>

#include "base/Text.h"

namespace quillbox {

// A new, empty folder that goes away, with all that is in it, with this object.
class ScratchFolder {
 public:
  // std::filesystem::filesystem_error if none can be made.
  ScratchFolder();
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  // Its own path, or that of `name` in it.
  std::string Path(const std::string& name = "") const { return name.empty() ? path_ : path_ + "/" + name; }
  Text PathText() const;

 private:
  std::string path_;
};

}  // namespace quillbox
