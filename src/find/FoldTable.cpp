#include "find/FoldTable.h"

#include <cstring>

#include "base/AsciiRun.h"

namespace quillbox {

namespace {

// Folds the ASCII that a text begins with, in whole blocks; how many units that were. Nearly everything that
// is searched is ASCII.
std::size_t FoldAscii(const char16_t* from, std::size_t count, char16_t* to) {
  std::size_t done = 0;
  for (; count - done >= kAsciiBlock; done += kAsciiBlock) {
    UnitBlock units;
    std::memcpy(&units, from + done, sizeof units);
    std::uint64_t words[sizeof units / sizeof(std::uint64_t)];
    std::memcpy(words, from + done, sizeof words);
    if (((words[0] | words[1] | words[2] | words[3]) & 0xFF80FF80FF80FF80) != 0) break;
    const auto capitals = (units >= u'A') & (units <= u'Z');
    units += reinterpret_cast<UnitBlock>(capitals) & static_cast<char16_t>(u'a' - u'A');
    std::memcpy(to + done, &units, sizeof units);
  }
  return done;
}

}  // namespace

const FoldTable::Page& FoldTable::PageOf(char16_t unit) {
  std::unique_ptr<Page>& page = pages_[unit / kPage];
  if (!page) {
    page = std::make_unique<Page>();
    for (std::size_t i = 0; i < kPage; ++i) {
      const auto character = static_cast<char16_t>((unit & ~(kPage - 1)) + i);
      const bool half = IsHighSurrogate(character) || IsLowSurrogate(character);
      const Text folded = half ? Text() : folding_.Fold(character);
      (*page)[i] = half || folded.size() > 1 ? kAsk : folded.empty() ? kNone : folded[0];
    }
  }
  return *page;
}

std::size_t FoldTable::Ask(TextView text, std::size_t at, Text& to) {
  const char16_t unit = text[at];
  if (!IsHighSurrogate(unit) || at + 1 == text.size() || !IsLowSurrogate(text[at + 1])) {
    to += IsHighSurrogate(unit) || IsLowSurrogate(unit) ? Text(1, unit) : folding_.Fold(unit);
    return 1;
  }
  to += folding_.Fold(0x10000 + ((static_cast<char32_t>(unit) & 0x3FF) << 10) + (text[at + 1] & 0x3FF));
  return 2;
}

void FoldTable::Fold(TextView text, Text& to) {
  std::size_t at = 0;
  while (at < text.size()) {
    const std::size_t begin = to.size();
    to.resize(begin + text.size() - at);
    char16_t* out = to.data() + begin;
    char16_t folded = kNone;
    while (at < text.size() && folded != kAsk) {
      if (const std::size_t ascii = FoldAscii(text.data() + at, text.size() - at, out); ascii > 0) {
        at += ascii;
        out += ascii;
        continue;
      }
      // One by one to where a block may begin again.
      for (std::size_t i = 0; i < kAsciiBlock && at < text.size(); ++i) {
        folded = PageOf(text[at])[text[at] % kPage];
        if (folded == kAsk) break;
        *out = folded;
        out += folded != kNone;
        ++at;
      }
    }
    to.resize(static_cast<std::size_t>(out - to.data()));
    if (folded == kAsk) at += Ask(text, at, to);
  }
}

}  // namespace quillbox
