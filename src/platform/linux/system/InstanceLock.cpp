#include "platform/linux/system/InstanceLock.h"

#include <sys/stat.h>
#include <unistd.h>

namespace quillbox {
namespace {

bool IsOwnFolder(const std::string& path) {
  struct stat status {};
  return !path.empty() && ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
         status.st_uid == ::geteuid() && ::access(path.c_str(), W_OK | X_OK) == 0;
}

}  // namespace

InstanceLock::InstanceLock(const std::string& runtimeFolder, const std::string& temporaryFolder)
    : path_(IsOwnFolder(runtimeFolder)
                ? runtimeFolder + "/quillbox.lock"
                : temporaryFolder + "/quillbox-" + std::to_string(::geteuid()) + ".lock") {}

bool InstanceLock::AnotherRuns() {
  return lock_.Acquire(path_, std::chrono::milliseconds(0)) == FileLock::Result::Taken;
}

}  // namespace quillbox
