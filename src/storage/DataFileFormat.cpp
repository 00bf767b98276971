#include "storage/DataFileFormat.h"

#include <utility>

#include "base/RuntimeError.h"
#include "core/settings/Version.h"

namespace quillbox {

namespace {

// As much as stays near the processor on its way to the disk, and more than the lines between a list's
// entries have: while pieces point there it doesn't move.
constexpr std::size_t kOwnBytes = 256 * 1024;
constexpr std::size_t kLongestLine = 96 * 1024;

}  // namespace

Text MarkerLines::Between(TextView inner) const {
  Text line = marker_;
  return line.append(u" [").append(kind_).append(inner).append(u"] ").append(marker_);
}

Text MarkerLines::Header() const {
  Text inner = u" ENTRY FILE ";
  return Between(inner.append(Decimal(kMajor)).append(u".").append(Decimal(kMinor)).append(u", DO NOT EDIT"));
}

Text MarkerLines::Entry(int number) const {
  Text inner = u" ENTRY ";
  return Between(inner.append(Decimal(number)));
}

Text MarkerLines::End() const { return Between(u" ENTRY FILE END"); }

LineWriter::LineWriter(Encoding encoding, Files::Put put) : encoding_(encoding), put_(std::move(put)) {
  own_.reserve(kOwnBytes + kLongestLine);
  if (encoding == Encoding::Utf8) own_ = kUtf8Mark;
}

LineWriter::~LineWriter() { HandOn(); }

void LineWriter::Line(TextView text) {
  AppendBytes(own_, text, encoding_);
  EndLine();
}

void LineWriter::Entry(const SharedText& text) {
  if (encoding_ == Encoding::Utf8) return Line(text.Get());
  EndOwn();
  pieces_.push_back(*text.SingleBytes());
  EndLine();
}

void LineWriter::EndLine() {
  own_ += "\r\n";
  if (own_.size() >= kOwnBytes) HandOn();
}

void LineWriter::EndOwn() {
  pieces_.push_back(std::string_view(own_).substr(begun_));
  begun_ = own_.size();
}

void LineWriter::HandOn() {
  EndOwn();
  put_(pieces_);
  pieces_.clear();
  own_.clear();
  begun_ = 0;
}

LineReader::LineReader(std::string_view bytes)
    : encoding_(bytes.starts_with(kUtf8Mark) ? Encoding::Utf8 : Encoding::SingleBytes), rest_(bytes) {
  if (encoding_ == Encoding::Utf8) rest_.remove_prefix(kUtf8Mark.size());
}

std::string_view LineReader::NextBytes() {
  if (rest_.empty()) throw RuntimeError(errors::kPastEnd, "Input past end of file");
  const std::size_t end = rest_.find('\r');
  const std::string_view line = rest_.substr(0, end);
  if (end == std::string_view::npos) {
    rest_ = {};
  } else {
    const bool pair = end + 1 < rest_.size() && rest_[end + 1] == '\n';
    rest_.remove_prefix(end + (pair ? 2 : 1));
  }
  return line;
}

Text LineReader::Next() { return FromBytes(NextBytes(), encoding_); }

void LineReader::NextUntil(const std::function<bool(const Text&)>& ends, Text& text) {
  text = Next();
  for (;;) {
    const std::string_view bytes = NextBytes();
    if (bytes.size() > kLongestMarker) {
      text.append(u"\r\n").append(FromBytes(bytes, encoding_));
      continue;
    }
    const Text line = FromBytes(bytes, encoding_);
    if (ends(line)) return;
    text.append(u"\r\n").append(line);
  }
}

}  // namespace quillbox
