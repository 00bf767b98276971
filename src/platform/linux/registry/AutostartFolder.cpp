#include "platform/linux/registry/AutostartFolder.h"

#include <algorithm>

#include "base/Utf8.h"
#include "platform/linux/files/AtomicFile.h"
#include "platform/linux/registry/DesktopEntry.h"
#include "platform/linux/registry/RegDocument.h"
#include "platform/linux/registry/RegStore.h"

namespace quillbox {
namespace {

constexpr std::size_t kMaxFileSize = std::size_t{1} << 20;
constexpr std::size_t kMaxFileName = 255;

// Empty for a name that is none for a file.
std::string FileName(TextView name) {
  if (name.empty() || name.front() == u'.') return {};
  const bool valid = std::none_of(name.begin(), name.end(), [](char16_t c) { return c < 0x20 || c == u'/'; });
  const std::string file = ToUtf8(FoldCase(name)) + ".desktop";
  return valid && file.size() <= kMaxFileName ? file : std::string();
}

}  // namespace

AutostartFolder::AutostartFolder(std::shared_ptr<SystemCalls> calls, std::string folder,
                                 std::vector<std::string> systemFolders)
    : calls_(std::move(calls)), folder_(std::move(folder)), systemFolders_(std::move(systemFolders)) {}

std::optional<std::string> AutostartFolder::Read(const std::string& path) const {
  std::string entry;
  if (ReadWholeFile(*calls_, path, kMaxFileSize, entry) != 0) return std::nullopt;
  return entry;
}

std::optional<AutostartFolder::Found> AutostartFolder::Find(const std::string& file) const {
  if (file.empty()) return std::nullopt;
  if (std::optional<std::string> entry = Read(folder_ + "/" + file)) return Found{*std::move(entry), true};
  for (std::string path : systemFolders_) {
    path.append("/").append(file);
    if (std::optional<std::string> entry = Read(path)) return Found{*std::move(entry), false};
  }
  return std::nullopt;
}

bool AutostartFolder::Write(const std::string& file, const std::string& entry, DiskSync& sync) const {
  std::string path = folder_ + "/" + file;
  if (MakeFolder(folder_, true) != 0 || ReplaceFile(*calls_, path, entry) != 0) return false;
  sync.Request(path);
  return true;
}

std::optional<Text> AutostartFolder::Program(TextView name) {
  const std::optional<Found> found = Find(FileName(name));
  if (!found || desktopentry::IsHidden(found->entry)) return std::nullopt;
  const std::optional<std::string> program = desktopentry::ProgramOf(found->entry);
  if (!program) return std::nullopt;
  return FromUtf8(*program);
}

bool AutostartFolder::Set(TextView name, TextView program, DiskSync& sync) {
  const std::string file = FileName(name);
  if (file.empty() || program.empty() || program.find(u'\0') != TextView::npos) return false;
  const std::string entry = desktopentry::Autostart(ToUtf8(program));
  if (Read(folder_ + "/" + file) == entry) return true;
  return Write(file, entry, sync);
}

bool AutostartFolder::Delete(TextView name, DiskSync& sync) {
  const std::string file = FileName(name);
  const std::optional<Found> found = Find(file);
  if (!found || desktopentry::IsHidden(found->entry)) return false;
  const bool inSystem =
      std::any_of(systemFolders_.begin(), systemFolders_.end(),
                  [&](const std::string& folder) { return Read(folder + "/" + file).has_value(); });
  if (inSystem) return Write(file, desktopentry::Hidden(), sync);
  return calls_->Remove((folder_ + "/" + file).c_str()) == 0;
}

bool AutostartFolder::Writable() const { return CanWriteFile(folder_ + "/quillbox.desktop"); }

}  // namespace quillbox
