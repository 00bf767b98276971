#include "find/FoldTable.h"

#include <algorithm>

#include "find/UnitBlock.h"

namespace quillbox {

namespace {

constexpr bool IsHalf(char16_t unit) { return IsHighSurrogate(unit) || IsLowSurrogate(unit); }

// Folds the ASCII that a text begins with, in whole blocks; how many units that were. Nearly everything that
// is searched is ASCII.
std::size_t FoldAscii(const char16_t* from, std::size_t count, char16_t* to) {
  std::size_t done = 0;
  for (; count - done >= kUnits; done += kUnits) {
    Units units = UnitsAt(from + done);
    if (HasAny(units, 0xFF80FF80FF80FF80)) break;
    units += ((units >= short{'A'}) & (units <= short{'Z'})) & short{'a' - 'A'};
    std::memcpy(to + done, &units, sizeof units);
  }
  return done;
}

}  // namespace

FoldTable::FoldTable(TextFolding& folding) : folding_(folding) {
  unmade_.fill(kAsk);
  pages_.fill(&unmade_);
}

void FoldTable::MakePage(std::size_t number) {
  Page& page = *made_.emplace_back(std::make_unique<Page>());
  for (std::size_t i = 0; i < kPage; ++i) {
    const auto character = static_cast<char16_t>(number * kPage + i);
    const Text folded = IsHalf(character) ? Text() : folding_.Fold(character);
    page[i] = IsHalf(character) || folded.size() > 1 ? kAsk : folded.empty() ? kNone : folded[0];
  }
  pages_[number] = &page;
}

std::size_t FoldTable::Ask(TextView text, Text& to) {
  const char16_t unit = text[0];
  if (IsHighSurrogate(unit) && text.size() > 1 && IsLowSurrogate(text[1])) {
    to = folding_.Fold(JoinSurrogates(unit, text[1]));
    return 2;
  }
  to = IsHalf(unit) ? Text(1, unit) : folding_.Fold(unit);
  return 1;
}

void FoldTable::Fold(TextView text, Folded& to) {
  Text asked;
  std::size_t at = 0;
  while (at < text.size()) {
    if (to.units.size() < to.length + text.size() - at) to.units.resize(to.length + text.size() - at);
    char16_t* out = to.units.data() + to.length;
    char16_t folded = kNone;
    while (at < text.size() && folded != kAsk) {
      const std::size_t ascii = FoldAscii(text.data() + at, text.size() - at, out);
      at += ascii;
      out += ascii;
      // One by one to where a block may begin again.
      for (const std::size_t end = std::min(at + kUnits, text.size()); at < end; ++at) {
        folded = (*pages_[text[at] / kPage])[text[at] % kPage];
        if (folded == kAsk) break;
        *out = folded;
        out += folded != kNone;
      }
    }
    to.length = static_cast<std::size_t>(out - to.units.data());
    if (folded != kAsk) return;
    if (pages_[text[at] / kPage] == &unmade_) {
      MakePage(text[at] / kPage);
      continue;
    }
    at += Ask(text.substr(at), asked);
    to.units.replace(to.length, std::min(asked.size(), to.units.size() - to.length), asked);
    to.length += asked.size();
  }
}

}  // namespace quillbox
