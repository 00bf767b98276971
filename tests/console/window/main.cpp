#include <QApplication>
#include <QMenu>

#include "console/Console.h"
#include "console/window/Hand.h"
#include "console/window/WindowPerson.h"
#include "platform/qt/ports/QtTips.h"
#include "platform/qt/ports/TrayMenuView.h"
#include "platform/qt/views/ProgramViews.h"
#include "platform/qt/widgets/ReadableStyle.h"

namespace quillbox {
namespace {

// The program on the ports of a world, with its real windows on a screen that nobody sees.
class WindowProgram : public QuillboxProgram {
 public:
  explicit WindowProgram(MemoryWorld& world)
      : QuillboxProgram(world),
        views_(dispatcher_, tips_, world.clipboard, [] { return true; }),
        menu_(dispatcher_, tray->menu.mnuBase),
        person_(MakeWindowPerson(dispatcher_, views_, menu_)) {
    tips_.Use(tray->toolTips);
    views_.Use(*tray);
    // Places that are reckoned with sizes are the same with and without a window.
    views_.KeepSizes();
    dispatcher_.OnRefresh = [this] { views_.Refresh(); };
    world.windows.MenuChanged = [this] {
      if (world_.windows.OpenMenu()) {
        menu_.OpenAt({});
      } else {
        menu_.Menu()->close();
      }
    };
  }
  ~WindowProgram() override {
    dispatcher_.OnRefresh = nullptr;
    world_.windows.MenuChanged = nullptr;
    // What is to be deleted later shows controls that are gone soon.
    hand::Rest();
  }

  Person& GetPerson() override { return *person_; }

 private:
  QtTips tips_;
  ProgramViews views_;
  TrayMenuView menu_;
  std::unique_ptr<Person> person_;
};

}  // namespace
}  // namespace quillbox

int main(int, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  int one = 1;
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication application(one, argv);
  quillbox::UseReadableStyle();
  quillbox::ServeConsole([](auto& world) { return std::make_unique<quillbox::WindowProgram>(world); });
  return 0;
}
