#include "find/WordSearch.h"

#include <algorithm>

#include "find/UnitBlock.h"

namespace quillbox {

namespace {

bool IsBlank(char16_t unit) { return unit <= u' '; }

// Whether the text has the word, which isn't empty. Blocks with no place at which both its first and its last
// unit would stand are passed over.
bool Contains(TextView text, TextView word) {
  if (text.size() < word.size()) return false;
  const std::size_t places = text.size() - word.size() + 1;
  const auto isAt = [&](std::size_t at) { return SameText(text.substr(at, word.size()), word); };
  std::size_t at = 0;
  const auto first = static_cast<short>(word.front());
  const auto last = static_cast<short>(word.back());
  for (; at + kUnits <= places; at += kUnits) {
    const char16_t* const place = text.data() + at;
    const Units both = (UnitsAt(place) == first) & (UnitsAt(place + word.size() - 1) == last);
    if (!HasAny(both, ~std::uint64_t{0})) continue;
    for (std::size_t i = 0; i < kUnits; ++i) {
      if (both[i] != 0 && isAt(at + i)) return true;
    }
  }
  while (at < places && !isAt(at)) ++at;
  return at < places;
}

}  // namespace

void WordSearch::SetWords(TextView text) {
  words_.clear();
  folded_ = {};
  Folded whole;
  folds_.Fold(text, whole);
  const TextView folded = whole.Get();
  for (auto from = folded.begin();;) {
    from = std::find_if_not(from, folded.end(), IsBlank);
    if (from == folded.end()) return;
    const auto to = std::find_if(from, folded.end(), IsBlank);
    words_.emplace_back(from, to);
    from = to;
  }
}

bool WordSearch::IsIn(std::initializer_list<TextView> texts) {
  folded_.length = 0;
  for (const TextView text : texts) {
    folds_.Fold(text, folded_);
    // No word goes over from one text to the next.
    folds_.Fold(u"\n", folded_);
  }
  return std::all_of(words_.begin(), words_.end(),
                     [this](const Text& word) { return Contains(folded_.Get(), word); });
}

}  // namespace quillbox
