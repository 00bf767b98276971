#include <QApplication>
#include <iostream>
#include <string>

#include "console/Console.h"
#include "console/window/WindowProgram.h"
#include "platform/qt/widgets/ReadableStyle.h"

// As the console without a screen, with the program's windows on a screen that nobody sees.
int main(int, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  int one = 1;
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication application(one, argv);
  quillbox::UseReadableStyle();
  std::ios::sync_with_stdio(false);
  quillbox::Console console(quillbox::MakeWindow);
  std::string line;
  while (std::cout && std::getline(std::cin, line)) std::cout << console.Answer(line) << '\n' << std::flush;
  return 0;
}
