#include "tray/commands/TrayCommands.h"

#include "core/window/PollPause.h"

namespace quillbox {

namespace {

// Gives each item from number `first` on a command that is told the item's number.
template <class Command>
void WireFamily(std::deque<MenuItem>& items, int first, const Command& command) {
  for (int k = first; k <= static_cast<int>(items.size()); ++k) {
    items[k - 1].Click = [command, k] { command(k); };
  }
}

}  // namespace

TrayCommands::TrayCommands(TrayMenu& menu, MainWindow& window, ClipPage& clipPage, PadPage& padPage,
                           ClipWatcher& watcher, ClipList& clip, PadList& pad, DataFiles& files,
                           Norvane& settings, Clipboard& clipboard)
    : menu_(menu),
      window_(window),
      clipPage_(clipPage),
      padPage_(padPage),
      watcher_(watcher),
      clip_(clip),
      pad_(pad),
      files_(files),
      settings_(settings),
      clipboard_(clipboard) {
  menu_.mnuShow.Click = [this] { mnuShow_Click(); };
  menu_.mnuClear.Click = [this] { mnuClear_Click(); };
  menu_.mnuOnTop.Click = [this] { mnuOnTop_Click(); };
  // The first Clip item stands for what is on the clipboard already: it has no command.
  const auto useClipEntry = [this](int k) { UseClipEntry(k); };
  WireFamily(menu_.mnuClip, 2, useClipEntry);
  WireFamily(menu_.mnuClipSub, 2, useClipEntry);
  const auto usePadEntry = [this](int k) { UsePadEntry(k); };
  WireFamily(menu_.mnuPad, 1, usePadEntry);
  WireFamily(menu_.mnuPadSub, 1, usePadEntry);
}

void TrayCommands::mnuShow_Click() { window_.form.Show(); }

void TrayCommands::mnuClear_Click() {
  {
    const PollPause pause(window_.Timer1);
    clipboard_.Clear();
    watcher_.Text0.SetText(u"");
    clip_.ReplaceTop(SharedText());
    window_.MinimizeIfSet();
    watcher_.RequestBlink();
  }
  watcher_.status.Write(u"Cleared");
  watcher_.status.Show();
  files_.AktualisiereCle2();
}

void TrayCommands::mnuOnTop_Click() {
  const bool topmost = !menu_.mnuOnTop.GetChecked();
  menu_.mnuOnTop.SetChecked(topmost);
  if (topmost) {
    window_.GetOnTop().OnTopSet(window_.form);
  } else {
    window_.GetOnTop().OnTopClear(window_.form);
  }
  settings_.WriteSetting(section::kIntern, u"AlwaysOnTop", topmost ? u"1" : u"2");
  if (window_.form.GetWindowState() != WindowState::Minimized) {
    window_.form.Show();
  } else {
    window_.Command6_Click();
  }
}

void TrayCommands::UseClipEntry(int k) {
  if (clip_.List2.GetListCount() < k) return;
  clip_.ClearList2();
  clip_.List2.SetListIndex(k - 1);
  clip_.List2.SetSelected(k - 1, true);
  clipPage_.List2_DblClick();
}

void TrayCommands::UsePadEntry(int k) {
  if (pad_.List1.GetListCount() < k) return;
  pad_.List1.SetListIndex(k - 1);
  padPage_.List1_DblClick();
}

}  // namespace quillbox
