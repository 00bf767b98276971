#pragma once

#include <optional>

#include "core/settings/RegEdit.h"
#include "core/settings/Settings.h"
#include "platform/ports/Registry.h"
#include "platform/ports/SystemInfo.h"

namespace quillbox {

// The settings of the user and the facts about the system. Nothing is cached but ClicksToShow: a setting is
// read when it is used and written when it changes. A failed write is lost silently, a failed read gives the
// default.
class Norvane {
 public:
  Norvane(Registry& registry, SystemInfo& system) : regEdit_(registry), system_(system) {}

  // The logon name, "UnknownUser" if the system can't tell.
  Text CurrentUserName() const;

  bool IsOn(const SwitchSetting& setting) { return ReadSwitch(setting) == kOn; }
  bool IsOff(const SwitchSetting& setting) { return ReadSwitch(setting) == kOff; }
  bool IsNo(const YesNoSetting& setting) { return ReadSetting(setting, {}) == kNo; }
  Text Read(const TextSetting& setting) { return ReadSetting(setting, setting.byDefault); }
  // The number that the text begins with; infinite if it is beyond what a double holds.
  double Read(const NumberSetting& setting);
  // The same as the nearest whole number, a half as the even one.
  long long ReadWhole(const NumberSetting& setting);
  // The fraction is dropped; clamped to 0 and limits::kHighestRow.
  int Read(const ListMaximum& setting);
  std::optional<int> Read(const EdgeSetting& setting);

  void Write(const SwitchSetting& setting, bool on) { WriteSetting(setting, on ? kOn : kOff); }
  void Write(const YesNoSetting& setting, bool yes) { WriteSetting(setting, yes ? kYes : kNo); }
  void Write(const TextSetting& setting, const Text& text) { WriteSetting(setting, text); }
  void Write(const NumberSetting& setting, long long number) { WriteSetting(setting, Decimal(number)); }
  void Write(const EdgeSetting& setting, int twips) { WriteSetting(setting, Decimal(twips)); }
  // From now on the default counts.
  void Empty(const Setting& setting) { WriteSetting(setting, {}); }

  // Whether the tray icon opens the window on a double click, not on a single one. Goes by the value that the
  // start has read and the settings dialog has written, not by what is stored meanwhile.
  bool ShowsOnDoubleClick() const { return clicksToShow_ == kDoubleClick; }
  void ReadClicksToShow() { clicksToShow_ = ReadWhole(setting::kClicksToShow); }
  void WriteClicksToShow(bool doubleClick);
  // The mode of the tray icon's tip as a number, which may be none of the modes that there are.
  double ReadTrayTipMode();
  // What the platform's users get that have not chosen.
  TrayTipMode DefaultTrayTipMode() const;

  // Makes sure of the program's keys, records the user, renews the autostart entry unless it isn't wanted.
  void PrepareRegistry();
  bool IsAutostartWanted();
  // Whether the user has the right to change the autostart entry.
  bool MayChangeAutostart();
  // Writes or deletes the autostart entry, and remembers which.
  void SetAutostart(bool wanted);

  // Fills the placeholders of a template with the system's version; the caller's text changes too.
  Text FormatOsText(Text& templateText) const;

  // The folder of the user's data files.
  Text UserDataDir() const;

 private:
  static constexpr char16_t kOn[] = u"1";
  static constexpr char16_t kOff[] = u"2";
  static constexpr char16_t kYes[] = u"Yes";
  static constexpr char16_t kNo[] = u"No";
  static constexpr int kDoubleClick = 2;

  Text SectionPath(TextView section) const;
  Text ReadSetting(const Setting& setting, TextView defaultText);
  void WriteSetting(const Setting& setting, Text value);
  Text ReadSwitch(const SwitchSetting& setting) {
    return ReadSetting(setting, setting.onByDefault ? kOn : kOff);
  }
  void WriteValue(Hive hive, TextView path, TextView name, Text value);
  void EnterAutostart();

  RegEdit regEdit_;
  SystemInfo& system_;
  long long clicksToShow_ = setting::kClicksToShow.byDefault;
};

}  // namespace quillbox
