#pragma once

#include "platform/forms/ListBox.h"

namespace quillbox {

// Deselects each row, from the first to the last, and then makes none current. An empty list stays as it is.
inline void ClearSelection(ListBox& list) {
  if (list.GetListCount() == 0) return;
  for (int i = 0; i < list.GetListCount(); ++i) list.SetSelected(i, false);
  list.SetListIndex(-1);
}

}  // namespace quillbox
