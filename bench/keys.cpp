// quillbox-bench-keys TEXT: types the text into the window that has the focus, as a script would.
#include <chrono>
#include <cstdio>
#include <thread>

#include "base/RuntimeError.h"
#include "base/Utf8.h"
#include "platform/x11/keys/XKeySender.h"

int main(int count, char** arguments) {
  if (count != 2) return 2;
  try {
    const auto sleep = [](int wait) { std::this_thread::sleep_for(std::chrono::milliseconds(wait)); };
    quillbox::XKeySender({.display = {}, .pause = sleep, .isOurs = {}})
        .Send(quillbox::FromUtf8(arguments[1]));
    return 0;
  } catch (const quillbox::RuntimeError& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
