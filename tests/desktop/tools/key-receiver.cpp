#include <csignal>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>

#include "x11/KeyReceiver.h"

// key-receiver [--pings] FILE: a window that takes the focus and keeps in FILE what was typed into it, until
// it is ended by a signal. With --pings it answers the question whether it has caught up.
namespace {

volatile std::sig_atomic_t ended = 0;

void End(int) { ended = 1; }

}  // namespace

int main(int count, char** arguments) {
  const bool pings = count == 3 && std::strcmp(arguments[1], "--pings") == 0;
  if (count != 2 && !pings) {
    std::fputs("usage: key-receiver [--pings] FILE\n", stderr);
    return 2;
  }
  std::signal(SIGTERM, End);
  std::signal(SIGINT, End);
  quillbox::test::KeyReceiver receiver({.answersPings = pings});
  quillbox::test::Sleep(200);  // a window manager takes its time
  receiver.TakeFocus();
  std::string written = "-";
  while (ended == 0) {
    std::string text = receiver.Text();
    if (text != written) std::ofstream(arguments[count - 1], std::ios::binary) << text;
    written = std::move(text);
    quillbox::test::Sleep(20);
  }
  return 0;
}
