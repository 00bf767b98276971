#include "todo/ToDoPage.h"

#include <cassert>

#include "core/window/DeleteKey.h"
#include "storage/ListRows.h"

namespace quillbox {

namespace {

constexpr char16_t kAdd[] = u"Add Entry";
constexpr char16_t kUpdate[] = u"Update Entry";

}  // namespace

ToDoPage::ToDoPage(MainWindow& window, ToDoList& toDo, DataFiles& files, Norvane& settings)
    : List3(toDo.List3),
      Text1(window.On(Page::ToDo), "Text1", TextBox::Lines::One),
      Command2(window.On(Page::ToDo), "Command2", kAdd, u"Add the text above to the ToDo-List", false),
      Command3(window.On(Page::ToDo), "Command3", u"Delete Entry", u"Delete the selected ToDo-List entry"),
      Command4(window.On(Page::ToDo), "Command4", u"New Entry",
               u"Clear the text field above for a new entry"),
      Command5(window.On(Page::ToDo), "Command5", u"Refresh", u"Delete all entries marked \"completed\""),
      UpDown1(window.On(Page::ToDo), "UpDown1", u"Move ToDo-Entries up or down", false),
      status(window.On(Page::ToDo), "Label12", "Line11", "Line12", u"Length of ToDo-List entry"),
      Label12(status.GetLabel()),
      window_(window),
      files_(files),
      settings_(settings),
      moves_(toDo.List3, files) {
  Command2.Click = [this] { Command2_Click(); };
  Command3.Click = [this] { Command3_Click(); };
  Command4.Click = [this] { Command4_Click(); };
  Command5.Click = [this] { Command5_Click(); };
  Command3.LostFocus = [this] { status.Hide(); };
  Command5.LostFocus = [this] { status.Hide(); };
  Text1.Change = [this] { Text1_Change(); };
  Text1.GotFocus = [this] { Text1_GotFocus(); };
  Text1.LostFocus = [this] { status.Hide(); };
  Text1.KeyPress = [this](char16_t& character) { Text1_KeyPress(character); };
  List3.Click = [this] { List3_Click(); };
  List3.GotFocus = [this] { List3_GotFocus(); };
  List3.LostFocus = [this] { List3_LostFocus(); };
  List3.KeyDown = [this](KeyEvent& key) { List3_KeyDown(key); };
  List3.OLEDragDrop = [this](const DragData& data) { List3_OLEDragDrop(data); };
  UpDown1.UpClick = [this] { moves_.OneUp(); };
  UpDown1.DownClick = [this] { moves_.OneDown(); };
  Label12.Change = [this] { Label12.SetToolTipText(u""); };
  Label12.Click = [this] { Raise(OpenSettings); };
}

void ToDoPage::ShowMode() { Command2.SetCaption(List3.GetListIndex() >= 0 ? kUpdate : kAdd); }

void ToDoPage::Command2_Click() {
  if (Text1.GetText().empty()) return;
  // A reload of the list may have taken the row away that was to be updated.
  const bool update = Command2.GetCaption() == kUpdate && List3.GetListIndex() >= 0;
  if (PutIn(update ? List3.GetListIndex() : -1)) {
    List3.SetListIndex(-1);
    Text1.SetText(u"");
    Command2.SetCaption(kAdd);
    window_.FocusKeepingStatus(Text1);
    status.Show(update ? u"Updated" : u"Added");
  }
  files_.AktualisiereCle3();
}

bool ToDoPage::PutIn(int old) {
  assert(old < List3.GetListCount());
  const Text text = Text1.GetText();
  const bool update = old >= 0;
  const int others = List3.GetListCount() - (update ? 1 : 0);
  int duplicate = LastRow(List3, 0, [&](int row) { return row != old && List3.GetList(row).Is(text); });
  const bool full = duplicate < 0 && others > settings_.Read(setting::kToDoEntriesMax);
  if (full && !MayDeleteOldest()) return false;
  if (update) {
    List3.RemoveItem(old);
    if (duplicate > old) --duplicate;
  }
  if (duplicate >= 0) {
    List3.RemoveItem(duplicate);
    List3.AddItem(text);
  } else if (full) {
    if (List3.GetListCount() > 0) List3.RemoveItem(0);
    List3.AddItem(text);
  } else {
    List3.AddItem(text, update ? old : List3.GetListCount());
  }
  return true;
}

bool ToDoPage::MayDeleteOldest() {
  return window_.Confirm(
      u"Sorry, but you have reached the maximum number of ToDo-List entries. You have to delete some "
      u"entries or increase the maximum number of entries before you proceed.\n\rWould you like to "
      u"delete the oldest entry now?",
      u"Too many ToDo-List entries");
}

void ToDoPage::Command3_Click() {
  if (List3.GetListIndex() >= 0) {
    List3.RemoveItem(List3.GetListIndex());
    Deleted();
    return;
  }
  const bool confirmed =
      window_.Confirm(u"You haven't selected any entries to delete. Do you want to delete ALL entries?",
                      u"No entries selected");
  if (!confirmed) return;
  List3.Clear();
  Deleted();
}

void ToDoPage::Deleted() {
  Text1.SetText(u"");
  List3.SetListIndex(-1);
  Command2.SetCaption(kAdd);
  status.Show(u"Deleted");
  files_.AktualisiereCle3();
}

void ToDoPage::Command4_Click() {
  Text1.SetText(u"");
  window_.FocusKeepingStatus(Text1);
  List3.SetListIndex(-1);
  status.Show(u"Ready");
  Command2.SetCaption(kAdd);
}

void ToDoPage::Command5_Click() {
  DeleteSelected(List3, [this](int row) { List3.RemoveItem(row); });
  List3.SetListIndex(-1);
  Text1.SetText(u"");
  Command2.SetCaption(kAdd);
  if (window_.Text4.GetText() == u"NoShow") {
    window_.Text4.SetText(u"");
  } else {
    status.Show(u"Refreshed");
  }
  files_.AktualisiereCle3();
}

void ToDoPage::Text1_Change() {
  Command2.SetEnabled(!Text1.GetText().empty());
  status.WriteLength(Text1.GetText().size());
  ShowMode();
}

void ToDoPage::Text1_GotFocus() {
  if (!window_.TakeKeptStatus()) status.WriteLength(Text1.GetText().size());
  status.Show();
  ShowMode();
}

void ToDoPage::Text1_KeyPress(char16_t& character) {
  if (character != keys::kEnter) return;
  character = 0;
  Command2_Click();
}

void ToDoPage::List3_Click() {
  const int row = List3.GetListIndex();
  if (row >= 0) {
    const Text text = List3.GetList(row);
    Text1.SetText(text);
    status.ShowLength(text.size());
  } else {
    status.Hide();
  }
  ShowMode();
  UpDown1.SetEnabled(row >= 0);
}

void ToDoPage::List3_GotFocus() {
  const int row = List3.GetListIndex();
  if (row >= 0) {
    status.ShowLength(List3.GetList(row).Length());
    UpDown1.SetEnabled(true);
  } else {
    status.Hide();
  }
  ShowMode();
}

void ToDoPage::List3_LostFocus() {
  status.Hide();
  UpDown1.SetEnabled(false);
  files_.AktualisiereCle3();
}

void ToDoPage::List3_KeyDown(KeyEvent& key) {
  if (key.code == keys::kEnter) key.code = keys::kSpace;
  if (key.code == keys::kDelete && MayDeleteByKey(window_, settings_)) Command3_Click();
  if (key.CtrlAlone() && UpDown1.GetEnabled()) moves_.Key(key.code);
}

void ToDoPage::List3_OLEDragDrop(const DragData& data) {
  if (!data) return;
  Command4_Click();
  Text1.SetText(*data);
  Command2_Click();
}

}  // namespace quillbox
