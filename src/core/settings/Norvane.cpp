#include "core/settings/Norvane.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "base/NumberText.h"
#include "base/Trace.h"
#include "base/Utf8.h"

namespace quillbox {

Text Norvane::CurrentUserName() const { return system_.LogonName().value_or(u"UnknownUser"); }

Text Norvane::SectionPath(TextView section) const {
  Text result = registry::kProgramPath;
  return result.append(u"\\").append(CurrentUserName()).append(u"\\").append(section);
}

Text Norvane::ReadSetting(const Setting& setting, TextView defaultText) {
  Text value = regEdit_.RegEditRead(Hive::CurrentUser, SectionPath(setting.section), setting.key);
  return value.empty() ? Text(defaultText) : value;
}

void Norvane::WriteSetting(const Setting& setting, Text value) {
  const Text where = SectionPath(setting.section);
  regEdit_.RegEditCreateKey(Hive::CurrentUser, where);
  WriteValue(Hive::CurrentUser, where, setting.key, std::move(value));
  if (Tracing()) Trace({"setting: ", ToUtf8(setting.section), "\\", ToUtf8(setting.key)});
}

void Norvane::WriteValue(Hive hive, TextView path, TextView name, Text value) {
  long length = RegEdit::kWholeText;
  regEdit_.RegEditWrite(hive, path, name, value, registry::kString, length);
}

double Norvane::Read(const NumberSetting& setting) {
  return NumberOrInfinity(ReadSetting(setting, Decimal(setting.byDefault)));
}

long long Norvane::ReadWhole(const NumberSetting& setting) { return NearestWhole(Read(setting)); }

int Norvane::Read(const ListMaximum& setting) {
  return static_cast<int>(
      std::clamp<double>(Read(static_cast<const NumberSetting&>(setting)), 0, limits::kHighestRow));
}

std::optional<int> Norvane::Read(const EdgeSetting& setting) {
  const Text twips = ReadSetting(setting, {});
  if (twips.empty()) return std::nullopt;
  using Limits = std::numeric_limits<int>;
  return static_cast<int>(std::clamp<long long>(WholeNumber(twips), Limits::min(), Limits::max()));
}

void Norvane::WriteClicksToShow(bool doubleClick) {
  clicksToShow_ = doubleClick ? kDoubleClick : setting::kClicksToShow.byDefault;
  Write(setting::kClicksToShow, clicksToShow_);
}

double Norvane::ReadTrayTipMode() {
  const double stored = Read(setting::kTrayTipMode);
  return stored == kTipModeOfPlatform ? static_cast<int>(DefaultTrayTipMode()) : stored;
}

void Norvane::PrepareRegistry() {
  const Text userName = CurrentUserName();
  const auto record = [&](Hive hive) {
    regEdit_.RegEditCreateKey(hive, registry::kVendorPath);
    regEdit_.RegEditCreateKey(hive, registry::kProgramPath);
    WriteValue(hive, registry::kProgramPath, registry::kLastUserName, userName);
  };
  record(Hive::CurrentUser);
  regEdit_.RegEditCreateKey(Hive::CurrentUser, registry::kProgramPath + (u"\\" + userName));
  record(Hive::LocalMachine);
  if (IsAutostartWanted()) EnterAutostart();
}

bool Norvane::IsAutostartWanted() {
  const auto& [path, name] = registry::kAutoRun;
  return regEdit_.RegEditRead(Hive::LocalMachine, path, name) != kNo;
}

bool Norvane::MayChangeAutostart() {
  return regEdit_.CanSetValues(Hive::LocalMachine, registry::kAutostart.path);
}

void Norvane::SetAutostart(bool wanted) {
  if (wanted) {
    EnterAutostart();
  } else {
    regEdit_.RegEditDelete(Hive::LocalMachine, registry::kAutostart.path, registry::kAutostart.name);
  }
  WriteValue(Hive::LocalMachine, registry::kAutoRun.path, registry::kAutoRun.name, wanted ? kYes : kNo);
}

// The entry is the path of the program file.
void Norvane::EnterAutostart() {
  WriteValue(
      Hive::LocalMachine, registry::kAutostart.path, registry::kAutostart.name,
      system_.ProgramFolder() + system_.PathSeparator() + system_.ProgramName() + system_.ProgramSuffix());
}

Text Norvane::FormatOsText(Text& templateText) const {
  const VersionRecord version = system_.Version();
  const Text servicePack = version.servicePack.substr(0, version.servicePack.find(u'\0'));
  const Text family = version.platformId == 2 ? u"NT" : u"";
  const std::pair<TextView, Text> placeholders[] = {
      {u"%M%", Decimal(version.major)},
      {u"%m%", Decimal(version.minor)},
      {u"%Bd%", Decimal(version.build)},
      {u"%Sp%", servicePack},
      {u"%Pf%", Decimal(version.platformId)},
      {u"%PfT%", family},
      {u"%Sz%", u"148"},
  };
  for (const auto& [placeholder, value] : placeholders)
    templateText = ReplaceAll(templateText, placeholder, value);
  return templateText;
}

TrayTipMode Norvane::DefaultTrayTipMode() const {
  constexpr int kFamilyWithLines = 2;
  Text platform = u"%Pf%";
  return WholeNumber(FormatOsText(platform)) == kFamilyWithLines ? TrayTipMode::MultiLine
                                                                 : TrayTipMode::SingleLine;
}

Text Norvane::UserDataDir() const {
  return system_.DataFolder() + system_.PathSeparator() + CurrentUserName();
}

}  // namespace quillbox
