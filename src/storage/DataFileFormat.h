#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "base/CodePage.h"
#include "base/Text.h"

namespace quillbox {

// The marker that begins and ends a marker line of the files that the program writes.
inline constexpr char16_t kMarker[] = u"½½½½½";

// The marker lines of one of the three files; `kind` is "PAD", "CLIP" or "TODO". No line ends.
class MarkerLines {
 public:
  MarkerLines(TextView kind, TextView marker = kMarker) : kind_(kind), marker_(marker) {}
  Text Header() const;
  Text Entry(int number) const;
  Text End() const;

 private:
  Text Between(TextView inner) const;
  Text kind_;
  Text marker_;
};

// A file that is being put together, line by line.
class LineWriter {
 public:
  // `expected`: bytes that it will about need.
  LineWriter(Encoding encoding, std::size_t expected);
  void Line(TextView text);
  // False once a text had a character that the encoding lacks.
  bool Fits() const { return fits_; }
  const std::string& Bytes() const { return bytes_; }

 private:
  Encoding encoding_;
  std::string bytes_;
  bool fits_ = true;
};

// A file's lines, each ended by a carriage return, or one with a line feed; a line feed alone stays in the
// line. RuntimeError 62 for a line past the end.
class LineReader {
 public:
  // `bytes` outlives the reader.
  explicit LineReader(std::string_view bytes);
  Text Next();
  // The lines up to the one that `ends`, as one text with its line ends as carriage return and line feed.
  // Past the end, `text` has what there was. Only lines of at most kLongestMarker bytes are asked about.
  void NextUntil(const std::function<bool(const Text&)>& ends, Text& text);

  static constexpr std::size_t kLongestMarker = 200;

 private:
  std::string_view NextBytes();

  Encoding encoding_;
  std::string_view rest_;
};

}  // namespace quillbox
