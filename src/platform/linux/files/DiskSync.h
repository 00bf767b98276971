#pragma once

#include <memory>
#include <string>

#include "platform/linux/files/SystemCalls.h"

namespace quillbox {

// Brings written files to the disk on a thread of its own, so that a slow disk holds nobody up. The thread
// starts with the first request and sleeps while there is none. What comes within a second after a sync waits
// for the end of that second, so that many quick writes of a file are one on the disk.
class DiskSync {
 public:
  explicit DiskSync(std::shared_ptr<SystemCalls> calls);
  // Finishes what was requested, but waits at most a second for it.
  ~DiskSync();
  DiskSync(const DiskSync&) = delete;
  DiskSync& operator=(const DiskSync&) = delete;

  // Syncs the file or folder and then the folder that holds it. Requests for one path that haven't begun are
  // one.
  void Request(const std::string& path);

 private:
  struct State;
  static void Run(const std::shared_ptr<State>& state);

  std::shared_ptr<State> state_;  // shared with the thread, which may outlive this object
};

}  // namespace quillbox
