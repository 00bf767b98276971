#include "platform/linux/files/FileLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <thread>

namespace quillbox {
namespace {

constexpr std::chrono::milliseconds kPause{5};

int OpenOwnFile(const std::string& path) {
  // Non-blocking, as somebody may have put a pipe there.
  const int fd =
      ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY, 0600);
  if (fd < 0) return -1;
  struct stat status {};
  if (::fstat(fd, &status) != 0 || !S_ISREG(status.st_mode) || status.st_uid != ::geteuid() ||
      status.st_nlink != 1) {
    ::close(fd);
    return -1;
  }
  // The sticky bit keeps it from those who clear out old temporary files.
  if ((status.st_mode & 07777) != 01600) ::fchmod(fd, 01600);
  return fd;
}

}  // namespace

FileLock::~FileLock() {
  if (fd_ >= 0) ::close(fd_);
}

FileLock::Result FileLock::Acquire(const std::string& path, std::chrono::milliseconds wait) {
  if (fd_ >= 0) return Result::Held;
  const int fd = OpenOwnFile(path);
  if (fd < 0) return Result::Failed;
  const auto end = std::chrono::steady_clock::now() + wait;
  while (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
    if (errno == EINTR) continue;
    if (errno != EWOULDBLOCK) break;
    if (std::chrono::steady_clock::now() >= end) {
      ::close(fd);
      return Result::Taken;
    }
    std::this_thread::sleep_for(kPause);
  }
  fd_ = fd;
  return Result::Held;
}

}  // namespace quillbox
