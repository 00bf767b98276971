#pragma once

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>
#include <string>

namespace quillbox::test {

// An X server of the tests' own, on which they run while it is there. It never outlives them.
class OwnXServer {
 public:
  OwnXServer() {
    int ready[2] = {};
    if (pipe(ready) != 0) throw std::runtime_error("no pipe");
    process_ = fork();
    if (process_ == 0) {
      prctl(PR_SET_PDEATHSIG, SIGKILL);
      const int nowhere = open("/dev/null", O_WRONLY);
      dup2(nowhere, STDERR_FILENO);
      close(ready[0]);
      // It picks a free number and writes it when it is ready.
      execlp("Xvfb", "Xvfb", "-displayfd", std::to_string(ready[1]).c_str(), "-screen", "0", "320x200x24",
             "-nolisten", "tcp", "-noreset", static_cast<char*>(nullptr));
      _exit(127);
    }
    close(ready[1]);
    std::string display = ":";
    for (char digit = 0; read(ready[0], &digit, 1) == 1 && digit != '\n';) display += digit;
    close(ready[0]);
    if (display.size() < 2) throw std::runtime_error("the X server did not start");
    setenv("DISPLAY", display.c_str(), 1);
  }
  ~OwnXServer() {
    setenv("DISPLAY", before_.c_str(), 1);
    kill(process_, SIGTERM);
    waitpid(process_, nullptr, 0);
  }
  OwnXServer(const OwnXServer&) = delete;
  OwnXServer& operator=(const OwnXServer&) = delete;

 private:
  std::string before_ = std::getenv("DISPLAY") != nullptr ? std::getenv("DISPLAY") : "";
  pid_t process_ = 0;
};

}  // namespace quillbox::test
