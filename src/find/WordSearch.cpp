#include "find/WordSearch.h"

#include <algorithm>

namespace quillbox {

namespace {

bool IsBlank(char16_t unit) { return unit <= u' '; }

}  // namespace

void WordSearch::SetWords(TextView text) {
  words_.clear();
  folded_ = {};
  Text folded;
  folds_.Fold(text, folded);
  for (auto from = folded.begin();;) {
    from = std::find_if_not(from, folded.end(), IsBlank);
    if (from == folded.end()) return;
    const auto to = std::find_if(from, folded.end(), IsBlank);
    words_.emplace_back(from, to);
    from = to;
  }
}

bool WordSearch::IsIn(std::initializer_list<TextView> texts) {
  folded_.clear();
  for (const TextView text : texts) {
    folds_.Fold(text, folded_);
    // No word goes over from one text to the next.
    folded_ += u'\n';
  }
  const TextView all = folded_;
  return std::all_of(words_.begin(), words_.end(),
                     [all](const Text& word) { return all.find(word) != TextView::npos; });
}

}  // namespace quillbox
