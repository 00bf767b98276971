#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

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
  // Hands the next pieces of a file's content over, which it needs no more when it returns.
  using Put = std::function<void(std::span<const std::string_view> pieces)>;
  using Content = std::function<void(const Put& put)>;
  // Replaces the file's content as one step: every reader, and a crash at any moment, finds the old content
  // or the new. Returns when readers find the new one; what a power cut keeps follows without holding the
  // caller up.
  virtual void WritePieces(const Text& path, const Content& content) = 0;
  void Write(const Text& path, std::string_view whole) {
    WritePieces(path, [whole](const Put& put) { put({&whole, 1}); });
  }
  // Gives the file another name beside it, replacing what has that name.
  virtual void Rename(const Text& from, const Text& to) = 0;
};

}  // namespace quillbox
