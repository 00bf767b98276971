#include "platform/linux/system/LinuxSystem.h"

#include <langinfo.h>
#include <pwd.h>
#include <sys/stat.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <charconv>
#include <climits>
#include <cstring>
#include <string_view>

#include "base/Utf8.h"
#include "platform/linux/files/AtomicFile.h"
#include "platform/linux/system/UserLocale.h"
#include "platform/linux/system/XdgFolders.h"

#ifndef QUILLBOX_SHARE_DIR
#define QUILLBOX_SHARE_DIR ""
#endif

namespace quillbox {
namespace {

constexpr std::size_t kMaxOsRelease = 65536;
constexpr long kUnixLikePlatform = 2;  // the family that shows tips of several lines

bool IsFolder(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::string Executable() {
  char target[PATH_MAX];
  const ssize_t length = ::readlink("/proc/self/exe", target, sizeof target);
  std::string path(target, length > 0 ? static_cast<std::size_t>(length) : 0);
  // An update has replaced the program file since it was started: the new one has its path.
  constexpr std::string_view kDeleted = " (deleted)";
  if (path.ends_with(kDeleted) && ::access(path.c_str(), F_OK) != 0)
    path.resize(path.size() - kDeleted.size());
  return path;
}

std::string ReadSmallFile(const char* path) {
  SystemCalls calls;
  std::string content;
  return ReadWholeFile(calls, path, kMaxOsRelease, content) == 0 ? content : std::string();
}

// The first of the folders that is there, else the first.
Text FirstFolder(const std::string& first, const std::string& second, const std::string& third) {
  for (const std::string& folder : {first, second, third}) {
    if (IsFolder(folder)) return FromUtf8(folder);
  }
  return FromUtf8(first);
}

char16_t UserDecimalSeparator() {
  const UserLocale locale(LC_NUMERIC_MASK | LC_CTYPE_MASK);
  const Text text = FromUtf8(::nl_langinfo_l(RADIXCHAR, locale.Get()));
  return text.size() == 1 && text[0] != 0xFFFD ? text[0] : u'.';
}

VersionRecord ReadVersion() {
  VersionRecord record;
  record.platformId = kUnixLikePlatform;
  utsname system{};
  if (::uname(&system) == 0) {
    const char* at = system.release;
    const char* end = at + std::strlen(at);
    for (long* number : {&record.major, &record.minor, &record.build}) {
      const auto [stop, failure] = std::from_chars(at, end, *number);
      if (failure != std::errc() || stop == end || *stop != '.') break;
      at = stop + 1;
    }
  }
  std::string name = PrettyName(ReadSmallFile("/etc/os-release"));
  if (name.empty()) name = PrettyName(ReadSmallFile("/usr/lib/os-release"));
  record.servicePack = FromUtf8(name);
  return record;
}

}  // namespace

SystemPlaces SystemPlaces::FromEnvironment() {
  return {Executable(), xdg::DataHome(), xdg::RuntimeFolder(), "/tmp", QUILLBOX_SHARE_DIR};
}

LinuxSystem::LinuxSystem(const SystemPlaces& places)
    : decimalSeparator_(UserDecimalSeparator()), instance_(places.runtimeFolder, places.temporaryFolder) {
  const std::string folder = FolderOf(places.executable);
  programFolder_ = FromUtf8(folder);
  programName_ = FromUtf8(places.executable.substr(places.executable.rfind('/') + 1));

  const std::string ownTemplates = folder + "/Templates";
  const bool portable = IsFolder(ownTemplates) && ::access(folder.c_str(), W_OK | X_OK) == 0;
  dataFolder_ = portable ? programFolder_ : FromUtf8(places.dataHome + "/quillbox");

  const std::string share = (folder == "/" ? "" : FolderOf(folder)) + "/share/quillbox";
  const std::string fallback = places.shareFallback.empty() ? share : places.shareFallback;
  templateFolder_ = portable ? FromUtf8(ownTemplates)
                             : FirstFolder(share + "/templates", fallback + "/templates", ownTemplates);
  helpFolder_ = portable ? FirstFolder(folder + "/Help", share + "/help", fallback + "/help")
                         : FirstFolder(share + "/help", fallback + "/help", folder + "/Help");
}

std::optional<Text> LinuxSystem::LogonName() {
  if (!logonName_) {
    const passwd* user = ::getpwuid(::getuid());
    if (user != nullptr && user->pw_name != nullptr && user->pw_name[0] != '\0') {
      logonName_ = FromUtf8(user->pw_name);
    }
  }
  return logonName_;
}

VersionRecord LinuxSystem::Version() {
  if (!version_) version_ = ReadVersion();
  return *version_;
}

long LinuxSystem::InstanceHandle() { return ::getpid(); }
long LinuxSystem::ThreadId() { return ::gettid(); }

std::string PrettyName(const std::string& osRelease) {
  constexpr std::string_view kKey = "PRETTY_NAME=";
  std::size_t at = 0;
  while (osRelease.compare(at, kKey.size(), kKey) != 0) {
    at = osRelease.find('\n', at);
    if (at == std::string::npos) return {};
    ++at;
  }
  std::string_view value(osRelease);
  value.remove_prefix(at + kKey.size());
  value = value.substr(0, value.find('\n'));
  const bool quoted = !value.empty() && (value[0] == '"' || value[0] == '\'');
  const char end = quoted ? value[0] : '\n';
  std::string name;
  for (std::size_t i = quoted ? 1 : 0; i < value.size() && value[i] != end; ++i) {
    if (value[i] == '\\' && end != '\'' && i + 1 < value.size()) ++i;
    name += value[i];
  }
  return name;
}

}  // namespace quillbox
