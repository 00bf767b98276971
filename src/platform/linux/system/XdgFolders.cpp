#include "platform/linux/system/XdgFolders.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace quillbox::xdg {
namespace {

std::string Variable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr && value[0] == '/' ? value : "";
}

std::string Home() {
  if (std::string home = Variable("HOME"); !home.empty()) return home;
  const passwd* user = ::getpwuid(::getuid());
  return user != nullptr && user->pw_dir != nullptr ? user->pw_dir : "/";
}

std::string VariableOr(const char* name, const std::string& belowHome) {
  std::string value = Variable(name);
  return value.empty() ? Home() + belowHome : value;
}

}  // namespace

std::string ConfigHome() { return VariableOr("XDG_CONFIG_HOME", "/.config"); }
std::string DataHome() { return VariableOr("XDG_DATA_HOME", "/.local/share"); }
std::string RuntimeFolder() { return Variable("XDG_RUNTIME_DIR"); }

std::vector<std::string> ConfigDirs() {
  const char* value = std::getenv("XDG_CONFIG_DIRS");
  std::string_view list = value != nullptr && value[0] != '\0' ? value : "/etc/xdg";
  std::vector<std::string> folders;
  while (!list.empty()) {
    const std::string_view folder = list.substr(0, list.find(':'));
    if (folder.starts_with('/')) folders.emplace_back(folder);
    list.remove_prefix(std::min(list.size(), folder.size() + 1));
  }
  return folders;
}

}  // namespace quillbox::xdg
