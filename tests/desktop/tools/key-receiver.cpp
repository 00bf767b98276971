#include <fstream>
#include <string>

#include "x11/KeyReceiver.h"

// key-receiver FILE: a window that takes the focus, keeps in FILE what was typed into it, and answers the
// question whether it has caught up.
int main(int, char** arguments) {
  quillbox::test::KeyReceiver receiver({.answersPings = true});
  quillbox::test::Sleep(200);  // a window manager takes its time
  receiver.TakeFocus();
  std::string written = "-";
  while (true) {
    std::string text = receiver.Text();
    if (text != written) std::ofstream(arguments[1], std::ios::binary) << text;
    written = std::move(text);
    quillbox::test::Sleep(20);
  }
}
