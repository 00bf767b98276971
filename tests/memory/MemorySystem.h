#pragma once

#include "platform/ports/SystemInfo.h"

namespace quillbox {

// A system that says what it was told to.
class MemorySystem : public SystemInfo {
 public:
  MemorySystem() { version.platformId = 2; }

  std::optional<Text> LogonName() override { return user; }
  VersionRecord Version() override { return version; }
  Text ProgramFolder() override { return folder; }
  Text ProgramName() override { return u"quillbox"; }
  Text PathSeparator() override { return u"/"; }
  Text ProgramSuffix() override { return {}; }
  Text DataFolder() override { return folder; }
  Text TemplateFolder() override { return folder + u"/Templates"; }
  bool AnotherInstanceRuns() override { return anotherInstance; }
  char16_t DecimalSeparator() override { return separator; }
  long InstanceHandle() override { return 1; }
  long ThreadId() override { return 1; }

  std::optional<Text> user = u"user";  // nothing: the system can't tell
  Text folder;                         // no closing separator
  VersionRecord version;
  char16_t separator = u'.';
  bool anotherInstance = false;
};

}  // namespace quillbox
