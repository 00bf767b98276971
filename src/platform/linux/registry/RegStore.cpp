#include "platform/linux/registry/RegStore.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <ctime>

#include "platform/linux/files/AtomicFile.h"
#include "platform/linux/files/FileLock.h"

namespace quillbox {
namespace {

constexpr std::size_t kMaxFileSize = std::size_t{64} << 20;
constexpr std::chrono::milliseconds kLockWait{1000};
// Times of files stand still for some milliseconds: two changes within them can't be told apart.
constexpr long long kYoungNanoseconds = 50'000'000;

long long Nanoseconds(const timespec& time) { return time.tv_sec * 1'000'000'000LL + time.tv_nsec; }

bool SameFile(const struct stat& a, const struct stat& b) {
  return a.st_ino == b.st_ino && a.st_dev == b.st_dev && a.st_size == b.st_size &&
         Nanoseconds(a.st_mtim) == Nanoseconds(b.st_mtim) && Nanoseconds(a.st_ctim) == Nanoseconds(b.st_ctim);
}

bool IsYoung(const struct stat& status) {
  timespec now{};
  ::clock_gettime(CLOCK_REALTIME, &now);
  return Nanoseconds(status.st_ctim) > Nanoseconds(now) - kYoungNanoseconds;
}

}  // namespace

RegStore::RegStore(std::shared_ptr<SystemCalls> calls, std::string path)
    : calls_(std::move(calls)), path_(std::move(path)) {}

const RegDocument& RegStore::Current() {
  struct stat now {};
  if (::stat(path_.c_str(), &now) != 0) now = {};
  if (!trusted_ || !SameFile(now, stamp_)) Load();
  return document_;
}

void RegStore::Load() {
  struct stat read {};
  std::string content;
  const int error = ReadWholeFile(*calls_, path_, kMaxFileSize, content, &read);
  // What can't be read is looked at again each time: permissions change without a trace in the file.
  stamp_ = {};
  if (error == 0) stamp_ = read;
  trusted_ = error == ENOENT || (error == 0 && !IsYoung(read));
  readable_ = error == 0 || error == ENOENT;
  if (content != document_.Source()) document_ = RegDocument(std::move(content));
}

bool RegStore::Change(const Edit& edit, DiskSync& sync) {
  const std::string folder = FolderOf(path_);
  if (MakeFolder(folder, true) != 0) return false;
  FileLock lock;
  if (lock.Acquire(folder + "/registry.lock", kLockWait) != FileLock::Result::Held) return false;
  Load();
  if (!readable_) return false;
  std::optional<std::string> changed = edit(document_);
  if (!changed || changed->size() > kMaxFileSize) return false;
  if (*changed == document_.Source()) return true;
  std::string written = path_;
  if (ReplaceFile(*calls_, written, *changed) != 0) return false;
  sync.Request(written);
  document_ = RegDocument(*std::move(changed));
  trusted_ = false;
  return true;
}

bool RegStore::Writable() const { return CanWriteFile(path_); }

bool CanWriteFile(std::string path) {
  if (ResolveLinks(path) != 0) return false;
  if (::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0 && errno != ENOENT) return false;
  std::string folder = FolderOf(path);
  // The nearest folder that is there: in it the missing ones are made.
  while (::faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) != 0) {
    if (errno != ENOENT || folder == "/" || folder == ".") return false;
    folder = FolderOf(folder);
  }
  struct stat status {};
  return ::stat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace quillbox
