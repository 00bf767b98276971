#pragma once

#include "core/window/MainWindow.h"

namespace quillbox {

// Whether the DEL key may delete the selected entries of a list: asks the person, unless the settings say not
// to.
inline bool MayDeleteByKey(MainWindow& window, Norvane& settings) {
  constexpr int kYes = 6;
  return !settings.IsOn(setting::kAskDelKey) ||
         window.MessageBox(u"Do you really want to delete the selected entries?", 36,
                           u"Delete selected entries?") == kYes;
}

}  // namespace quillbox
