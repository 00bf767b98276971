// quillbox-bench-keys TEXT: types the text into the window that has the focus, as a script would.
#include <cstdio>

#include "base/RuntimeError.h"
#include "base/Utf8.h"
#include "x11/TestKeyboard.h"

int main(int count, char** arguments) {
  if (count != 2) return 2;
  try {
    quillbox::XKeySender(quillbox::test::Plain()).Send(quillbox::FromUtf8(arguments[1]));
    return 0;
  } catch (const quillbox::RuntimeError& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
