#include "storage/DataFileFormat.h"

#include "core/Norvane.h"

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

TextView LineReader::Next() {
  if (rest_.empty()) throw RuntimeError(errors::kPastEnd, "Input past end of file");
  const std::size_t end = rest_.find(u'\r');
  const TextView line = rest_.substr(0, end);
  if (end == TextView::npos) {
    rest_ = {};
  } else {
    const bool pair = end + 1 < rest_.size() && rest_[end + 1] == u'\n';
    rest_.remove_prefix(end + (pair ? 2 : 1));
  }
  return line;
}

}  // namespace quillbox
