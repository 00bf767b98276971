// What the buttons and the double click of the Pad page do.
#include <algorithm>

#include "pad/PadPage.h"
#include "pad/PadRoom.h"

namespace quillbox {

bool PadPage::Updates(int row) const {
  if (Command101.GetCaption() != u"Update" || pad_.List1.GetListCount() == 0) return false;
  // Without a current row the fields can only stand for an entry whose use has moved it to the top.
  return HasCurrentRow() || pad_.PadEntries(row).Get() == Text101.GetText();
}

void PadPage::Command101_Click() {
  const int row = std::max(pad_.List1.GetListIndex(), 0);
  const SharedText text(Text101.GetText());
  Text name = Text3.GetText();
  const bool update = Updates(row);
  if (update) pad_.DeleteEntry1(row);
  if (const int known = pad_.FindText(text.Get()); known >= 0) {
    // A nameless repeat keeps the known name.
    if (name.empty() || name == PadList::kNoName) name = pad_.List1.GetList(known);
    pad_.DeleteEntry1(known);
  } else if (!update && !HasRoomInPad(window_, pad_, settings_)) {
    files_.AktualisiereCle1();
    return;
  }
  pad_.AddEntry1(name, text, std::min(row, pad_.List1.GetListCount()));
  // Deselected rows load the fields: they are emptied behind that.
  pad_.ClearList1();
  EmptyFields();
  ShowStatus(update ? u"Updated" : u"Added");
  window_.FocusKeepingStatus(Text3);
  files_.AktualisiereCle1();
}

void PadPage::Command102_Click() {
  if (Text101.GetText().empty()) return;
  if (Command102.GetCaption() == u"Script") return ExecuteShown();
  {
    const PollPause pause(window_.poll);
    CopyText(SharedText(Text101.GetText()));
  }
  if (MovesUsedEntries()) MoveShownToTop();
  ShowStatus(u"Inserted");
}

void PadPage::ExecuteShown() {
  if (scripts_.Running()) return;
  const Text script = Text101.GetText();
  window_.Minimize();
  if (MovesUsedEntries()) MoveShownToTop();
  ShowStatus(u"Executed");
  scripts_.Run(script);
}

void PadPage::CopyText(const SharedText& text) {
  clipboard_.Clear();
  clipboard_.Put(text.Get());
  window_.MinimizeIfSet();
}

void PadPage::List1_DblClick() {
  if (!HasCurrentRow()) return;
  const int row = pad_.List1.GetListIndex();
  SelectOnly(row);
  const SharedText text = pad_.PadEntries(row);
  if (IsScript(text.Get())) return ExecuteCurrent();
  const PollPause pause(window_.poll);
  CopyText(text);
  if (MovesUsedEntries()) MoveCurrentToTop(u"Inserted");
}

void PadPage::ExecuteCurrent() {
  if (scripts_.Running()) return;
  const Text script = Text101.GetText();
  // Shown and hidden again: the focus goes back to the window that had it before the menu opened.
  IgnoreFailure([this] { window_.form.Show(); });
  IgnoreFailure([this] { window_.Minimize(); });
  if (MovesUsedEntries()) MoveCurrentToTop(u"Executed");
  scripts_.Run(script);
}

void PadPage::MoveToTop(int row) {
  pad_.DeleteEntry1(row);
  Text name = Text3.GetText();
  pad_.AddEntry1(name, SharedText(Text101.GetText()), 0);
  files_.AktualisiereCle1();
}

void PadPage::MoveShownToTop() {
  if (const int row = pad_.FindText(Text101.GetText()); row >= 0) MoveToTop(row);
}

void PadPage::MoveCurrentToTop(const Text& word) {
  MoveToTop(pad_.List1.GetListIndex());
  pad_.List1.SetListIndex(0);
  pad_.List1.SetSelected(0, true);
  status.Write(word);
}

void PadPage::Command103_Click() {
  pad_.ClearList1();
  Command101.SetCaption(u"Add");
  IgnoreFailure([this] { Text101.SetText(Text(clipboard_.Read())); });
  Text3.SetText(u"");
  ShowStatus(u"Got Entry");
  window_.FocusKeepingStatus(Text3);
}

void PadPage::Command104_Click() {
  pad_.ClearList1();
  Command101.SetCaption(u"Add");
  Command101.SetEnabled(false);
  Command102.SetEnabled(false);
  Text101.SetText(u"");
  Text3.SetText(u"");
  ShowStatus(u"Cleared");
  window_.FocusKeepingStatus(Text3);
}

void PadPage::Command105_Click() {
  int deleted = 0;
  const int count = pad_.List1.GetListCount();
  for (int i = 0; i < count; ++i) {
    if (!pad_.List1.GetSelected(i - deleted)) continue;
    pad_.DeleteEntry1(i - deleted);
    ++deleted;
  }
  pad_.ClearList1();
  Command101.SetCaption(u"Add");
  files_.AktualisiereCle1();
  if (deleted == 0) {
    if (window_.MessageBox(u"You haven't selected any entries to delete. Do you want to delete ALL entries?",
                           68, u"No entries selected") != 6) {
      return;
    }
    pad_.RemoveAll();
    Command101.SetCaption(u"Add");
  }
  EmptyFields();
  ShowStatus(u"Deleted");
  if (deleted == 0) files_.AktualisiereCle1();
}

}  // namespace quillbox
