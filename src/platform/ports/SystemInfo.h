#pragma once

#include <optional>

#include "base/Text.h"

namespace quillbox {

struct VersionRecord {
  long major = 0;
  long minor = 0;
  long build = 0;
  long platformId = 0;
  Text servicePack;
};

class SystemInfo {
 public:
  virtual ~SystemInfo() = default;
  // The logon name; nothing if the system can't tell. Asked for at every access to a setting: cheap.
  virtual std::optional<Text> LogonName() = 0;
  // Fields that the system can't tell stay zero and empty.
  virtual VersionRecord Version() = 0;
  virtual Text ProgramFolder() = 0;   // no closing separator
  virtual Text ProgramName() = 0;     // file name without extension
  virtual Text PathSeparator() = 0;   // between folders in paths that are shown, stored and opened
  virtual Text ProgramSuffix() = 0;   // what follows the name in the path of the program file
  virtual Text DataFolder() = 0;      // holds a folder of data files for each user
  virtual Text TemplateFolder() = 0;  // holds the three template files
  virtual bool AnotherInstanceRuns() = 0;
  virtual char16_t DecimalSeparator() = 0;
  virtual long InstanceHandle() = 0;
  virtual long ThreadId() = 0;
};

}  // namespace quillbox
