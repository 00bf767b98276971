#include "storage/DataFileFormat.h"

#include "base/RuntimeError.h"
#include "core/settings/Version.h"

namespace quillbox {

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

LineWriter::LineWriter(Encoding encoding, std::size_t expected) : encoding_(encoding) {
  bytes_.reserve(expected);
  if (encoding == Encoding::Utf8) bytes_ = kUtf8Mark;
}

void LineWriter::Line(TextView text) {
  fits_ = fits_ && AppendBytes(bytes_, text, encoding_);
  bytes_ += "\r\n";
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
