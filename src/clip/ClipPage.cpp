#include "clip/ClipPage.h"

#include <cassert>

#include "clip/UrlCut.h"
#include "core/window/DeleteKey.h"
#include "pad/PadRoom.h"
#include "storage/ListRows.h"

namespace quillbox {

namespace {

// A tip shows what fits, and no text is taken for the marks of its alignment.
constexpr std::size_t kMaxTip = 255;
constexpr std::size_t kCutTip = 250;

// No character becomes less than one: what lies behind the first kMaxTip + 1 decides nothing.
Text TipOf(TextView beginning) {
  Text tip = ReplaceAll(beginning, u"&", u"&&");
  const Text mark = AsciiUpper(TextView(tip).substr(0, 3));
  if (mark == u"<C>" || mark == u"<R>") tip.insert(0, 1, u' ');
  if (tip.size() <= kMaxTip) return tip;
  return Text(CutTo(tip, kCutTip)).append(u"\r\n...");
}

}  // namespace

ClipPage::ClipPage(MainWindow& window, ClipWatcher& watcher, ClipList& clip, PadList& pad, DataFiles& files,
                   Norvane& settings, Clipboard& clipboard, FoldTable& folds)
    : Text0(window.On(Page::Clip), "Text0", TextBox::Lines::Many),
      status(window.On(Page::Clip), "Label7", "Line4", "Line5", u"Length of Clip-List entry"),
      Label7(status.GetLabel()),
      Command000(window.On(Page::Clip), "Command000", u"Clear Board ", u"Clear the current clipboard entry"),
      Command001(window.On(Page::Clip), "Command001", u"Add to Pad",
                 u"Add the selected Clip-List entry to the Pad-List"),
      Command003(window.On(Page::Clip), "Command003", u"Delete Entry",
                 u"Delete the selected Clip-List entry"),
      find(window.On(Page::Clip), "FindClip", "FoundClip", clip.List2, folds,
           [this](WordSearch& words, int row) { return words.IsIn({clip_.List2.GetList(row).Get()}); }),
      window_(window),
      watcher_(watcher),
      clip_(clip),
      pad_(pad),
      files_(files),
      settings_(settings),
      clipboard_(clipboard) {
  clip_.List2.Click = [this] { List2_Click(); };
  clip_.List2.DblClick = [this] { Pick(); };
  clip_.List2.GotFocus = [this] { List2_GotFocus(); };
  clip_.List2.KeyDown = [this](KeyEvent& key) { List2_KeyDown(key); };
  clip_.List2.KeyUp = [this](KeyEvent& key) { List2_KeyUp(key); };
  clip_.List2.OLEDragDrop = [this](const DragData& data) { List2_OLEDragDrop(data); };
  Label7.Change = [this] { Label7_Change(); };
  Label7.DblClick = [this] { Label7_DblClick(); };
  Text0.Change = [this] { Text0_Change(); };
  Text0.GotFocus = [this] { Text0_GotFocus(); };
  Text0.LostFocus = [this] { Text0_LostFocus(); };
  Command000.Click = [this] { Command000_Click(); };
  Command001.Click = [this] { Command001_Click(); };
  Command003.Click = [this] { Command003_Click(); };
  watcher_.Arrived = [this](const SharedText& text) { Text0.SetText(text); };
  watcher_.Saved = [this] {
    // A text as long as the one before changes no caption, but the current row may be another one or gone.
    Label7_Change();
    if (CutUrlGrade() > 1) Label7_DblClick();
  };
  find.field.GotFocus = [this] { List2_GotFocus(); };
  const auto hideStatus = [this] { status.Hide(); };
  find.field.LostFocus = hideStatus;
  clip_.List2.LostFocus = hideStatus;
  Command000.LostFocus = hideStatus;
  Command001.LostFocus = hideStatus;
  Command003.LostFocus = hideStatus;
}

void ClipPage::ShowLength(std::size_t length) {
  status.WriteLength(length);
  Label7_Change();
  status.Show();
}

void ClipPage::List2_Click() {
  const std::vector<int> selected = SelectedRows(clip_.List2);
  if (selected.empty()) return List2_GotFocus();
  std::size_t length = 0;
  for (const int row : selected) length += clip_.ClipEntries(row).Length();
  Command001.SetEnabled(selected.size() == 1);
  ShowLength(length);
}

void ClipPage::List2_GotFocus() {
  if (HasCurrentRow(clip_.List2)) {
    ShowLength(clip_.ClipEntries(clip_.List2.GetListIndex()).Length());
  } else {
    status.Hide();
  }
}

void ClipPage::Label7_Change() {
  Label7.SetToolTipText(HasCurrentRow(clip_.List2)
                            ? TipOf(clip_.ClipEntries(clip_.List2.GetListIndex()).Get(kMaxTip + 1))
                            : Text());
}

void ClipPage::Label7_DblClick() {
  if (CutUrlGrade() > 0) Text0.SetText(CutUrlPart(Text0.GetText()));
}

double ClipPage::CutUrlGrade() { return settings_.Read(setting::kCutURL); }

void ClipPage::Pick() {
  if (!HasCurrentRow(clip_.List2)) return List2_DblClick();
  const SharedText text = clip_.ClipEntries(clip_.List2.GetListIndex());
  bool goes = false;
  Raise(Picking, goes);
  List2_DblClick();
  if (goes) Raise(PickedToGo, text);
}

void ClipPage::List2_DblClick() {
  PollPause pause(window_.poll);
  if (clip_.List2.GetListCount() < 2 || !HasCurrentRow(clip_.List2)) return;
  const int row = clip_.List2.GetListIndex();
  const SharedText text = clip_.ClipEntries(row);
  // First the clipboard: while it can't be opened the list stays as it is.
  PutOnClipboard(text);
  if (settings_.IsOff(setting::kInsert)) {
    clip_.DeleteEntry2(row);
    // For the tick this is a change like any other.
    pause.End();
    watcher_.TimerAktion();
  } else {
    ExchangeWithTop(row, text);
  }
  SelectTopRow();
  Text0.SetText(clip_.ClipEntries(0));
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
      return Pick();
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
    const PollPause pause(window_.poll);
    if (data) clipboard_.Put(*data);
  }
  clip_.ClearList2();
}

void ClipPage::ClearTop() {
  assert(!window_.poll.Runs());
  clipboard_.Clear();
  Text0.SetText(u"");
  clip_.ReplaceTop(SharedText());
  window_.MinimizeIfSet();
}

void ClipPage::ClearCurrentEntry() {
  const PollPause pause(window_.poll);
  ClearTop();
  watcher_.RequestBlink();
}

void ClipPage::SayCleared() {
  status.Show(u"Cleared");
  files_.AktualisiereCle2();
}

void ClipPage::ClearBoard() {
  ClearCurrentEntry();
  SayCleared();
}

void ClipPage::Command000_Click() {
  ClearCurrentEntry();
  window_.FocusKeepingStatus(Text0);
  clip_.ClearList2();
  SayCleared();
}

void ClipPage::Command001_Click() {
  if (!HasCurrentRow(clip_.List2)) {
    window_.MessageBox(u"You haven't selected any entries to add.", BoxCode::Information,
                       u"No entries selected");
    return;
  }
  const SharedText text = clip_.ClipEntries(clip_.List2.GetListIndex());
  if (text.IsEmpty()) {
    window_.MessageBox(u"The entry you've selected doesn't contain any data.", BoxCode::Information,
                       u"No Data");
    return;
  }
  if (AddToPad(window_, pad_, settings_, text)) {
    pad_.ClearList1();
    Raise(EmptyPadText);
    status.Show(u"Added");
  }
  files_.AktualisiereCle1();
  window_.Text2.SetText(u"");
}

void ClipPage::Command003_Click() {
  const int selected = DeleteSelected(clip_.List2, [this](int row) {
    if (row > 0) return clip_.DeleteEntry2(row);
    // The row at the top stands for the clipboard and stays, blank.
    const PollPause pause(window_.poll);
    ClearTop();
  });
  clip_.ClearList2();
  files_.AktualisiereCle2();
  if (selected > 0) {
    status.Show(u"Deleted");
  } else if (clip_.List2.IsFiltered()) {
    SayNoneSelected(window_);
  } else if (window_.Confirm(
                 u"You haven't selected any entries to delete. Do you want to delete ALL entries?",
                 u"No entries selected")) {
    DeleteAll();
  }
}

void ClipPage::DeleteAll() {
  const PollPause pause(window_.poll);
  clipboard_.Clear();
  Text0.SetText(u"");
  clip_.RemoveAll();
  status.Show(u"Deleted");
  files_.AktualisiereCle2();
}

void ClipPage::DeleteCopyBelowTop() {
  if (const int copy = clip_.FindBelowTop(Text0.GetText()); copy >= 0) clip_.DeleteEntry2(copy);
}

void ClipPage::Text0_Change() {
  if (Text0.GetText().size() > limits::kEntryLength) {
    // The cut runs this handler again, on the text that fits.
    Text0.SetText(Text(CutTo(Text0.GetText(), limits::kEntryLength)));
    return;
  }
  status.WriteLength(Text0.GetText().size());
  // While the poll is paused the text comes from the clipboard or goes there by itself.
  if (!window_.poll.Runs()) return;
  const PollPause pause(window_.poll);
  const SharedText text(Text0.GetText());
  IgnoreFailure([&] { clipboard_.Clear(); });
  IgnoreFailure([&] { clipboard_.Put(text.Get()); });
  IgnoreFailure([&] { clip_.ReplaceTop(text); });
  Raise(RebuildMenu);
}

void ClipPage::Text0_GotFocus() {
  clip_.ClearList2();
  if (!window_.TakeKeptStatus()) status.WriteLength(Text0.GetText().size());
  status.Show();
  DeleteCopyBelowTop();
  const PollPause pause(window_.poll);
  const SharedText text(Text0.GetText());
  PutOnClipboard(text);
  clip_.ReplaceTop(text);
}

void ClipPage::Text0_LostFocus() {
  DeleteCopyBelowTop();
  files_.AktualisiereCle2();
  status.Hide();
}

}  // namespace quillbox
