#pragma once

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <stdexcept>
#include <string>

namespace quillbox::test {

struct Pipe {
  Pipe() {
    if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  }
  int ends[2] = {};
};

// A process of the test's own, which ends with the object and never outlives the test.
class OwnProcess {
 public:
  explicit OwnProcess(const std::function<void()>& work) : process_(fork()) {
    if (process_ != 0) return;
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    try {
      work();
    } catch (...) {  // or it would go on as a second test
    }
    _exit(127);
  }
  ~OwnProcess() { End(SIGKILL); }
  OwnProcess(const OwnProcess&) = delete;
  OwnProcess& operator=(const OwnProcess&) = delete;

  // The state that it ended with; 0 if it has ended before.
  int End(int signal) {
    int status = 0;
    if (process_ <= 0) return status;
    kill(process_, signal);
    waitpid(process_, &status, 0);
    process_ = 0;
    return status;
  }

 private:
  pid_t process_;
};

// Replaces the process by a program that says nothing.
template <class... Words>
void Become(const char* program, Words... words) {
  const int nowhere = open("/dev/null", O_WRONLY);
  dup2(nowhere, STDOUT_FILENO);
  dup2(nowhere, STDERR_FILENO);
  execlp(program, program, words..., static_cast<char*>(nullptr));
}

// An X server of the test's own.
class OwnXServer {
 public:
  OwnXServer() {
    char digit = 0;
    close(ready_.ends[1]);
    while (read(ready_.ends[0], &digit, 1) == 1 && digit != '\n') display_ += digit;
    close(ready_.ends[0]);
    if (display_.size() < 2) throw std::runtime_error("the X server did not start");
  }
  const std::string& Display() const { return display_; }
  ~OwnXServer() { process_.End(SIGTERM); }

 private:
  Pipe ready_;
  std::string display_ = ":";
  OwnProcess process_{[this] {
    close(ready_.ends[0]);
    Become("Xvfb", "-displayfd", std::to_string(ready_.ends[1]).c_str(), "-screen", "0", "320x200x24",
           "-nolisten", "tcp", "-noreset");
  }};
};

}  // namespace quillbox::test
