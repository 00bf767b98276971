#include "pad/PadRoom.h"

namespace quillbox {

bool HasRoomInPad(MainWindow& window, PadList& pad, Norvane& settings) {
  const int maximum = settings.Read(setting::kPermEntriesMax);
  if (maximum >= pad.List1.GetListCount()) return true;
  const bool confirmed = window.Confirm(
      u"Sorry, but you have reached the maximum number of Pad-List entries. You have to delete some entries "
      u"or increase the maximum number of entries in the \"Settings...\" menu before you proceed.\n\r"
      u"Would you like to delete the oldest entry now?",
      u"Too many Pad-List entries");
  if (!confirmed) return false;
  // The list may have become shorter while the question stood open.
  if (maximum < pad.List1.GetListCount()) pad.DeleteEntry1(maximum);
  return true;
}

bool AddToPad(MainWindow& window, PadList& pad, Norvane& settings, const SharedText& text) {
  if (const int known = pad.FindText(text.Get()); known >= 0) {
    pad.DeleteEntry1(known);
  } else if (!HasRoomInPad(window, pad, settings)) {
    return false;
  }
  Text name = PadList::kNoName;
  pad.AddEntry1(name, text, 0);
  return true;
}

}  // namespace quillbox
