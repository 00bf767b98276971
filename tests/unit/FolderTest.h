#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <thread>

#include "base/Utf8.h"
#include "memory/ScratchFolder.h"

namespace quillbox {

// The exit code of a child process that runs `body`: what it returns, -1 if it was killed or threw.
inline int InChild(const std::function<int()>& body) {
  // A thread that is just ending may hold a lock of the allocator, which nobody would open in the child.
  const auto threads = [] { return std::filesystem::directory_iterator("/proc/self/task"); };
  while (std::distance(threads(), {}) > 1) std::this_thread::yield();
  const pid_t child = ::fork();
  if (child == 0) [&body]() noexcept { ::_exit(body()); }();
  int status = 0;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// Runs `body`, which expects things of its own, in a child process.
inline void Apart(const std::function<void()>& body) {
  const auto fails = [&body] { return body(), testing::Test::HasFailure(); };
  EXPECT_EQ(InChild(fails), 0);
}

// A test with a folder of its own; names are paths in it.
class FolderTest : public testing::Test, protected ScratchFolder {
 protected:
  Text In(const std::string& name) const { return FromUtf8(Path(name)); }
  void Put(const std::string& name, const std::string& content) const {
    std::filesystem::create_directories(std::filesystem::path(Path(name)).parent_path());
    std::ofstream(Path(name), std::ios::binary | std::ios::trunc) << content;
  }
  std::string Content(const std::string& name) const {
    std::ifstream file(Path(name), std::ios::binary);
    return file ? std::string(std::istreambuf_iterator<char>(file), {}) : "(missing)";
  }
  bool Exists(const std::string& name) const { return std::filesystem::exists(Path(name)); }
  std::ptrdiff_t Entries(const std::string& name = "") const {
    const std::filesystem::directory_iterator entries(Path(name));
    return std::distance(begin(entries), end(entries));
  }
  // Of the file itself, not of what it links to; 0 if it is missing.
  unsigned Mode(const std::string& name) const {
    struct stat status {};
    return ::lstat(Path(name).c_str(), &status) == 0 ? status.st_mode & 07777U : 0U;
  }
  void ChangeMode(const std::string& name, mode_t mode) const {
    EXPECT_EQ(::chmod(Path(name).c_str(), mode), 0) << name;
  }
  // Apart, as somebody who may not do everything: root becomes "nobody".
  void AsOrdinaryUser(const std::function<void()>& body) const {
    ChangeMode("", 0777);
    Apart([&body] {
      constexpr uid_t kNobody = 65534;
      ASSERT_TRUE(::geteuid() != 0 || (::setgid(kNobody) == 0 && ::setuid(kNobody) == 0));
      body();
    });
  }
};

}  // namespace quillbox
