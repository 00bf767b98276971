#include "platform/wayland/clipboard/TextWriters.h"

#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/ports/TextTypes.h"

namespace quillbox {

namespace {

// A pipe takes a piece of this size (PIPE_BUF) whole or not at all.
constexpr std::size_t kPieceBytes = 4096;
constexpr int kPiecesAtOnce = 64;  // one reader gives way to the rest of the program after so many
constexpr std::size_t kLarge = 512 * 1024;

}  // namespace

TextWriters::~TextWriters() {
  while (!writers_.empty()) End(writers_.begin());
}

void TextWriters::Write(int fd, std::shared_ptr<const std::string> bytes) {
  const int flags = fcntl(fd, F_GETFL);
  if (flags < 0 || fcntl(fd, F_SETFL, flags | O_NONBLOCK) != 0) {
    close(fd);
    return;
  }
  const auto writer = writers_.insert(writers_.end(), {fd, std::move(bytes), 0, Clock::now()});
  loop_.WatchWritable(fd, [this, fd] { Serve(fd); });
  if (!stuckTimer_) stuckTimer_ = loop_.StartTimer(kStuckReaderMs, [this] { DropStuck(); });
  if (!WriteSome(*writer)) End(writer);
}

void TextWriters::AddTo(std::vector<pollfd>& descriptors) const {
  for (const Writer& each : writers_) descriptors.push_back({each.fd, POLLOUT, 0});
}

void TextWriters::Serve(int fd) {
  const auto writer =
      std::find_if(writers_.begin(), writers_.end(), [fd](const Writer& each) { return each.fd == fd; });
  if (writer != writers_.end() && !WriteSome(*writer)) End(writer);
}

bool TextWriters::WriteSome(Writer& writer) {
  const std::string& bytes = *writer.bytes;
  for (int i = 0; i < kPiecesAtOnce && writer.offset < bytes.size(); ++i) {
    std::size_t end = std::min(bytes.size(), writer.offset + kPieceBytes);
    for (int back = 0; back < 3 && end < bytes.size() && (bytes[end] & 0xC0) == 0x80; ++back) --end;
    const ssize_t written = write(writer.fd, bytes.data() + writer.offset, end - writer.offset);
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return errno == EAGAIN;
    writer.offset += static_cast<std::size_t>(written);
    writer.moved = Clock::now();
  }
  return writer.offset < bytes.size();
}

void TextWriters::End(std::list<Writer>::iterator writer) {
  loop_.UnwatchWritable(writer->fd);
  close(writer->fd);
  const bool large = writer->bytes->size() > kLarge && writer->bytes.use_count() == 1;
  writers_.erase(writer);
  if (large) malloc_trim(0);
  if (!writers_.empty() || !stuckTimer_) return;
  loop_.CancelTimer(stuckTimer_);
  stuckTimer_ = 0;
}

void TextWriters::DropStuck() {
  stuckTimer_ = 0;
  const Clock::time_point now = Clock::now();
  const auto stuck = std::chrono::milliseconds(kStuckReaderMs);
  Clock::time_point oldest = now;
  for (auto each = writers_.begin(); each != writers_.end();) {
    const auto writer = each++;
    if (now - writer->moved >= stuck)
      End(writer);
    else
      oldest = std::min(oldest, writer->moved);
  }
  if (writers_.empty()) return;
  const auto rest = std::chrono::ceil<std::chrono::milliseconds>(oldest + stuck - now);
  stuckTimer_ = loop_.StartTimer(static_cast<int>(rest.count()), [this] { DropStuck(); });
}

}  // namespace quillbox
