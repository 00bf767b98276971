#include "clip/ClipWatcher.h"

namespace quillbox {

ClipWatcher::ClipWatcher(MainWindow& window, ClipList& clip, DataFiles& files, SysTray& tray,
                         Norvane& settings, Clipboard& clipboard)
    : Picture1(window.form, "Picture1", false),
      window_(window),
      clip_(clip),
      files_(files),
      tray_(tray),
      settings_(settings),
      clipboard_(clipboard) {
  window_.poll.Timer1.Tick = [this] { TimerAktion(); };
  window_.poll.Timer1.IsIdle = [this] { return NothingToDo(); };
  news_ = clipboard_.Listen(
      [this](ClipboardNews news) { window_.poll.Timer1.Wake(news == ClipboardNews::Text); });
}

void ClipWatcher::TimerAktion() {
  try {
    const TextView whole = clipboard_.Read();
    const TextView text = CutTo(whole, limits::kEntryLength);
    if (clip_.ClipEntries(0).Is(text)) {
      Blink();
    } else {
      TakeChange(text, text.size() < whole.size());
    }
  } catch (const RuntimeError&) {
  }
}

void ClipWatcher::TakeChange(TextView view, bool truncated) {
  const SharedText text(view);
  const int maximum = settings_.Read(setting::kClipEntriesMax);
  const int duplicate = clip_.FindBelowTop(view);
  if (duplicate >= 0) {
    clip_.DeleteEntry2(duplicate);
  } else if (maximum < clip_.List2.GetListCount() && !clip_.ClipEntries(0).IsEmpty()) {
    clip_.DeleteEntry2(maximum);
  }
  clip_.AddEntry2(text, 0);
  {
    const PollPause pause(window_.poll);
    Raise(Arrived, text);
  }
  // The blank row that stood for a clipboard without text.
  if (clip_.ClipEntries(1).IsEmpty() && clip_.List2.GetListCount() > 1) clip_.DeleteEntry2(1);
  files_.AktualisiereCle2();
  Raise(Saved);
  tray_.ShowImage(TrayImage::Picture1);
  IconBlinkStep = 1;
  if (truncated && settings_.IsOn(setting::kWarning)) {
    window_.MessageBox(
        u"The current clipboard entry is larger than 32 KB. To save disk space, Quillbox does not save "
        u"entries that "
        u"large - it will be truncated to 32 KB when it is stored. Of course, this doesn't affect the "
        u"current "
        u"clipboard entry itself.\n\r(You can turn this message off in the \"Settings\" Menu.)",
        BoxCode::Information, u"Quillbox: Entry larger than 32KB");
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
    return clip_.ClipEntries(0).Is(CutTo(clipboard_.Read(), limits::kEntryLength));
  } catch (const RuntimeError&) {
    // What can't be opened now tells us when it can.
    return true;
  }
}

}  // namespace quillbox
