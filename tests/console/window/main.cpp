#include <QApplication>

#include "console/Console.h"
#include "console/window/WindowPerson.h"
#include "platform/qt/widgets/ReadableStyle.h"

// As the console without a screen, with the program's windows on a screen that nobody sees.
int main(int, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  int one = 1;
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication application(one, argv);
  quillbox::UseReadableStyle();
  quillbox::ServeConsole(
      [](auto&... program) { return std::make_unique<quillbox::WindowPerson>(program...); });
  return 0;
}
