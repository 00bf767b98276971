#include "platform/linux/files/FileErrors.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>

#include "platform/linux/files/AtomicFile.h"

namespace quillbox {
namespace {

int NumberOf(int error, const std::string& path) {
  switch (error) {
    case ENOSPC:
    case EDQUOT:
      return errors::kDiskFull;
    case EACCES:
    case EPERM:
    case EROFS:
      return errors::kPermission;
    case ENOTDIR:
    case EISDIR:
    case ELOOP:
    case EINVAL:
      return errors::kPathAccess;
    case ENOENT: {
      struct stat status {};
      const bool folder = ::stat(FolderOf(path).c_str(), &status) == 0;
      return folder ? errors::kFileNotFound : errors::kPathNotFound;
    }
    default:
      return errors::kDeviceError;
  }
}

}  // namespace

RuntimeError FileError(int error, const std::string& path) {
  if (error == EINVAL) return {errors::kPathAccess, "Not a regular file"};
  // Not strerror, which speaks the user's language.
  const char* description = ::strerrordesc_np(error);
  return {NumberOf(error, path), description != nullptr ? description : "Unknown error"};
}

}  // namespace quillbox
