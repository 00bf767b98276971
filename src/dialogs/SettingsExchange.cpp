// Which control of the settings dialog stands for which setting.
#include "dialogs/frmSettings.h"

namespace quillbox {

namespace {

Text OneOrTwo(bool one) { return one ? u"1" : u"2"; }

}  // namespace

void frmSettings::LoadSwitches() {
  (settings_.IsOn(u"Insert", u"2") ? Option1 : Option2).SetValue(true);
  Check3.SetValue(settings_.IsOn(u"LastSort", u"2"));
  Check2.SetValue(settings_.IsOn(u"Minimize", u"2"));
  Check1.SetValue(settings_.IsOn(u"Warning", u"2"));
  Check4.SetValue(settings_.IsOn(u"AutoRefresh", u"2"));
  // The click on Check4 has enabled Check7 if it is on.
  Check7.SetValue(Check4.GetValue() && settings_.IsOn(u"AutoRefresh2", u"2"));
  Check6.SetValue(settings_.IsOn(u"AskDelKey", u"1"));
  RegEdit& registry = settings_.GetRegEdit();
  Check5.SetValue(registry.RegEditRead(Hive::LocalMachine, path::kMachineProgram, u"AutoRun") != u"No");
  Check8.SetValue(settings_.ReadSetting(section::kMessageEntry, u"PlayWave", u"2") != u"2");
  Check8_Click();
  (settings_.ClicksToShow == 2 ? Option4 : Option3).SetValue(true);
  Text8.SetText(settings_.ReadSetting(section::kMessageEntry, u"WavePath", u""));
  if (!registry.CanSetValues(Hive::LocalMachine, path::kRun)) Check5.SetEnabled(false);
}

void frmSettings::LoadNumbers() {
  const auto number = [this](TextView key, TextView defaultText) {
    return settings_.ReadNumber(section::kIntern, key, defaultText);
  };
  Text7.SetNumber(number(u"MenuEntriesLen", u"30"));
  Text6.SetNumber(number(u"MenuEntriesLen2", u"30"));
  Text2.SetNumber(settings_.ReadListMaximum(u"PermEntriesMax") + 1);
  Text1.SetNumber(settings_.ReadListMaximum(u"ClipEntriesMax") + 1);
  Text3.SetNumber(settings_.ReadListMaximum(u"ToDoEntriesMax") + 1);
  Text4.SetNumber(number(u"MenuEntriesMax", u"5"));
  Text5.SetNumber(number(u"MenuEntriesMax2", u"0"));
  Text4a.SetNumber(number(u"MenuEntriesSubMax", u"0"));
  Text5a.SetNumber(number(u"MenuEntriesSubMax2", u"10"));
}

int frmSettings::DefaultTipMode() const { return settings_.HasMultiLineTip() ? 2 : 1; }

int frmSettings::StoredTipMode() {
  const long long stored = settings_.ReadNumber(section::kIntern, u"TrayTipMode", u"3");
  if (stored == 3) return DefaultTipMode();
  return stored < 0 ? 0 : stored > 2 ? 2 : static_cast<int>(stored);
}

void frmSettings::StoreSwitches() {
  settings_.WriteSetting(section::kIntern, u"Insert", OneOrTwo(Option1.GetValue()));
  settings_.WriteSetting(section::kIntern, u"LastSort", OneOrTwo(Check3.GetValue()));
  settings_.WriteSetting(section::kIntern, u"Minimize", OneOrTwo(Check2.GetValue()));
  settings_.WriteSetting(section::kIntern, u"Warning", OneOrTwo(Check1.GetValue()));
  settings_.WriteSetting(section::kIntern, u"AutoRefresh", OneOrTwo(Check4.GetValue()));
  settings_.WriteSetting(section::kIntern, u"AutoRefresh2", OneOrTwo(Check7.GetValue()));
  settings_.WriteSetting(section::kIntern, u"AskDelKey", OneOrTwo(Check6.GetValue()));
  settings_.WriteSetting(section::kMessageEntry, u"PlayWave", OneOrTwo(Check8.GetValue()));
}

void frmSettings::StoreAutostart() {
  RegEdit& registry = settings_.GetRegEdit();
  const auto write = [&](TextView path, TextView name, Text value) {
    long length = RegEdit::kWholeText;
    registry.RegEditWrite(Hive::LocalMachine, path, name, value, registry::kString, length);
  };
  if (Check5.GetValue()) {
    write(path::kRun, u"Quillbox", settings_.ProgramFile());
    write(path::kMachineProgram, u"AutoRun", u"Yes");
  } else {
    registry.RegEditDelete(Hive::LocalMachine, path::kRun, u"Quillbox");
    write(path::kMachineProgram, u"AutoRun", u"No");
  }
}

void frmSettings::StoreNumbers() {
  const auto store = [this](TextView key, long long number) {
    settings_.WriteSetting(section::kIntern, key, Decimal(number));
  };
  settings_.ClicksToShow = Option4.GetValue() ? 2 : 1;
  store(u"ClicksToShow", settings_.ClicksToShow);
  store(u"ClipEntriesMax", Text1.Number() - 1);
  store(u"PermEntriesMax", Text2.Number() - 1);
  store(u"ToDoEntriesMax", Text3.Number() - 1);
  store(u"MenuEntriesMax", Text4.Number());
  store(u"MenuEntriesMax2", Text5.Number());
  store(u"MenuEntriesSubMax", Text4a.Number());
  store(u"MenuEntriesSubMax2", Text5a.Number());
  store(u"TrayTipMode", Combo1.GetListIndex());
  store(u"MenuEntriesLen", Text7.Number());
  store(u"MenuEntriesLen2", Text6.Number());
  settings_.WriteSetting(section::kMessageEntry, u"WavePath", Text8.GetText());
}

}  // namespace quillbox
