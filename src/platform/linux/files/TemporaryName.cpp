#include "platform/linux/files/TemporaryName.h"

#include <dirent.h>
#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <ctime>
#include <memory>
#include <optional>
#include <string_view>

namespace quillbox {
namespace {

constexpr std::string_view kPrefix = ".quillbox-";
constexpr std::string_view kSuffix = ".tmp";
constexpr time_t kStaleSeconds = 60;

// The process of a name ".quillbox-PID-NUMBER.tmp"; nothing for any other name.
std::optional<pid_t> ProcessOf(std::string_view name) {
  if (!name.starts_with(kPrefix) || !name.ends_with(kSuffix)) return std::nullopt;
  name.remove_prefix(kPrefix.size());
  if (name.size() <= kSuffix.size()) return std::nullopt;
  name.remove_suffix(kSuffix.size());
  pid_t process = 0;
  const auto [dash, failure] = std::from_chars(name.data(), name.data() + name.size(), process);
  if (failure != std::errc() || process <= 0) return std::nullopt;
  const std::string_view number(dash, static_cast<std::size_t>(name.data() + name.size() - dash));
  if (number.size() < 2 || number[0] != '-') return std::nullopt;
  if (number.find_first_not_of("0123456789abcdef", 1) != std::string_view::npos) return std::nullopt;
  return process;
}

bool IsStale(const std::string& path, pid_t process) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
  // A file dated in the future is as old as it says nothing.
  const time_t age = std::time(nullptr) - status.st_mtime;
  if (age > kStaleSeconds) return true;
  return ::kill(process, 0) != 0 && errno == ESRCH;
}

}  // namespace

std::string NewTemporaryName() {
  static std::atomic<unsigned> counter{0};
  timespec now{};
  ::clock_gettime(CLOCK_MONOTONIC, &now);
  char number[32];
  const auto end =
      std::to_chars(number, number + sizeof number,
                    static_cast<unsigned long long>(now.tv_nsec) << 16 | (counter++ & 0xFFFF), 16);
  return std::string(kPrefix) + std::to_string(::getpid()) + "-" + std::string(number, end.ptr) +
         std::string(kSuffix);
}

void RemoveStaleTemporaries(SystemCalls& calls, const std::string& folder) {
  struct CloseFolder {
    void operator()(DIR* open) const { ::closedir(open); }
  };
  const std::unique_ptr<DIR, CloseFolder> open(::opendir(folder.c_str()));
  if (!open) return;
  while (const dirent* entry = ::readdir(open.get())) {
    const std::optional<pid_t> process = ProcessOf(entry->d_name);
    if (!process) continue;
    const std::string path = folder + "/" + entry->d_name;
    if (IsStale(path, *process)) calls.Remove(path.c_str());
  }
}

}  // namespace quillbox
