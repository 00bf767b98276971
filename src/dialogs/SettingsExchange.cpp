// Which control of the settings dialog stands for which setting.
#include <algorithm>

#include "dialogs/frmSettings.h"

namespace quillbox {

void frmSettings::LoadSwitches() {
  (settings_.IsOn(setting::kInsert) ? Option1 : Option2).SetValue(true);
  Check3.SetValue(settings_.IsOn(setting::kLastSort));
  Check2.SetValue(settings_.IsOn(setting::kMinimize));
  Check1.SetValue(settings_.IsOn(setting::kWarning));
  Check4.SetValue(settings_.IsOn(setting::kAutoRefresh));
  // The click on Check4 has enabled Check7 if it is on.
  Check7.SetValue(Check4.GetValue() && settings_.IsOn(setting::kAutoRefresh2));
  Check6.SetValue(settings_.IsOn(setting::kAskDelKey));
  Check5.SetValue(settings_.IsAutostartWanted());
  Check8.SetValue(!settings_.IsOff(setting::kPlayWave));
  Check8_Click();
  (settings_.ShowsOnDoubleClick() ? Option4 : Option3).SetValue(true);
  Text8.SetText(settings_.Read(setting::kWavePath));
  if (!settings_.MayChangeAutostart()) Check5.SetEnabled(false);
}

void frmSettings::LoadNumbers() {
  Text7.SetNumber(settings_.ReadWhole(setting::kMenuEntriesLen));
  Text6.SetNumber(settings_.ReadWhole(setting::kMenuEntriesLen2));
  Text2.SetNumber(settings_.Read(setting::kPermEntriesMax) + 1);
  Text1.SetNumber(settings_.Read(setting::kClipEntriesMax) + 1);
  Text3.SetNumber(settings_.Read(setting::kToDoEntriesMax) + 1);
  Text4.SetNumber(settings_.ReadWhole(setting::kMenuEntriesMax));
  Text5.SetNumber(settings_.ReadWhole(setting::kMenuEntriesMax2));
  Text4a.SetNumber(settings_.ReadWhole(setting::kMenuEntriesSubMax));
  Text5a.SetNumber(settings_.ReadWhole(setting::kMenuEntriesSubMax2));
}

int frmSettings::DefaultTipMode() const { return static_cast<int>(settings_.DefaultTrayTipMode()); }

int frmSettings::StoredTipMode() {
  const auto [lowest, highest] = setting::kTrayTipMode.range;
  return static_cast<int>(std::clamp<long long>(settings_.ReadTrayTipMode(), lowest, highest));
}

void frmSettings::StoreSwitches() {
  settings_.Write(setting::kInsert, Option1.GetValue());
  settings_.Write(setting::kLastSort, Check3.GetValue());
  settings_.Write(setting::kMinimize, Check2.GetValue());
  settings_.Write(setting::kWarning, Check1.GetValue());
  settings_.Write(setting::kAutoRefresh, Check4.GetValue());
  settings_.Write(setting::kAutoRefresh2, Check7.GetValue());
  settings_.Write(setting::kAskDelKey, Check6.GetValue());
  settings_.Write(setting::kPlayWave, Check8.GetValue());
}

void frmSettings::StoreNumbers() {
  settings_.WriteClicksToShow(Option4.GetValue());
  settings_.Write(setting::kClipEntriesMax, Text1.Number() - 1);
  settings_.Write(setting::kPermEntriesMax, Text2.Number() - 1);
  settings_.Write(setting::kToDoEntriesMax, Text3.Number() - 1);
  settings_.Write(setting::kMenuEntriesMax, Text4.Number());
  settings_.Write(setting::kMenuEntriesMax2, Text5.Number());
  settings_.Write(setting::kMenuEntriesSubMax, Text4a.Number());
  settings_.Write(setting::kMenuEntriesSubMax2, Text5a.Number());
  settings_.Write(setting::kTrayTipMode, Combo1.GetListIndex());
  settings_.Write(setting::kMenuEntriesLen, Text7.Number());
  settings_.Write(setting::kMenuEntriesLen2, Text6.Number());
  settings_.Write(setting::kWavePath, Text8.GetText());
}

}  // namespace quillbox
