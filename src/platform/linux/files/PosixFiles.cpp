#include "platform/linux/files/PosixFiles.h"

#include <sys/stat.h>

#include <cerrno>

#include "base/Utf8.h"
#include "platform/linux/files/AtomicFile.h"
#include "platform/linux/files/FileErrors.h"

namespace quillbox {
namespace {

constexpr std::size_t kMaxFileSize = std::size_t{1} << 30;

// A NUL would cut the path down to that of another file.
std::string PathBytes(const Text& path) {
  if (path.find(u'\0') != Text::npos) throw RuntimeError(errors::kPathAccess, "Invalid file name");
  return ToUtf8(path);
}

void Check(int error, const std::string& path) {
  if (error != 0) throw FileError(error, path);
}

}  // namespace

PosixFiles::PosixFiles(std::shared_ptr<SystemCalls> calls) : calls_(calls), sync_(std::move(calls)) {}

void PosixFiles::MakeOnDemand(const Text& folder) { onDemand_ = PathBytes(folder); }

bool PosixFiles::Exists(const Text& path) {
  if (path.find(u'\0') != Text::npos) return false;
  struct stat status {};
  if (::stat(ToUtf8(path).c_str(), &status) == 0) return true;
  return errno != ENOENT && errno != ENOTDIR && errno != ENAMETOOLONG;
}

std::string PosixFiles::Read(const Text& path) {
  const std::string bytes = PathBytes(path);
  std::string content;
  Check(ReadWholeFile(*calls_, bytes, kMaxFileSize, content), bytes);
  return content;
}

void PosixFiles::MakeFolder(const Text& path) {
  const std::string bytes = PathBytes(path);
  if (!onDemand_.empty() && FolderOf(bytes) == onDemand_) {
    Check(quillbox::MakeFolder(onDemand_, true), onDemand_);
  }
  Check(quillbox::MakeFolder(bytes, false), bytes);
}

void PosixFiles::WritePieces(const Text& path, const Content& content) {
  std::string bytes = PathBytes(path);
  const int error = ReplaceFile(*calls_, bytes, content);
  // A file that isn't there can't be missing when it is written: the folder is.
  if (error == ENOENT) throw RuntimeError(errors::kPathNotFound, "No such folder");
  Check(error, bytes);
  sync_.Request(bytes);
}

void PosixFiles::Rename(const Text& from, const Text& to) {
  const std::string source = PathBytes(from);
  const std::string target = PathBytes(to);
  if (calls_->Rename(source.c_str(), target.c_str()) != 0) throw FileError(errno, source);
  sync_.Request(target);
}

}  // namespace quillbox
