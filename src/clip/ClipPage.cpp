#include "clip/ClipPage.h"

#include "core/window/DeleteKey.h"
#include "core/window/PollPause.h"
#include "pad/PadRoom.h"

namespace quillbox {

namespace {

// A tip shows what fits, and no text is taken for the marks of its alignment.
constexpr std::size_t kMaxTip = 255;
constexpr std::size_t kCutTip = 250;

Text TipOf(TextView entry) {
  // No character becomes less than one: what lies further behind decides nothing.
  Text tip = ReplaceAll(entry.substr(0, kMaxTip + 1), u"&", u"&&");
  const Text beginning = AsciiUpper(TextView(tip).substr(0, 3));
  if (beginning == u"<C>" || beginning == u"<R>") tip.insert(0, 1, u' ');
  if (tip.size() <= kMaxTip) return tip;
  return Text(CutTo(tip, kCutTip)).append(u"\r\n...");
}

}  // namespace

ClipPage::ClipPage(MainWindow& window, ClipWatcher& watcher, ClipList& clip, PadList& pad, DataFiles& files,
                   Norvane& settings, Clipboard& clipboard)
    : Command000(window.On(Page::Clip), "Command000", u"Clear Board ", u"Clear the current clipboard entry"),
      Command001(window.On(Page::Clip), "Command001", u"Add to Pad",
                 u"Add the selected Clip-List entry to the Pad-List"),
      Command003(window.On(Page::Clip), "Command003", u"Delete Entry",
                 u"Delete the selected Clip-List entry"),
      window_(window),
      watcher_(watcher),
      clip_(clip),
      pad_(pad),
      files_(files),
      settings_(settings),
      clipboard_(clipboard) {
  clip_.List2.Click = [this] { List2_Click(); };
  clip_.List2.DblClick = [this] { List2_DblClick(); };
  clip_.List2.GotFocus = [this] { List2_GotFocus(); };
  clip_.List2.KeyDown = [this](KeyEvent& key) { List2_KeyDown(key); };
  clip_.List2.KeyUp = [this](KeyEvent& key) { List2_KeyUp(key); };
  clip_.List2.OLEDragDrop = [this](const DragData& data) { List2_OLEDragDrop(data); };
  watcher_.Label7.Change = [this] { Label7_Change(); };
  watcher_.Text0.GotFocus = [this] { Text0_GotFocus(); };
  watcher_.Text0.LostFocus = [this] { Text0_LostFocus(); };
  Command000.Click = [this] { Command000_Click(); };
  Command001.Click = [this] { Command001_Click(); };
  Command003.Click = [this] { Command003_Click(); };
  const auto hideStatus = [this] { watcher_.status.Hide(); };
  clip_.List2.LostFocus = hideStatus;
  Command000.LostFocus = hideStatus;
  Command001.LostFocus = hideStatus;
  Command003.LostFocus = hideStatus;
}

void ClipPage::ShowLength(std::size_t length) {
  watcher_.status.WriteLength(length);
  Label7_Change();
  watcher_.status.Show();
}

void ClipPage::ShowStatus(const Text& word) {
  watcher_.status.Write(word);
  watcher_.status.Show();
}

void ClipPage::List2_Click() {
  int selected = 0;
  std::size_t length = 0;
  for (int i = 0; i < clip_.List2.GetListCount(); ++i) {
    if (!clip_.List2.GetSelected(i)) continue;
    ++selected;
    length += clip_.ClipEntries(i).Length();
  }
  if (selected > 0) {
    Command001.SetEnabled(selected == 1);
    ShowLength(length);
  } else {
    List2_GotFocus();
  }
}

void ClipPage::List2_GotFocus() {
  if (HasCurrentRow()) {
    ShowLength(clip_.ClipEntries(clip_.List2.GetListIndex()).Length());
  } else {
    watcher_.status.Hide();
  }
}

void ClipPage::Label7_Change() {
  watcher_.Label7.SetToolTipText(HasCurrentRow() ? TipOf(clip_.ClipEntries(clip_.List2.GetListIndex()).Get())
                                                 : Text());
}

void ClipPage::List2_DblClick() {
  const PollPause pause(window_.Timer1);
  if (clip_.List2.GetListCount() < 2 || !HasCurrentRow()) return;
  const int row = clip_.List2.GetListIndex();
  const SharedText text = clip_.ClipEntries(row);
  // First the clipboard: while it can't be opened the list stays as it is.
  PutOnClipboard(text);
  if (settings_.ReadSetting(section::kIntern, u"Insert", u"2") == u"2") {
    clip_.DeleteEntry2(row);
    watcher_.TimerAktion();
  } else {
    ExchangeWithTop(row, text);
  }
  SelectTopRow();
  watcher_.Text0.SetText(clip_.ClipEntries(0));
  window_.MinimizeIfSet();
  files_.AktualisiereCle2();
}

void ClipPage::PutOnClipboard(const SharedText& text) {
  clipboard_.Clear();
  clipboard_.Put(text.Get());
}

void ClipPage::ExchangeWithTop(int row, const SharedText& text) {
  clip_.DeleteEntry2(row);
  if (!clip_.ClipEntries(0).IsEmpty()) clip_.AddEntry2(clip_.ClipEntries(0), row);
  clip_.DeleteEntry2(0);
  clip_.AddEntry2(text, 0);
}

void ClipPage::SelectTopRow() {
  clip_.ClearList2();
  if (clip_.List2.GetListCount() == 0) return;
  clip_.List2.SetSelected(0, true);
  clip_.List2.SetListIndex(0);
}

void ClipPage::List2_KeyDown(const KeyEvent& key) {
  switch (key.code) {
    case keys::kDelete:
      if (MayDeleteByKey(window_, settings_)) Command003_Click();
      return;
    case keys::kEnter:
      return List2_DblClick();
    case keys::kHome:
    case keys::kUp:
      if (key.CtrlAlone()) List2_DblClick();
      return;
    default:
      return;
  }
}

void ClipPage::List2_KeyUp(const KeyEvent& key) {
  if (key.code == keys::kEnter) SelectTopRow();
}

void ClipPage::List2_OLEDragDrop(const DragData& data) {
  {
    const PollPause pause(window_.Timer1);
    if (data) clipboard_.Put(*data);
  }
  clip_.ClearList2();
}

void ClipPage::ClearCurrentEntry() {
  clipboard_.Clear();
  watcher_.Text0.SetText(u"");
  clip_.ReplaceTop(SharedText());
}

void ClipPage::Command000_Click() {
  {
    const PollPause pause(window_.Timer1);
    ClearCurrentEntry();
    window_.FocusKeepingStatus(watcher_.Text0);
    window_.MinimizeIfSet();
    watcher_.RequestBlink();
  }
  clip_.ClearList2();
  ShowStatus(u"Cleared");
  files_.AktualisiereCle2();
}

void ClipPage::Command001_Click() {
  if (!HasCurrentRow()) {
    window_.MessageBox(u"You haven't selected any entries to add.", 64, u"No entries selected");
    return;
  }
  const SharedText text = clip_.ClipEntries(clip_.List2.GetListIndex());
  if (text.IsEmpty()) {
    window_.MessageBox(u"The entry you've selected doesn't contain any data.", 64, u"No Data");
    return;
  }
  if (AddToPad(text)) {
    pad_.ClearList1();
    Raise(EmptyPadText);
    ShowStatus(u"Added");
  }
  files_.AktualisiereCle1();
  window_.Text2.SetText(u"");
}

bool ClipPage::AddToPad(const SharedText& text) {
  if (const int known = pad_.FindText(text.Get()); known >= 0) {
    pad_.DeleteEntry1(known);
  } else if (!HasRoomInPad(window_, pad_, settings_)) {
    return false;
  }
  Text name = PadList::kNoName;
  pad_.AddEntry1(name, text, 0);
  return true;
}

void ClipPage::Command003_Click() {
  int deleted = 0;
  bool topCleared = false;
  const int count = clip_.List2.GetListCount();
  for (int i = 0; i < count; ++i) {
    const int row = i - deleted;
    if (!clip_.List2.GetSelected(row)) continue;
    if (i == 0) {
      const PollPause pause(window_.Timer1);
      ClearCurrentEntry();
      window_.MinimizeIfSet();
      topCleared = true;
    } else {
      clip_.DeleteEntry2(row);
      ++deleted;
    }
  }
  clip_.ClearList2();
  files_.AktualisiereCle2();
  if (deleted > 0 || topCleared) {
    ShowStatus(u"Deleted");
  } else if (window_.MessageBox(
                 u"You haven't selected any entries to delete. Do you want to delete ALL entries?", 68,
                 u"No entries selected") == 6) {
    DeleteAll();
  }
}

void ClipPage::DeleteAll() {
  const PollPause pause(window_.Timer1);
  clipboard_.Clear();
  watcher_.Text0.SetText(u"");
  clip_.RemoveAll();
  ShowStatus(u"Deleted");
  files_.AktualisiereCle2();
}

void ClipPage::DeleteCopyBelowTop() {
  if (const int copy = clip_.FindBelowTop(watcher_.Text0.GetText()); copy >= 0) clip_.DeleteEntry2(copy);
}

void ClipPage::Text0_GotFocus() {
  clip_.ClearList2();
  if (window_.Text2.GetText() == u"X") {
    window_.Text2.SetText(u"");
  } else {
    watcher_.status.WriteLength(watcher_.Text0.GetText().size());
  }
  watcher_.status.Show();
  DeleteCopyBelowTop();
  const PollPause pause(window_.Timer1);
  const SharedText text(watcher_.Text0.GetText());
  PutOnClipboard(text);
  clip_.ReplaceTop(text);
}

void ClipPage::Text0_LostFocus() {
  DeleteCopyBelowTop();
  files_.AktualisiereCle2();
  watcher_.status.Hide();
}

}  // namespace quillbox
