#include "core/settings/Norvane.h"

#include <algorithm>

#include "base/NumberText.h"
#include "base/Trace.h"
#include "base/Utf8.h"

namespace quillbox {

Text Norvane::CurrentUserName() const { return system_.LogonName().value_or(u"UnknownUser"); }

Text Norvane::SectionPath(TextView section) const {
  Text result = path::kProgram;
  return result.append(u"\\").append(CurrentUserName()).append(u"\\").append(section);
}

Text Norvane::ReadSetting(TextView section, TextView key, TextView defaultText) {
  Text value = regEdit_.RegEditRead(Hive::CurrentUser, SectionPath(section), key);
  return value.empty() ? Text(defaultText) : value;
}

void Norvane::WriteSetting(TextView section, TextView key, Text value) {
  const Text where = SectionPath(section);
  regEdit_.RegEditCreateKey(Hive::CurrentUser, where);
  long length = RegEdit::kWholeText;
  regEdit_.RegEditWrite(Hive::CurrentUser, where, key, value, registry::kString, length);
  if (Tracing()) Trace({"setting: ", ToUtf8(section), "\\", ToUtf8(key)});
}

long long Norvane::ReadNumber(TextView section, TextView key, TextView defaultText) {
  return WholeNumber(ReadSetting(section, key, defaultText));
}

long long Norvane::ReadListMaximum(TextView key) {
  return std::clamp(ReadNumber(section::kIntern, key, u"49"), 0LL, 99LL);
}

void Norvane::PrepareRegistry() {
  const Text userName = CurrentUserName();
  const auto record = [&](Hive hive) {
    regEdit_.RegEditCreateKey(hive, path::kVendor);
    regEdit_.RegEditCreateKey(hive, path::kProgram);
    Text name = userName;
    long length = RegEdit::kWholeText;
    regEdit_.RegEditWrite(hive, path::kProgram, u"LastUserName", name, registry::kString, length);
  };
  record(Hive::CurrentUser);
  regEdit_.RegEditCreateKey(Hive::CurrentUser, path::kProgram + (u"\\" + userName));
  record(Hive::LocalMachine);
  if (regEdit_.RegEditRead(Hive::LocalMachine, path::kMachineProgram, u"AutoRun") != u"No") {
    Text file = ProgramFile();
    long length = static_cast<long>(file.size());
    regEdit_.RegEditWrite(Hive::LocalMachine, path::kRun, u"Quillbox", file, registry::kString, length);
  }
}

Text Norvane::ProgramFile() const {
  return system_.ProgramFolder() + system_.PathSeparator() + system_.ProgramName() + system_.ProgramSuffix();
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

bool Norvane::HasMultiLineTip() const {
  Text platform = u"%Pf%";
  return WholeNumber(FormatOsText(platform)) == 2;
}

Text Norvane::UserDataDir() const {
  return system_.DataFolder() + system_.PathSeparator() + CurrentUserName();
}

}  // namespace quillbox
