#include "console/window/WindowProgram.h"

#include <QMenu>

#include "console/window/Hand.h"

namespace quillbox {

WindowProgram::WindowProgram(MemoryWorld& world)
    : QuillboxProgram(world),
      views_(dispatcher_, tips_, world.clipboard, [] { return true; }),
      menu_(dispatcher_, tray->menu.mnuBase),
      person_(dispatcher_, views_, menu_) {
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

WindowProgram::~WindowProgram() {
  dispatcher_.OnRefresh = nullptr;
  world_.windows.MenuChanged = nullptr;
  // What is to be deleted later shows controls that are gone soon.
  hand::Rest();
}

}  // namespace quillbox
