#include "platform/linux/files/DiskSync.h"

#include <fcntl.h>
#include <pthread.h>
#include <signal.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/linux/files/AtomicFile.h"

namespace quillbox {
namespace {

constexpr std::chrono::seconds kLongestEnd{1};
constexpr std::chrono::seconds kPause{1};

void SyncPath(SystemCalls& calls, const std::string& path, int flags) {
  const int fd = calls.Open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | flags, 0);
  if (fd < 0) return;
  calls.Sync(fd);
  calls.Close(fd);
}

// The program's signals are for its own thread.
class BlockSignals {
 public:
  BlockSignals() {
    sigset_t all;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before_);
  }
  ~BlockSignals() { ::pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  BlockSignals(const BlockSignals&) = delete;
  BlockSignals& operator=(const BlockSignals&) = delete;

 private:
  sigset_t before_{};
};

}  // namespace

struct DiskSync::State {
  std::shared_ptr<SystemCalls> calls;
  std::mutex mutex;
  std::condition_variable changed;
  std::deque<std::string> waiting;
  bool running = false;    // there is a thread
  bool ending = false;     // it ends when nothing is waiting
  bool abandoned = false;  // it ends as soon as it can
};

DiskSync::DiskSync(std::shared_ptr<SystemCalls> calls) : state_(std::make_shared<State>()) {
  state_->calls = std::move(calls);
}

DiskSync::~DiskSync() {
  std::unique_lock lock(state_->mutex);
  state_->ending = true;
  state_->changed.notify_all();
  const bool ended = state_->changed.wait_for(lock, kLongestEnd, [&] { return !state_->running; });
  if (!ended) state_->abandoned = true;
}

void DiskSync::Request(const std::string& path) {
  const std::lock_guard lock(state_->mutex);
  auto& waiting = state_->waiting;
  if (std::find(waiting.begin(), waiting.end(), path) != waiting.end()) return;
  waiting.push_back(path);
  if (!state_->running) {
    try {
      const BlockSignals blocked;
      std::thread(Run, state_).detach();
      state_->running = true;
    } catch (const std::system_error&) {
      waiting.clear();  // no thread to be had: the system brings the file to the disk in its own time
    }
  }
  state_->changed.notify_all();
}

void DiskSync::Run(const std::shared_ptr<State>& state) {
  std::unique_lock lock(state->mutex);
  for (;;) {
    state->changed.wait(lock, [&] { return state->ending || !state->waiting.empty(); });
    if (state->abandoned || state->waiting.empty()) break;
    for (std::deque<std::string> paths = std::exchange(state->waiting, {}); !paths.empty();
         paths.pop_front()) {
      if (state->abandoned) break;
      lock.unlock();
      SyncPath(*state->calls, paths.front(), 0);
      SyncPath(*state->calls, FolderOf(paths.front()), O_DIRECTORY);
      lock.lock();
    }
    state->changed.wait_for(lock, kPause, [&] { return state->ending; });
  }
  state->running = false;
  state->changed.notify_all();
}

}  // namespace quillbox
