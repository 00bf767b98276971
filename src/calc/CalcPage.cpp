#include "calc/CalcPage.h"

namespace quillbox {

CalcPage::CalcPage(MainWindow& window, Norvane& settings, Clipboard& clipboard, SystemInfo& system)
    : CalcPage(window.On(Page::Calc), settings, clipboard, system) {}

CalcPage::CalcPage(const Place& place, Norvane& settings, Clipboard& clipboard, SystemInfo& system)
    : display(place, system),
      bases(place, display),
      keypad(place, display),
      functions(place, display),
      units(place, display),
      memory(place, display, settings),
      clipboardButtons(place, display, clipboard, system),
      keyboard_(display, bases) {}

}  // namespace quillbox
