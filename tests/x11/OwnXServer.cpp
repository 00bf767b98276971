#include "x11/OwnXServer.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

namespace quillbox::test {

OwnXServer::OwnXServer() {
  int ready[2];
  if (pipe(ready) != 0) throw std::runtime_error("no pipe");
  process_ = fork();
  if (process_ == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);  // a test that is killed leaves no server behind
    const int nowhere = open("/dev/null", O_WRONLY);
    dup2(nowhere, 2);
    close(ready[0]);
    const std::string descriptor = std::to_string(ready[1]);
    execlp("Xvfb", "Xvfb", "-displayfd", descriptor.c_str(), "-screen", "0", "320x200x24", "-nolisten", "tcp",
           "-noreset", static_cast<char*>(nullptr));
    _exit(127);
  }
  close(ready[1]);
  char digit = 0;
  while (read(ready[0], &digit, 1) == 1 && digit != '\n') display_ += digit;
  close(ready[0]);
  if (process_ < 0 || display_.size() < 2) throw std::runtime_error("the X server did not start");
}

void OwnXServer::Stop() { kill(process_, SIGSTOP); }

void OwnXServer::Continue() { kill(process_, SIGCONT); }

void OwnXServer::End() {
  if (process_ <= 0) return;
  Continue();
  kill(process_, SIGTERM);
  waitpid(process_, nullptr, 0);
  process_ = 0;
}

}  // namespace quillbox::test
