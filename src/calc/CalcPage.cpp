#include "calc/CalcPage.h"

namespace quillbox {

CalcPage::CalcPage(MainWindow& window, Norvane& settings, Clipboard& clipboard, SystemInfo& system)
    : CalcPage(window.On(Page::Calc), settings, clipboard, system) {}

CalcPage::CalcPage(const Place& place, Norvane& settings, Clipboard& clipboard, SystemInfo& system)
    : display_(place, system),
      bases_(place, display_),
      keyboard_(display_, bases_),
      keypad_(place, display_),
      units_(place, display_),
      memory_(place, display_, settings),
      clipboard_(place, display_, clipboard, system) {}

}  // namespace quillbox
