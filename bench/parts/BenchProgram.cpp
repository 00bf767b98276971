#include "parts/BenchProgram.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <stdexcept>
#include <thread>

namespace quillbox::bench {

namespace {

RegistryPlaces Below(const std::string& folder) {
  return {folder + "/config", {folder + "/system"}, folder + "/config/autostart", {}};
}

}  // namespace

int WatchedCalls::Sync(int fd) {
  if (syncSeconds > 0) std::this_thread::sleep_for(std::chrono::seconds(syncSeconds));
  return SystemCalls::Sync(fd);
}

BenchProgram::BenchProgram(int clipEntriesMax)
    : registry(Below(world.scratch.Path()), calls),
      platform{world.clipboard, registry,      world.trayIcon, world.windows, world.messageBoxes,
               world.keySender, world.sound,   world.system,   clock,         files,
               world.tips,      world.folding, world.globalKey} {
  Norvane settings(registry, world.system);
  settings.PrepareRegistry();
  settings.Write(setting::kStartHelp, false);
  settings.Write(setting::kClipEntriesMax, clipEntriesMax);
  settings.Write(setting::kQuillboxVMajor, 99);  // no more writes at the start
  dispatcher.Dispatch([this] { program.form.Load(); });
  if (!program.Running()) throw std::runtime_error("the program didn't start");
  // The registry's files are read afresh while they are young.
  std::this_thread::sleep_for(std::chrono::milliseconds(60));
}

Text BenchProgram::NewText(std::size_t length) {
  Text text = Decimal(++texts_);
  text.append(u" ");
  text.resize(length, u'x');
  return text;
}

void BenchProgram::Fill(int rows, std::size_t length) {
  for (int row = 0; row < rows; ++row) {
    Copy(NewText(length));
    Tick();
  }
  if (program.clip.List2.GetListCount() != rows) throw std::runtime_error("the list isn't filled");
}

void BenchProgram::AwaitDisk() {
  for (const char* name : {"ClipData.qbx", "PadData.qbx", "ToDoData.qbx"})
    if (::access(File(name).c_str(), F_OK) == 0) BareSync(File(name));
}

void BareSync(const std::string& path) {
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  ::fsync(fd);
  ::close(fd);
}

void BareWrite(const std::string& path, const std::string& content) {
  const std::string beside = path + ".new";
  const int fd = ::open(beside.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  if (fd < 0 || ::write(fd, content.data(), content.size()) != static_cast<ssize_t>(content.size()) ||
      ::close(fd) != 0 || ::rename(beside.c_str(), path.c_str()) != 0) {
    throw std::runtime_error("bare write failed");
  }
}

std::string BareRead(const std::string& path) {
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  struct stat status {};
  if (fd < 0 || ::fstat(fd, &status) != 0) throw std::runtime_error("bare read failed");
  std::string content(static_cast<std::size_t>(status.st_size), '\0');
  if (::read(fd, content.data(), content.size()) != status.st_size)
    throw std::runtime_error("bare read failed");
  ::close(fd);
  return content;
}

}  // namespace quillbox::bench
