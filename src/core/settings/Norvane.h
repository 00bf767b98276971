#pragma once

#include <concepts>

#include "core/settings/RegEdit.h"
#include "platform/ports/Registry.h"
#include "platform/ports/SystemInfo.h"

namespace quillbox {

// The program's own version.
inline constexpr int kMajor = 4;
inline constexpr int kMinor = 31;
inline constexpr int kRevision = 476;

namespace section {
inline constexpr char16_t kIntern[] = u"Intern";
inline constexpr char16_t kExtern[] = u"Extern";
inline constexpr char16_t kMessageEntry[] = u"MessageEntry";
inline constexpr char16_t kCalcEntry[] = u"CalcEntry";
}  // namespace section

namespace path {
inline constexpr char16_t kVendor[] = u"Software\\Norvane";
inline constexpr char16_t kProgram[] = u"Software\\Norvane\\Quillbox";
inline constexpr char16_t kMachineProgram[] = u"SOFTWARE\\Norvane\\Quillbox";
inline constexpr char16_t kRun[] = u"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run";
}  // namespace path

// The settings of the user and the facts about the system. Nothing is cached but ClicksToShow: a setting is
// read when it is used and written when it changes. A failed write is lost silently, a failed read gives the
// default.
class Norvane {
 public:
  Norvane(Registry& registry, SystemInfo& system) : regEdit_(registry), system_(system) {}

  // 2: the tray icon opens the window on a double click; anything else: on a single click.
  int ClicksToShow = 1;

  // The logon name, "UnknownUser" if the system can't tell.
  Text CurrentUserName() const;
  // An empty or missing value reads as the default.
  Text ReadSetting(TextView section, TextView key, TextView defaultText);
  void WriteSetting(TextView section, TextView key, Text value);
  // Of an int alone: braces mean the empty text.
  void WriteSetting(TextView section, TextView key, std::same_as<int> auto value) {
    WriteSetting(section, key, Decimal(value));
  }
  // The numeric prefix as a whole number; 0 if there is none.
  long long ReadNumber(TextView section, TextView key, TextView defaultText);
  // On/off settings of section Intern: only "1" is on.
  bool IsOn(TextView key, TextView defaultText) {
    return ReadSetting(section::kIntern, key, defaultText) == u"1";
  }
  // A list's maximum, the highest row index that it keeps; 0 to 99, to which anything beyond is drawn.
  long long ReadListMaximum(TextView key);

  // Makes sure of the program's keys, records the user, renews the autostart entry unless it isn't wanted.
  void PrepareRegistry();
  // What the autostart entry holds: the path of the program file.
  Text ProgramFile() const;

  // Fills the placeholders of a template with the system's version; the caller's text changes too.
  Text FormatOsText(Text& templateText) const;
  // Whether the platform is of the family that gets the tip of several lines.
  bool HasMultiLineTip() const;

  // The folder of the user's data files.
  Text UserDataDir() const;

  RegEdit& GetRegEdit() { return regEdit_; }

 private:
  Text SectionPath(TextView section) const;

  RegEdit regEdit_;
  SystemInfo& system_;
};

}  // namespace quillbox
