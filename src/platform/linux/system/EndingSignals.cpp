#include "platform/linux/system/EndingSignals.h"

#include <signal.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <initializer_list>

namespace quillbox {

EndingSignals::EndingSignals() {
  sigset_t ending;
  sigemptyset(&ending);
  for (const int each : {SIGTERM, SIGINT, SIGHUP}) sigaddset(&ending, each);
  pthread_sigmask(SIG_BLOCK, &ending, nullptr);
  signal(SIGPIPE, [](int) {});  // other than an ignored signal, one with a handler is not handed on
  descriptor_ = signalfd(-1, &ending, SFD_CLOEXEC | SFD_NONBLOCK);
}

EndingSignals::~EndingSignals() {
  if (descriptor_ >= 0) close(descriptor_);
}

bool EndingSignals::Take() {
  signalfd_siginfo information;
  return read(descriptor_, &information, sizeof information) == static_cast<ssize_t>(sizeof information);
}

}  // namespace quillbox
