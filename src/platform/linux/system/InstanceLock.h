#pragma once

#include <string>

#include "platform/linux/files/FileLock.h"

namespace quillbox {

// Tells whether the user runs the program already. One object a process; it ends with the process at the
// latest.
class InstanceLock {
 public:
  // The lock file lies in the user's folder for such files, if that is the user's, else in `temporaryFolder`.
  InstanceLock(const std::string& runtimeFolder, const std::string& temporaryFolder);

  // False for the first one, which from then on holds the lock; also where there can't be a lock file.
  bool AnotherRuns();

 private:
  std::string path_;
  FileLock lock_;
};

}  // namespace quillbox
