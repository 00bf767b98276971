#pragma once

#include "core/window/MainWindow.h"

namespace quillbox {

// Whether the DEL key may delete the selected entries of a list: asks the person, unless the settings say not
// to.
inline bool MayDeleteByKey(MainWindow& window, Norvane& settings) {
  return !settings.IsOn(setting::kAskDelKey) ||
         window.Confirm(u"Do you really want to delete the selected entries?", u"Delete selected entries?",
                        BoxCode::Question);
}

}  // namespace quillbox
