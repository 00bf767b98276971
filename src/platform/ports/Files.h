#pragma once

#include <string>

#include "base/RuntimeError.h"
#include "base/Text.h"

namespace quillbox {

// The data files. Failures are RuntimeErrors with the numbers of `errors`.
class Files {
 public:
  virtual ~Files() = default;
  virtual bool Exists(const Text& path) = 0;
  // The whole content.
  virtual std::string Read(const Text& path) = 0;
  // Creates a folder, one level, if it doesn't exist.
  virtual void MakeFolder(const Text& path) = 0;
  // Replaces the file's content as one step: every reader, and a crash at any moment, finds the old content
  // or the new. Returns when readers find the new one; what a power cut keeps follows without holding the
  // caller up.
  virtual void Write(const Text& path, const std::string& content) = 0;
  // Gives the file another name beside it, replacing what has that name.
  virtual void Rename(const Text& from, const Text& to) = 0;
};

}  // namespace quillbox
