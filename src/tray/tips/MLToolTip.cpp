#include "tray/tips/MLToolTip.h"

#include <algorithm>

namespace quillbox {

namespace {

constexpr int kCenter = 1;
constexpr int kRight = 2;
constexpr std::size_t kMarkLength = 3;
constexpr std::size_t kTabColumns = 8;

bool IsBlank(char16_t unit) { return unit == u' ' || unit == u'\t'; }
bool IsBreak(char16_t unit) { return unit == u'\r' || unit == u'\n'; }

// A hard line of the tip, its ampersands resolved.
struct Paragraph {
  Text text;
  std::vector<bool> underlined;  // for each unit
};

// The alignment that a mark asks for, which is taken away from `text`.
int TakeMark(TextView& text) {
  int alignment = 0;
  const TextView mark = text.substr(0, kMarkLength);
  if (mark == u"<c>" || mark == u"<C>") alignment = kCenter;
  if (mark == u"<r>" || mark == u"<R>") alignment = kRight;
  if (alignment != 0) text.remove_prefix(kMarkLength);
  return alignment;
}

Paragraph Resolve(TextView line) {
  Paragraph result;
  bool underline = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == u'&' && !underline && !(i + 1 < line.size() && line[i + 1] == u'&')) {
      underline = true;
      continue;
    }
    if (line[i] == u'&' && !underline) ++i;
    result.text += line[i];
    result.underlined.push_back(underline);
    underline = false;
  }
  return result;
}

// The hard lines. A line break at the very end begins no line.
std::vector<Paragraph> Split(TextView text) {
  std::vector<Paragraph> result;
  while (!text.empty()) {
    const auto end = static_cast<std::size_t>(std::find_if(text.begin(), text.end(), IsBreak) - text.begin());
    result.push_back(Resolve(text.substr(0, end)));
    const bool pair = text.substr(end, 2) == u"\r\n";
    text.remove_prefix(std::min(text.size(), end + (pair ? 2 : 1)));
  }
  return result;
}

// Breaks a hard line into lines of a width.
class Wrapper {
 public:
  Wrapper(const Paragraph& of, int maxWidth, TipSurface& surface, std::vector<TipLine>& lines)
      : of_(of), maxWidth_(maxWidth), surface_(surface), lines_(lines) {}

  void Run() {
    std::size_t at = 0;
    while (at < of_.text.size()) {
      const std::size_t word = EndOf(at, true);
      const std::size_t end = EndOf(word, false);
      TipLine longer = line_;
      Append(longer, at, end);
      if (Fits(longer)) {
        line_ = std::move(longer);
      } else {
        BreakBefore(at, word, end);
      }
      at = end;
    }
    lines_.push_back(std::move(line_));
  }

 private:
  // Where the blanks, or the characters of the word, that begin at `from` end.
  std::size_t EndOf(std::size_t from, bool blanks) const {
    while (from < of_.text.size() && IsBlank(of_.text[from]) == blanks) ++from;
    return from;
  }

  bool Fits(const TipLine& line) const { return surface_.TextWidth(line.text) <= maxWidth_; }

  // Adds units of the hard line, tabs as blanks up to the next column of tabs.
  void Append(TipLine& line, std::size_t from, std::size_t to) const {
    for (std::size_t i = from; i < to; ++i) {
      if (of_.underlined[i]) line.underlined.push_back(line.text.size());
      if (of_.text[i] == u'\t') {
        line.text.append(kTabColumns - line.text.size() % kTabColumns, u' ');
      } else {
        line.text += of_.text[i];
      }
    }
  }

  // The blanks before the word end the line with it; those that begin a hard line, or end it, stay as far as
  // they fit.
  void BreakBefore(std::size_t blanks, std::size_t word, std::size_t end) {
    if (blanks == 0 || word == end) AddCharacters(blanks, word, false);
    if (word == end) return;
    if (!line_.text.empty()) NextLine();
    AddCharacters(word, end, true);
  }

  // Character by character, in as many lines as it takes; without `wrap` what doesn't fit is dropped.
  void AddCharacters(std::size_t from, std::size_t to, bool wrap) {
    while (from < to) {
      const bool pair =
          from + 1 < to && IsHighSurrogate(of_.text[from]) && IsLowSurrogate(of_.text[from + 1]);
      const std::size_t next = from + (pair ? 2 : 1);
      TipLine longer = line_;
      Append(longer, from, next);
      if (!Fits(longer) && !line_.text.empty()) {
        if (!wrap) return;
        NextLine();
        continue;
      }
      line_ = std::move(longer);
      from = next;
    }
  }

  void NextLine() {
    lines_.push_back(std::move(line_));
    line_ = TipLine();
  }

  const Paragraph& of_;
  int maxWidth_;
  TipSurface& surface_;
  std::vector<TipLine>& lines_;
  TipLine line_;
};

}  // namespace

void MLToolTip::MLToolTipInstall() {
  if (installed_) return;
  installed_ = true;
  MLToolTipMaxWidth = kNoLimit;
}

TipLayout MLToolTip::Layout(const Text& tip, int mouseX, int screenWidth, TipSurface& surface) const {
  TipLayout layout;
  TextView text = tip;
  layout.alignment = TakeMark(text);
  for (const Paragraph& paragraph : Split(text))
    Wrapper(paragraph, MLToolTipMaxWidth, surface, layout.lines).Run();
  int textWidth = 0;
  for (const TipLine& line : layout.lines) textWidth = std::max(textWidth, surface.TextWidth(line.text));
  const PixelSize border = surface.Border();
  layout.width = (border.width + 1) * 2 + textWidth;
  layout.height = (border.height + 1) * 2 + static_cast<int>(layout.lines.size()) * surface.LineHeight();
  const int rightmost = screenWidth - layout.width;
  layout.left = std::max(0, std::min(mouseX - layout.width / 2, rightmost));
  return layout;
}

}  // namespace quillbox
