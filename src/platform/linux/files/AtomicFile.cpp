#include "platform/linux/files/AtomicFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <span>
#include <vector>

#include "platform/linux/files/TemporaryName.h"

namespace quillbox {
namespace {

constexpr int kMaxLinks = 40;
constexpr int kMaxNames = 16;

int WriteAll(SystemCalls& calls, int fd, std::span<const std::string_view> pieces) {
  std::vector<iovec> all;
  all.reserve(pieces.size());
  for (const std::string_view piece : pieces) {
    if (!piece.empty()) all.push_back({const_cast<char*>(piece.data()), piece.size()});
  }
  for (std::span<iovec> left(all); !left.empty();) {
    const ssize_t count =
        calls.Write(fd, left.data(), static_cast<int>(std::min<std::size_t>(left.size(), IOV_MAX)));
    if (count < 0) {
      if (errno == EINTR) continue;
      return errno;
    }
    if (count == 0) return EIO;
    auto written = static_cast<std::size_t>(count);
    while (!left.empty() && written >= left.front().iov_len) {
      written -= left.front().iov_len;
      left = left.subspan(1);
    }
    if (left.empty()) break;
    left.front().iov_base = static_cast<char*>(left.front().iov_base) + written;
    left.front().iov_len -= written;
  }
  return 0;
}

int OpenTemporary(SystemCalls& calls, const std::string& folder, std::string& path) {
  for (int attempt = 0; attempt < kMaxNames; ++attempt) {
    path = folder + "/" + NewTemporaryName();
    int fd = -1;
    do {
      fd = calls.Open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600);
    } while (fd < 0 && errno == EINTR);
    if (fd >= 0 || errno != EEXIST) return fd;
  }
  return -1;
}

// Some file systems, of sticks and networks, have no modes to change: that is no reason not to write.
int SetMode(SystemCalls& calls, int fd) {
  if (calls.ChangeMode(fd, 0600) == 0) return 0;
  return errno == EPERM || errno == EOPNOTSUPP || errno == ENOSYS ? 0 : errno;
}

// What stands at the path may be replaced: a regular file with write permission, or nothing.
int CheckTarget(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return errno == ENOENT ? 0 : errno;
  if (S_ISDIR(status.st_mode)) return EISDIR;
  if (!S_ISREG(status.st_mode)) return EINVAL;
  return ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0 ? 0 : errno;
}

}  // namespace

std::string FolderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

int ResolveLinks(std::string& path) {
  std::string found = path;
  char target[PATH_MAX];
  for (int hop = 0; hop < kMaxLinks; ++hop) {
    const ssize_t length = ::readlink(found.c_str(), target, sizeof target);
    if (length < 0) {
      if (errno != EINVAL && errno != ENOENT) return errno;  // EINVAL: there, and no link
      path = found;
      return 0;
    }
    const std::string_view link(target, static_cast<std::size_t>(length));
    found = link.starts_with('/') ? std::string(link) : FolderOf(found) + "/" + std::string(link);
  }
  return ELOOP;
}

int ReadWholeFile(SystemCalls& calls, const std::string& path, std::size_t maxBytes, std::string& content,
                  struct stat* stamp) {
  content.clear();
  // Looked at before it is opened: opening a device can have effects of its own.
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return errno;
  if (S_ISDIR(status.st_mode)) return EISDIR;
  if (!S_ISREG(status.st_mode)) return EINVAL;
  int fd = -1;
  do {
    fd = calls.Open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0);
  } while (fd < 0 && errno == EINTR);
  if (fd < 0) return errno;
  int error = 0;
  if (::fstat(fd, &status) != 0) {
    error = errno;
  } else if (!S_ISREG(status.st_mode)) {
    error = EINVAL;
  } else if (static_cast<unsigned long long>(status.st_size) > maxBytes) {
    error = EFBIG;
  }
  if (stamp != nullptr) *stamp = status;
  // One byte more than the size tells the end of the file without a second round.
  std::size_t room = static_cast<std::size_t>(status.st_size) + 1;
  std::size_t length = 0;
  while (error == 0) {
    if (length > maxBytes) {
      error = EFBIG;
      break;
    }
    if (content.size() < length + room) content.resize(length + room);
    const ssize_t count = calls.Read(fd, content.data() + length, content.size() - length);
    if (count < 0) {
      if (errno != EINTR) error = errno;
      continue;
    }
    if (count == 0) break;
    length += static_cast<std::size_t>(count);
    if (length == content.size())
      room = 65536;  // it grew meanwhile
    else
      room = 1;
  }
  calls.Close(fd);
  content.resize(error == 0 ? length : 0);
  return error;
}

int ReplaceFile(SystemCalls& calls, std::string& path, std::string_view content) {
  return ReplaceFile(calls, path, [content](const Files::Put& put) { put({&content, 1}); });
}

int ReplaceFile(SystemCalls& calls, std::string& path, const Files::Content& content) {
  if (path.empty()) return ENOENT;
  if (const int error = ResolveLinks(path)) return error;
  if (const int error = CheckTarget(path)) return error;
  const std::string folder = FolderOf(path);
  RemoveStaleTemporaries(calls, folder);

  std::string temporary;
  const int fd = OpenTemporary(calls, folder, temporary);
  if (fd < 0) return errno;
  int error = SetMode(calls, fd);
  try {
    content([&](std::span<const std::string_view> pieces) {
      if (error == 0) error = WriteAll(calls, fd, pieces);
    });
  } catch (...) {
    calls.Close(fd);
    calls.Remove(temporary.c_str());
    throw;
  }
  // A network file system may tell only here that the content did not fit.
  if (calls.Close(fd) != 0 && errno != EINTR && error == 0) error = errno;
  if (error == 0 && calls.Rename(temporary.c_str(), path.c_str()) != 0) error = errno;
  if (error != 0) calls.Remove(temporary.c_str());
  return error;
}

int MakeFolder(const std::string& path, bool parents) {
  if (path.empty()) return ENOENT;
  if (::mkdir(path.c_str(), 0700) == 0) {
    // The umask may have taken rights away, and folders on some systems inherit bits.
    struct stat status {};
    if (::lstat(path.c_str(), &status) == 0 && (status.st_mode & 0777) != 0700) ::chmod(path.c_str(), 0700);
    return 0;
  }
  const int error = errno;
  struct stat status {};
  if (::stat(path.c_str(), &status) == 0) return S_ISDIR(status.st_mode) ? 0 : ENOTDIR;
  const std::string parent = FolderOf(path);
  if (error != ENOENT || !parents || parent == path || parent == ".") return error;
  if (const int failed = MakeFolder(parent, true)) return failed;
  return MakeFolder(path, false);
}

}  // namespace quillbox
