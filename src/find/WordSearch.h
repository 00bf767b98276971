#pragma once

#include <initializer_list>
#include <vector>

#include "find/FoldTable.h"

namespace quillbox {

// The words that a person looks for, parted by blanks, in texts of any case and with any accents.
class WordSearch {
 public:
  explicit WordSearch(FoldTable& folds) : folds_(folds) {}

  void SetWords(TextView text);
  // There are no words: every text has them.
  bool IsEmpty() const { return words_.empty(); }
  // Whether each word is in one of the texts.
  bool IsIn(std::initializer_list<TextView> texts);

 private:
  FoldTable& folds_;
  std::vector<Text> words_;
  Folded folded_;  // the texts that are searched; from one to the next it keeps its memory
};

}  // namespace quillbox
