#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/CodePage.h"
#include "base/SharedText.h"
#include "base/Text.h"
#include "platform/ports/Files.h"

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

// A file that is being written line by line. It is handed on in pieces, among them the entries' own bytes, so
// that a long list isn't copied on its way to the disk.
class LineWriter {
 public:
  LineWriter(Encoding encoding, Files::Put put);
  ~LineWriter();
  LineWriter(const LineWriter&) = delete;
  LineWriter& operator=(const LineWriter&) = delete;

  // With single bytes the texts have no character that isn't in Windows-1252.
  void Line(TextView text);
  // Somebody holds the text until the writer has gone.
  void Entry(const SharedText& text);

 private:
  void EndLine();
  void EndOwn();
  void HandOn();

  Encoding encoding_;
  Files::Put put_;
  std::vector<std::string_view> pieces_;
  std::string own_;        // whatever isn't an entry's bytes
  std::size_t begun_ = 0;  // where in it the next piece begins
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
