#pragma once

#include <chrono>
#include <string>

namespace quillbox {

// A lock on a file of the user's own (mode 0600), which ends with the object or with the process, however
// that ends. A link, or a file of somebody else, is never taken for it.
class FileLock {
 public:
  enum class Result { Held, Taken, Failed };  // Taken: another process, or another object, holds it

  FileLock() = default;
  ~FileLock();
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

  // Tries for at most `wait`. Failed when there can't be a lock file. On a file system that knows no locks it
  // is held without one.
  Result Acquire(const std::string& path, std::chrono::milliseconds wait);

 private:
  int fd_ = -1;
};

}  // namespace quillbox
