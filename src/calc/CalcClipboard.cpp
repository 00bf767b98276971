#include "calc/CalcClipboard.h"

#include "base/NumberText.h"

namespace quillbox {

CalcClipboard::CalcClipboard(const Place& place, CalcDisplay& display, Clipboard& clipboard,
                             SystemInfo& system)
    : Command49(place, "Command49", u"Clipboard  <=", u"Copy result to clipboard (unless it's zero)"),
      Command50(place, "Command50", u"Clipboard  =>", u"Get result from clipboard (unless it's zero)"),
      display_(display),
      clipboard_(clipboard),
      system_(system) {
  Command49.Click = [this] { Command49_Click(); };
  Command50.Click = [this] { Command50_Click(); };
}

void CalcClipboard::Command49_Click() {
  const double value = display_.Number();
  if (value != 0) clipboard_.Put(MakeTextFromNumber(value, system_.DecimalSeparator()));
}

void CalcClipboard::Command50_Click() {
  const double value = GetNumberFromText(WithPoint(Text(clipboard_.Read())));
  if (value != 0) display_.Show(value);
}

}  // namespace quillbox
