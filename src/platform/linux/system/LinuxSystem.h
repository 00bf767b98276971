#pragma once

#include <optional>
#include <string>

#include "platform/linux/system/InstanceLock.h"
#include "platform/ports/SystemInfo.h"

namespace quillbox {

// Where the program finds itself and its files.
struct SystemPlaces {
  std::string executable;       // path of the program file
  std::string dataHome;         // folder for the user's data of all programs
  std::string runtimeFolder;    // may be empty
  std::string temporaryFolder;  // for everybody
  std::string shareFallback;    // holds templates and help of a program that isn't installed; may be empty

  static SystemPlaces FromEnvironment();
};

// User, system, program and its folders. Portable is a program with a folder Templates beside it in a folder
// that can be written to: its data lie there too. Else they lie in the user's data folder, and the program's
// own files in share/quillbox beside the folder of the program.
class LinuxSystem : public SystemInfo {
 public:
  LinuxSystem() : LinuxSystem(SystemPlaces::FromEnvironment()) {}
  explicit LinuxSystem(const SystemPlaces& places);

  std::optional<Text> LogonName() override;
  VersionRecord Version() override;
  Text ProgramFolder() override { return programFolder_; }
  Text ProgramName() override { return programName_; }
  Text PathSeparator() override { return u"/"; }
  Text ProgramSuffix() override { return {}; }
  // Need not exist: PosixFiles::MakeOnDemand makes it with the first folder in it.
  Text DataFolder() override { return dataFolder_; }
  Text TemplateFolder() override { return templateFolder_; }
  Text HelpFolder() const { return helpFolder_; }
  bool AnotherInstanceRuns() override { return instance_.AnotherRuns(); }
  char16_t DecimalSeparator() override { return decimalSeparator_; }
  long InstanceHandle() override;
  long ThreadId() override;

 private:
  Text programFolder_;
  Text programName_;
  Text dataFolder_;
  Text templateFolder_;
  Text helpFolder_;
  char16_t decimalSeparator_;
  InstanceLock instance_;
  std::optional<Text> logonName_;
  std::optional<VersionRecord> version_;
};

// The distribution's name in a file like /etc/os-release; empty if it has none.
std::string PrettyName(const std::string& osRelease);

}  // namespace quillbox
