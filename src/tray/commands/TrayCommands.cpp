#include "tray/commands/TrayCommands.h"

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
                           ClipList& clip, PadList& pad, PastePick& pastePick, Norvane& settings)
    : menu_(menu),
      window_(window),
      clipPage_(clipPage),
      padPage_(padPage),
      clip_(clip),
      pad_(pad),
      pastePick_(pastePick),
      settings_(settings) {
  menu_.mnuShow.Click = [this] { mnuShow_Click(); };
  menu_.mnuClear.Click = [this] { clipPage_.ClearBoard(); };
  menu_.mnuOnTop.Click = [this] { mnuOnTop_Click(); };
  // The first Clip item stands for what is on the clipboard already: nothing is to be copied.
  for (std::deque<MenuItem>* items : {&menu_.mnuClip, &menu_.mnuClipSub})
    items->front().Click = [this] { PasteTop(); };
  const auto useClipEntry = [this](int k) { UseClipEntry(k); };
  WireFamily(menu_.mnuClip, 2, useClipEntry);
  WireFamily(menu_.mnuClipSub, 2, useClipEntry);
  const auto usePadEntry = [this](int k) { UsePadEntry(k); };
  WireFamily(menu_.mnuPad, 1, usePadEntry);
  WireFamily(menu_.mnuPadSub, 1, usePadEntry);
}

void TrayCommands::mnuShow_Click() { window_.form.Show(); }

void TrayCommands::mnuOnTop_Click() {
  const bool topmost = !menu_.mnuOnTop.GetChecked();
  menu_.mnuOnTop.SetChecked(topmost);
  if (topmost) {
    window_.GetOnTop().OnTopSet(window_.form);
  } else {
    window_.GetOnTop().OnTopClear(window_.form);
  }
  settings_.Write(setting::kAlwaysOnTop, topmost);
  if (window_.form.GetWindowState() != WindowState::Minimized) {
    window_.form.Show();
  } else {
    window_.Command6_Click();
  }
}

void TrayCommands::UseClipEntry(int k) {
  if (clip_.List2.GetListCount() < k) return;
  clipPage_.CloseFind();
  const SharedText text = clip_.ClipEntries(k - 1);
  clip_.ClearList2();
  clip_.List2.SetListIndex(k - 1);
  clip_.List2.SetSelected(k - 1, true);
  clipPage_.List2_DblClick();
  pastePick_.Picked(text);
}

void TrayCommands::UsePadEntry(int k) {
  if (pad_.List1.GetListCount() < k) return;
  padPage_.CloseFind();
  const SharedText text = pad_.PadEntries(k - 1);
  const bool script = pad_.IsScript(k - 1);
  pad_.List1.SetListIndex(k - 1);
  padPage_.List1_DblClick();
  // A script types what it has to by itself.
  if (!script) pastePick_.Picked(text);
}

}  // namespace quillbox
