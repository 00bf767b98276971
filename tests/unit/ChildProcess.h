#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <functional>

namespace quillbox {

// Runs `body` in a child process and gives its exit code: what `body` returns, or what it exits with. -1 if
// it was killed, 99 if it threw.
inline int RunInChild(const std::function<int()>& body) {
  const pid_t child = ::fork();
  if (child == 0) {
    int code = 99;
    try {
      code = body();
    } catch (...) {
    }
    ::_exit(code);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// The same as somebody who may not do everything: as root, in the child, the user changes to "nobody".
inline int RunAsOrdinaryUser(const std::function<int()>& body) {
  return RunInChild([&] {
    constexpr uid_t kNobody = 65534;
    if (::geteuid() == 0 && (::setgid(kNobody) != 0 || ::setuid(kNobody) != 0)) return 98;
    return body();
  });
}

}  // namespace quillbox
