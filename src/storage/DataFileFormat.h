#pragma once

#include <string_view>

#include "platform/Text.h"

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

// The lines of a file's text, each ended by a carriage return, or one with a line feed; a line feed alone
// stays in the line. RuntimeError 62 for a line past the end.
class LineReader {
 public:
  explicit LineReader(TextView text) : rest_(text) {}
  TextView Next();

 private:
  TextView rest_;
};

}  // namespace quillbox
