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

// Nothing is selected that could be deleted, and deleting all isn't offered: not all of it is seen.
inline void SayNoneSelected(MainWindow& window) {
  window.MessageBox(u"You haven't selected any entries to delete.", BoxCode::Information,
                    u"No entries selected");
}

}  // namespace quillbox
