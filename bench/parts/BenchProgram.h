#pragma once

#include <atomic>
#include <chrono>
#include <memory>
#include <string>

#include "core/app/frmTray.h"
#include "memory/MemoryWorld.h"
#include "platform/linux/files/PosixFiles.h"
#include "platform/linux/registry/FileRegistry.h"
#include "platform/linux/system/LinuxClock.h"

namespace quillbox::bench {

// The system's calls, with a count of the files that were replaced, and a disk that may be slow.
class WatchedCalls : public SystemCalls {
 public:
  int Rename(const char* from, const char* to) override {
    ++renames;
    return SystemCalls::Rename(from, to);
  }
  int Sync(int fd) override;

  std::atomic<int> renames{0};
  std::atomic<int> syncSeconds{0};
};

// The whole program on real files and a real registry; clipboard, tray and windows are in memory. It has
// started, with empty lists.
class BenchProgram {
 public:
  explicit BenchProgram(int clipEntriesMax = 99);

  // Another program copies; what the next tick finds.
  void Copy(const Text& text) { world.clipboard.OtherSets(text); }
  void Tick() {
    dispatcher.Dispatch([this] { program.watcher.TimerAktion(); });
  }
  // So many different texts of that length, as if they had been copied one after another.
  void Fill(int rows, std::size_t length);
  // Sees what was written on the disk, as the program itself does a second later: a measured write doesn't
  // wait for the one before it.
  void AwaitDisk();
  // A text of that length that no row has.
  Text NewText(std::size_t length);

  // Folder of the data files, and one of them.
  std::string Folder() const { return world.scratch.Path() + "/user"; }
  std::string File(const char* name) const { return Folder() + "/" + name; }

  MemoryWorld world;
  std::shared_ptr<WatchedCalls> calls = std::make_shared<WatchedCalls>();
  PosixFiles files{calls};
  FileRegistry registry;
  LinuxClock clock;
  Platform platform;
  Dispatcher dispatcher;
  frmTray program{dispatcher, platform};

 private:
  int texts_ = 0;
};

// The same bytes written beside the file and renamed over it, without checks: what no writer can do without.
void BareWrite(const std::string& path, const std::string& content);
// Brings it to the disk, as the program does behind each write.
void BareSync(const std::string& path);
std::string BareRead(const std::string& path);

// Seconds that `work` takes.
template <class Work>
double Seconds(Work&& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

}  // namespace quillbox::bench
