#include "platform/linux/files/SystemCalls.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

namespace quillbox {

int SystemCalls::Open(const char* path, int flags, mode_t mode) { return ::open(path, flags, mode); }
int SystemCalls::ChangeMode(int fd, mode_t mode) { return ::fchmod(fd, mode); }
ssize_t SystemCalls::Write(int fd, const iovec* pieces, int count) { return ::writev(fd, pieces, count); }
ssize_t SystemCalls::Read(int fd, void* data, std::size_t size) { return ::read(fd, data, size); }
int SystemCalls::Close(int fd) { return ::close(fd); }
int SystemCalls::Rename(const char* from, const char* to) { return ::rename(from, to); }
int SystemCalls::Remove(const char* path) { return ::unlink(path); }
int SystemCalls::Sync(int fd) { return ::fsync(fd); }

}  // namespace quillbox
