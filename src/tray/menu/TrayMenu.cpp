#include "tray/menu/TrayMenu.h"

#include <algorithm>

#include "base/NumberText.h"
#include "tray/menu/TrayTip.h"

namespace quillbox {

struct TrayMenu::Shown {
  double normal;        // items directly in the menu
  double collapsed;     // items in the submenu
  double normalLength;  // characters of an item's text
  double collapsedLength;
};

namespace {

void Fill(std::deque<MenuItem>& items, const std::string& name, int count) {
  for (int k = 1; k <= count; ++k) items.emplace_back(name + std::to_string(k), u"", false);
}

// The prefixes of the items of one kind. Only the normal Clip entries have a mnemonic.
enum class Prefix { Mnemonic, Plain, Collapsed };

Text PrefixOf(Prefix kind, int k) {
  Text prefix = kind == Prefix::Mnemonic ? u"&" : kind == Prefix::Collapsed && k < 10 ? u"  " : u"";
  prefix.append(Decimal(kind == Prefix::Collapsed ? k : k % 10));
  return prefix.append(u":  ");
}

Text Caption(Prefix kind, int k, const SharedText& text, double limit) {
  const auto kept = static_cast<std::size_t>(NearestWhole(limit));
  // No character becomes less than one: what lies further behind decides nothing.
  const Text beautiful = TrayMenu::TextBeautify(text.Get(kept + 3));
  Text caption = PrefixOf(kind, k);
  // Up to two more stay whole: the dots would make it no shorter.
  if (static_cast<double>(beautiful.size()) <= limit + 2) return caption.append(beautiful);
  return caption.append(CutTo(beautiful, kept)).append(u"...");
}

// Shows item k if it stands for an entry and its number is within the limit; a hidden one keeps its caption.
// `textOf` gives the entry of k, null if there is none to show.
template <class TextOf>
void Build(std::deque<MenuItem>& items, Prefix kind, double shown, double length, const TextOf& textOf) {
  for (int k = 1; k <= static_cast<int>(items.size()); ++k) {
    MenuItem& item = items[k - 1];
    const SharedText* const text = k <= shown ? textOf(k) : nullptr;
    if (text) item.SetCaption(Caption(kind, k, *text, length));
    item.SetVisible(text != nullptr);
  }
}

}  // namespace

TrayMenu::TrayMenu(ClipList& clip, PadList& pad, SysTray& tray, Norvane& settings, const Text& programName)
    : mnuBase("mnuBase", u""),
      mnuShow("mnuShow", u"Show &Quillbox"),
      mnuClear("mnuClear", u"Clear &ClipBoard"),
      mnuTrennlinie3("mnuTrennlinie3", u"-", false),
      mnuClips("mnuClips", u"Clip Entries", false),
      mnuTrennlinie5("mnuTrennlinie5", u"-", false),
      mnuPads("mnuPads", u"Pad Entries", false),
      mnuTrennlinie4("mnuTrennlinie4", u"-"),
      mnuOnTop("mnuOnTop", u"&Always on Top"),
      mnuSettings("mnuSettings", u"&Settings..."),
      mnuTrennlinie("mnuTrennlinie", u"-"),
      mnuInfo("mnuInfo", u"&Info..."),
      mnuStartHelp("mnuStartHelp", u"Start&Help..."),
      mnuTrennlinie2("mnuTrennlinie2", u"-"),
      mnuEnd("mnuEnd", u"E&xit Quillbox"),
      clip_(clip),
      pad_(pad),
      tray_(tray),
      settings_(settings),
      programName_(programName) {
  Fill(mnuClip, "mnuClip", limits::kMenuItems);
  Fill(mnuClipSub, "mnuClipSub", limits::kSubMenuItems);
  Fill(mnuPad, "mnuPad", limits::kMenuItems);
  Fill(mnuPadSub, "mnuPadSub", limits::kSubMenuItems);
  mnuOnTop.SetChecked(true);
  const auto addAll = [](MenuItem& to, std::deque<MenuItem>& items) {
    for (MenuItem& item : items) to.Add(item);
  };
  for (MenuItem* item : {&mnuShow, &mnuClear, &mnuTrennlinie3}) mnuBase.Add(*item);
  addAll(mnuBase, mnuClip);
  mnuBase.Add(mnuClips);
  addAll(mnuClips, mnuClipSub);
  mnuBase.Add(mnuTrennlinie5);
  addAll(mnuBase, mnuPad);
  mnuBase.Add(mnuPads);
  addAll(mnuPads, mnuPadSub);
  for (MenuItem* item : {&mnuTrennlinie4, &mnuOnTop, &mnuSettings, &mnuTrennlinie, &mnuInfo, &mnuStartHelp,
                         &mnuTrennlinie2, &mnuEnd}) {
    mnuBase.Add(*item);
  }
}

Text TrayMenu::TextBeautify(TextView UglyText) {
  return ReplaceAll(ReplaceAll(ReplaceAll(ReplaceAll(UglyText, u"\r", u"|"), u"\n", u"|"), u"&", u"&&"),
                    u"\t", u" ");
}

TrayMenu::Shown TrayMenu::ReadShown(const NumberSetting& normal, const NumberSetting& collapsed) {
  const auto count = [&](const NumberSetting& setting) { return std::max(0.0, settings_.Read(setting)); };
  const auto length = [&](const NumberSetting& setting) { return std::max(1.0, settings_.Read(setting)); };
  return {count(normal), count(collapsed), length(setting::kMenuEntriesLen),
          length(setting::kMenuEntriesLen2)};
}

void TrayMenu::AktualisiereContextMnu() {
  const Shown shown = ReadShown(setting::kMenuEntriesMax, setting::kMenuEntriesSubMax);
  mnuTrennlinie3.SetVisible(shown.normal != 0 || shown.collapsed != 0);
  mnuClips.SetVisible(shown.collapsed != 0);
  // The first item shows the clipboard's state, even an empty one.
  const auto textOf = [&](int k) {
    const SharedText& text = clip_.ClipEntries(k - 1);
    return k == 1 || !text.IsEmpty() ? &text : nullptr;
  };
  Build(mnuClip, Prefix::Mnemonic, shown.normal, shown.normalLength, textOf);
  Build(mnuClipSub, Prefix::Collapsed, shown.collapsed, shown.collapsedLength, textOf);
  UpdateTip();
}

void TrayMenu::AktualisiereContextMnu2() {
  const Shown shown = ReadShown(setting::kMenuEntriesMax2, setting::kMenuEntriesSubMax2);
  const bool any = (shown.normal != 0 || shown.collapsed != 0) && pad_.List1.GetListCount() > 0;
  mnuTrennlinie5.SetVisible(any);
  mnuPads.SetVisible(any && shown.collapsed != 0);
  const auto nameOf = [&](int k) -> const SharedText* {
    if (k > pad_.List1.GetListCount()) return nullptr;
    const SharedText& name = pad_.List1.GetList(k - 1);
    return name.IsEmpty() ? nullptr : &name;
  };
  Build(mnuPad, Prefix::Plain, shown.normal, shown.normalLength, nameOf);
  Build(mnuPadSub, Prefix::Collapsed, shown.collapsed, shown.collapsedLength, nameOf);
  for (std::deque<MenuItem>* const items : {&mnuPad, &mnuPadSub}) {
    for (std::size_t row = 0; row < items->size(); ++row)
      (*items)[row].SetScript(pad_.IsScript(static_cast<int>(row)));
  }
}

void TrayMenu::UpdateTip() {
  const double stored = settings_.ReadTrayTipMode();
  TrayTipMode mode = TrayTipMode::MultiLine;
  if (stored <= static_cast<int>(TrayTipMode::NameOnly)) mode = TrayTipMode::NameOnly;
  if (stored == static_cast<int>(TrayTipMode::SingleLine)) mode = TrayTipMode::SingleLine;
  tray_.ShowTip(ComposeTrayTip(mode, clip_.ClipEntries(0).Get(), programName_));
}

}  // namespace quillbox
