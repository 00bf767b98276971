#pragma once

#include <sys/stat.h>
#include <sys/types.h>
#include <sys/uio.h>

#include <cstddef>

namespace quillbox {

// The system calls that write files, as they are: a result below 0 is a failure with errno set. One place, so
// that a test can let each of them fail, or be the last one that the process makes.
class SystemCalls {
 public:
  virtual ~SystemCalls() = default;
  virtual int Open(const char* path, int flags, mode_t mode);
  virtual int ChangeMode(int fd, mode_t mode);
  virtual ssize_t Write(int fd, const iovec* pieces, int count);
  virtual ssize_t Read(int fd, void* data, std::size_t size);
  virtual int Close(int fd);
  virtual int Rename(const char* from, const char* to);
  virtual int Remove(const char* path);
  virtual int Sync(int fd);
};

}  // namespace quillbox
