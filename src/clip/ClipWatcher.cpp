#include "clip/ClipWatcher.h"

#include "base/NumberText.h"
#include "clip/UrlCut.h"

namespace quillbox {

ClipWatcher::ClipWatcher(MainWindow& window, ClipList& clip, DataFiles& files, SysTray& tray,
                         Norvane& settings, Clipboard& clipboard)
    : Text0(window.On(Page::Clip), "Text0", TextBox::Lines::Many),
      status(window.On(Page::Clip), "Label7", "Line4", "Line5", u"Length of Clip-List entry"),
      Label7(status.GetLabel()),
      Picture1(window.form, "Picture1", false),
      window_(window),
      clip_(clip),
      files_(files),
      tray_(tray),
      settings_(settings),
      clipboard_(clipboard) {
  window_.Timer1.Tick = [this] { TimerAktion(); };
  window_.Timer1.IsIdle = [this] { return NothingToDo(); };
  Text0.Change = [this] { Text0_Change(); };
  Label7.DblClick = [this] { Label7_DblClick(); };
  news_ = clipboard_.Listen([this](ClipboardNews news) { window_.Timer1.Wake(news == ClipboardNews::Text); });
}

void ClipWatcher::TimerAktion() {
  try {
    const TextView whole = clipboard_.Read();
    const TextView text = CutTo(whole, kMaxEntryLength);
    if (SameText(text, clip_.ClipEntries(0).Get())) {
      Blink();
    } else {
      TakeChange(text, text.size() < whole.size());
    }
  } catch (const RuntimeError&) {
  }
  window_.Timer1.SetEnabled(true);
}

void ClipWatcher::TakeChange(TextView view, bool truncated) {
  const SharedText text(view);
  const long long maximum = settings_.ReadListMaximum(u"ClipEntriesMax");
  const int duplicate = clip_.FindBelowTop(text.Get());
  if (duplicate >= 0) {
    clip_.DeleteEntry2(duplicate);
  } else if (maximum < clip_.List2.GetListCount() && !clip_.ClipEntries(0).IsEmpty()) {
    clip_.DeleteEntry2(static_cast<int>(maximum));
  }
  clip_.AddEntry2(text, 0);
  window_.Timer1.SetEnabled(false);
  Text0.SetText(text);
  window_.Timer1.SetEnabled(true);
  // The blank row that stood for a clipboard without text.
  if (clip_.ClipEntries(1).IsEmpty() && clip_.List2.GetListCount() > 1) clip_.DeleteEntry2(1);
  files_.AktualisiereCle2();
  if (CutUrlGrade() > 1) Label7_DblClick();
  tray_.ShowImage(TrayImage::Picture1);
  IconBlinkStep = 1;
  if (truncated && settings_.IsOn(u"Warning", u"2")) {
    window_.MessageBox(
        u"The current clipboard entry is larger than 32 KB. To save disk space, Quillbox does not save "
        u"entries that "
        u"large - it will be truncated to 32 KB when it is stored. Of course, this doesn't affect the "
        u"current "
        u"clipboard entry itself.\n\r(You can turn this message off in the \"Settings\" Menu.)",
        64, u"Quillbox: Entry larger than 32KB");
  }
}

void ClipWatcher::Blink() {
  if (IconBlinkStep == 0) return;
  if (IconBlinkStep < 0) {
    tray_.ShowImage(TrayImage::Picture1);
    IconBlinkStep = 1;
    return;
  }
  tray_.ShowImage(IconBlinkStep % 2 == 1 ? TrayImage::Window : TrayImage::Picture1);
  IconBlinkStep = IconBlinkStep == 5 ? 0 : IconBlinkStep + 1;
}

bool ClipWatcher::NothingToDo() {
  if (IconBlinkStep != 0) return false;
  try {
    return SameText(CutTo(clipboard_.Read(), kMaxEntryLength), clip_.ClipEntries(0).Get());
  } catch (const RuntimeError&) {
    // What can't be opened now tells us when it can.
    return true;
  }
}

double ClipWatcher::CutUrlGrade() {
  return GetNumberFromText(settings_.ReadSetting(section::kIntern, u"CutURL", u"0"));
}

void ClipWatcher::Label7_DblClick() {
  if (CutUrlGrade() > 0) Text0.SetText(CutUrlPart(Text0.GetText()));
}

void ClipWatcher::Text0_Change() {
  if (Text0.GetText().size() > kMaxEntryLength) {
    // The cut runs this handler again, on the text that fits.
    Text0.SetText(Text(CutTo(Text0.GetText(), kMaxEntryLength)));
    return;
  }
  status.WriteLength(Text0.GetText().size());
  if (!window_.Timer1.GetEnabled()) return;
  window_.Timer1.SetEnabled(false);
  const SharedText text(Text0.GetText());
  IgnoreFailure([&] { clipboard_.Clear(); });
  IgnoreFailure([&] { clipboard_.Put(text.Get()); });
  IgnoreFailure([&] { clip_.ReplaceTop(text); });
  Raise(RebuildMenu);
  window_.Timer1.SetEnabled(true);
}

}  // namespace quillbox
