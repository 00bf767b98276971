#include "platform/wayland/clipboard/PipeReader.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <utility>

namespace quillbox {

namespace {

constexpr int kPiecesAtOnce = 16;  // a long text gives way to the rest of the program after so many
constexpr std::size_t kPieceBytes = 64 * 1024;

}  // namespace

PipeReader::PipeReader(EventLoop& loop, std::size_t keep, std::function<void()> ended)
    : loop_(loop), ended_(std::move(ended)), bytes_(keep) {}

PipeReader::~PipeReader() {
  if (fd_ < 0) return;
  loop_.Unwatch(fd_);
  close(fd_);
}

bool PipeReader::Open(const std::function<void(int)>& give) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) return false;
  const auto [readEnd, writeEnd] = ends;
  // What sends the other end on makes a copy of it, and aborts if it can't.
  const int copy = fcntl(writeEnd, F_DUPFD_CLOEXEC, 0);
  if (copy < 0 || fcntl(readEnd, F_SETFL, O_NONBLOCK) != 0) {
    close(readEnd);
    close(writeEnd);
    if (copy >= 0) close(copy);
    return false;
  }
  close(copy);
  fd_ = readEnd;
  give(writeEnd);
  close(writeEnd);
  loop_.Watch(fd_, [this] { Serve(); });
  return true;
}

void PipeReader::Serve() {
  std::array<char, kPieceBytes> piece;
  for (int i = 0; i < kPiecesAtOnce; ++i) {
    const ssize_t got = read(fd_, piece.data(), piece.size());
    if (got < 0 && errno == EINTR) continue;
    if (got < 0 && errno == EAGAIN) return;
    if (got <= 0) {
      loop_.Unwatch(fd_);
      close(std::exchange(fd_, -1));
      const std::function<void()> ended = std::move(ended_);  // which may end this object
      return ended();
    }
    if (!bytes_.Append({piece.data(), static_cast<std::size_t>(got)})) truncated_ = true;
    Wipe(piece.data(), static_cast<std::size_t>(got));
  }
}

}  // namespace quillbox
