#include "pad/PadPage.h"

#include <algorithm>

#include "core/window/DeleteKey.h"
#include "pad/PadRoom.h"
#include "pad/Rot47.h"
#include "storage/ListRows.h"

namespace quillbox {

PadPage::PadPage(MainWindow& window, PadList& pad, DataFiles& files, Norvane& settings, Clipboard& clipboard,
                 KeySender& keySender, FoldTable& folds)
    : Text3(window.On(Page::Pad), "Text3", TextBox::Lines::One),
      Text101(window.On(Page::Pad), "Text101", TextBox::Lines::Many),
      Command101(window.On(Page::Pad), "Command101", u"Add", u"Add the current text to the Pad-List", false),
      Command102(window.On(Page::Pad), "Command102", u"Insert", u"Copy the current text to the clipboard",
                 false),
      Command103(window.On(Page::Pad), "Command103", u"Get", u"Get text from the clipboard (New entry)"),
      Command104(window.On(Page::Pad), "Command104", u"Clear", u"Clear the Pad text field (New entry)"),
      Command105(window.On(Page::Pad), "Command105", u"Delete", u"Delete the selected Pad-List entry"),
      UpDown2(window.On(Page::Pad), "UpDown2", u"", false),
      Image3(window.On(Page::Pad), "Image3", false),
      Image4(window.On(Page::Pad), "Image4", false),
      status(window.On(Page::Pad), "Label13", "Line6", "Line7", u"Length of Pad-List entry"),
      Label13(status.GetLabel()),
      find(window.On(Page::Pad), "FindPad", "FoundPad", pad.List1, folds,
           [this](WordSearch& words, int row) {
             return words.IsIn({pad_.List1.GetList(row).Get(), pad_.PadEntries(row).Get()});
           }),
      window_(window),
      pad_(pad),
      files_(files),
      settings_(settings),
      clipboard_(clipboard),
      moves_(pad, files),
      use_(window, pad, files, settings, clipboard, keySender, {Text3, Text101, status}) {
  Command102.SetPicture(Image3.Name());
  WireList();
  WireFieldsAndButtons();
}

void PadPage::WireList() {
  ListBox& List1 = pad_.List1;
  List1.Click = [this] { List1_Click(); };
  List1.DblClick = [this] { List1_DblClick(); };
  List1.GotFocus = [this] { List1_GotFocus(); };
  List1.LostFocus = [this] { List1_LostFocus(); };
  List1.KeyDown = [this](KeyEvent& key) { List1_KeyDown(key); };
  List1.OLEDragDrop = [this](const DragData& data) { List1_OLEDragDrop(data); };
  List1.OLEStartDrag = [this](Text& data) { List1_OLEStartDrag(data); };
  find.field.GotFocus = [this] { ShowCurrentLength(); };
  find.field.LostFocus = [this] { status.Hide(); };
  find.MayTake = [this](bool& may) { may = FieldsAreKept(); };
  find.FilteredChanged = [this] { UpDown2.SetEnabled(pad_.List1.HasFocus() && MayMove()); };
  UpDown2.UpClick = [this] { moves_.OneUp(); };
  UpDown2.DownClick = [this] { moves_.OneDown(); };
}

void PadPage::WireFieldsAndButtons() {
  Text101.Change = [this] { Text101_Change(); };
  Text101.GotFocus = [this] { Text101_GotFocus(); };
  Text3.Change = [this] { Text3_Change(); };
  Text3.GotFocus = [this] { Text3_GotFocus(); };
  Text3.KeyPress = [this](char16_t& character) { Text3_KeyPress(character); };
  Label13.Change = [this] { Label13_Change(); };
  Label13.DblClick = [this] { Label13_DblClick(); };
  Command101.Click = [this] { Command101_Click(); };
  Command102.Click = [this] { Command102_Click(); };
  Command103.Click = [this] { Command103_Click(); };
  Command104.Click = [this] { Command104_Click(); };
  Command105.Click = [this] { Command105_Click(); };
  const auto hideStatus = [this] { status.Hide(); };
  for (CommandButton* button : {&Command101, &Command102, &Command103, &Command104, &Command105}) {
    button->LostFocus = hideStatus;
  }
  Text101.LostFocus = hideStatus;
  Text3.LostFocus = hideStatus;
}

void PadPage::ShowMode() { Command101.SetCaption(HasCurrentRow(pad_.List1) ? u"Update" : u"Add"); }

void PadPage::LoadFields(int row) {
  const SharedText text = pad_.PadEntries(row);
  Text3.SetText(pad_.List1.GetList(row));
  Text101.SetText(text);
}

void PadPage::EmptyFields() {
  Text3.SetText(u"");
  Text101.SetText(u"");
}

bool PadPage::FieldsAreKept() const {
  if (Text101.GetText().empty()) return Text3.GetText().empty() || Text3.GetText() == PadList::kNoName;
  return LastRow(pad_.List1, 0, [this](int row) {
           return pad_.PadEntries(row).Is(Text101.GetText()) && pad_.List1.GetList(row).Is(Text3.GetText());
         }) >= 0;
}

void PadPage::SelectOnly(int row) {
  pad_.ClearList1();
  pad_.List1.SetListIndex(row);
  pad_.List1.SetSelected(row, true);
}

void PadPage::List1_Click() {
  const int current = pad_.List1.GetListIndex();
  const std::vector<int> selected = SelectedRows(pad_.List1);
  // Several rows cannot be moved.
  const auto isCurrent = [current](int row) { return row == current; };
  UpDown2.SetEnabled(MayMove() && std::all_of(selected.begin(), selected.end(), isCurrent));
  std::size_t length = 0;
  for (const int row : selected) length += pad_.PadEntries(row).Length();
  if (selected.size() == 1) {
    LoadFields(selected.front());
    Command101.SetCaption(u"Update");
    status.ShowLength(length);
  } else if (selected.size() > 1) {
    EmptyFields();
    Command101.SetCaption(u"Add");
    status.ShowLength(length);
  } else if (HasCurrentRow(pad_.List1)) {
    LoadFields(current);
    Command101.SetCaption(u"Update");
    status.ShowLength(pad_.PadEntries(current).Length());
  } else {
    status.Hide();
    Command101.SetCaption(u"Add");
  }
}

void PadPage::List1_DblClick() {
  if (!HasCurrentRow(pad_.List1)) return;
  SelectOnly(pad_.List1.GetListIndex());
  use_.UseCurrent();
}

void PadPage::ShowCurrentLength() {
  if (HasCurrentRow(pad_.List1)) {
    status.ShowLength(pad_.PadEntries(pad_.List1.GetListIndex()).Length());
  } else {
    status.Hide();
  }
}

void PadPage::List1_GotFocus() {
  ShowCurrentLength();
  if (MayMove()) UpDown2.SetEnabled(true);
  ShowMode();
}

void PadPage::List1_LostFocus() {
  status.Hide();
  UpDown2.SetEnabled(false);
}

void PadPage::List1_KeyDown(KeyEvent& key) {
  switch (key.code) {
    case keys::kDelete:
      if (MayDeleteByKey(window_, settings_)) Command105_Click();
      return;
    case keys::kEnter:
      return Command102_Click();
    default:
      if (UpDown2.GetEnabled() && key.CtrlAlone()) moves_.Key(key);
  }
}

void PadPage::List1_OLEDragDrop(const DragData& data) {
  if (!data) return;
  Command104_Click();
  Text3.SetText(PadList::kNoName);
  Text101.SetText(*data);
  Command101_Click();
}

void PadPage::List1_OLEStartDrag(Text& data) {
  data = pad_.List1.Joined(SelectedRows(pad_.List1), [this](int row) { return pad_.PadEntries(row); });
}

void PadPage::Text101_Change() {
  if (Text101.GetText().size() > limits::kEntryLength) {
    // The cut runs this handler again, on the text that fits.
    Text101.SetText(Text(CutTo(Text101.GetText(), limits::kEntryLength)));
    return;
  }
  const bool any = !Text101.GetText().empty();
  Command101.SetEnabled(any);
  Command102.SetEnabled(any);
  ShowMode();
  const bool script = PadList::IsScript(Text101.GetText());
  Command102.SetCaption(script ? u"Script" : u"Insert");
  Command102.SetPicture(script ? Image4.Name() : Image3.Name());
  Command102.SetToolTipText(script ? u"Execute the current Script entry"
                                   : u"Use the current text as clipboard entry");
  status.WriteLength(Text101.GetText().size());
}

void PadPage::Text101_GotFocus() {
  // Editing always applies to one row.
  if (HasCurrentRow(pad_.List1) && SelectedRows(pad_.List1).size() > 1) SelectOnly(pad_.List1.GetListIndex());
  if (!window_.TakeKeptStatus()) status.WriteLength(Text101.GetText().size());
  status.Show();
  ShowMode();
}

void PadPage::Text3_Change() { status.WriteLength(Text3.GetText().size()); }

void PadPage::Text3_GotFocus() {
  // A name that stands for none is typed over.
  if (Text3.GetText() == PadList::kNoName) Text3.Select(0, Text3.GetText().size());
  if (!window_.TakeKeptStatus()) status.WriteLength(Text3.GetText().size());
  status.Show();
}

void PadPage::Text3_KeyPress(char16_t& character) {
  if (character != keys::kEnter) return;
  character = 0;
  Text101.SetFocus();
}

void PadPage::Label13_Change() { Label13.SetToolTipText(u""); }

void PadPage::Label13_DblClick() {
  if (settings_.Read(setting::kROT47) > 0) Text101.SetText(Rot47(Text101.GetText()));
}

bool PadPage::Updates(int row) const {
  if (Command101.GetCaption() != u"Update" || pad_.List1.GetListCount() == 0) return false;
  // Without a current row the fields can only stand for an entry whose use has moved it to the top.
  return HasCurrentRow(pad_.List1) || pad_.PadEntries(row).Is(Text101.GetText());
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
  status.Show(update ? u"Updated" : u"Added");
  window_.FocusKeepingStatus(Text3);
  files_.AktualisiereCle1();
}

void PadPage::Command102_Click() {
  use_.UseShown();
  // The entry may have moved to the top, where it is not the current row any more: there is none to be moved.
  if (!HasCurrentRow(pad_.List1)) UpDown2.SetEnabled(false);
}

void PadPage::Command103_Click() {
  pad_.ClearList1();
  Command101.SetCaption(u"Add");
  IgnoreFailure([this] { Text101.SetText(Text(clipboard_.Read())); });
  Text3.SetText(u"");
  status.Show(u"Got Entry");
  window_.FocusKeepingStatus(Text3);
}

void PadPage::Command104_Click() {
  pad_.ClearList1();
  Command101.SetCaption(u"Add");
  Command101.SetEnabled(false);
  Command102.SetEnabled(false);
  Text101.SetText(u"");
  Text3.SetText(u"");
  status.Show(u"Cleared");
  window_.FocusKeepingStatus(Text3);
}

void PadPage::Command105_Click() {
  const int deleted = DeleteSelected(pad_.List1, [this](int row) { pad_.DeleteEntry1(row); });
  pad_.ClearList1();
  Command101.SetCaption(u"Add");
  files_.AktualisiereCle1();
  if (deleted == 0) {
    if (pad_.List1.IsFiltered()) return SayNoneSelected(window_);
    if (!window_.Confirm(u"You haven't selected any entries to delete. Do you want to delete ALL entries?",
                         u"No entries selected")) {
      return;
    }
    pad_.RemoveAll();
    Command101.SetCaption(u"Add");
  }
  EmptyFields();
  status.Show(u"Deleted");
  if (deleted == 0) files_.AktualisiereCle1();
}

}  // namespace quillbox
