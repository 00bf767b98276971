#pragma once

#include "find/WordSearch.h"
#include "platform/forms/Label.h"
#include "platform/forms/ListBox.h"
#include "platform/forms/TextBox.h"

namespace quillbox {

// Find above a list: a field that takes no room until a person opens it, by Ctrl+F or by typing in the list.
// While it holds words the list shows only the rows that have all of them (ListBox says what a hidden row
// is), and with each change of the words the uppermost of these is taken, so that Enter uses what is seen to
// be chosen. What the program does with entries by their texts or their age, a repeat that moves or the
// oldest that makes room, knows nothing of it; but what a person would do to the list as a whole, deleting
// all, or moving rows past others, isn't done while it is filtered.
class ListFind {
 public:
  // Whether a row has the words.
  using Search = std::function<bool(WordSearch& words, int row)>;
  ListFind(const Place& place, std::string_view name, std::string_view labelName, ListBox& list,
           FoldTable& folds, Search search);

  TextBox field;  // the words
  Label shown;    // how many rows they leave: "3 of 100"

  // Opens the field, or empties the open one, and gives it the focus.
  void Open();
  // Empties and closes it; the list gets the focus that it had.
  void Close();
  void PersonClose();
  // Whether that key, alone, is none of the field's: it moves or uses the current row, or closes find.
  static bool IsListKey(int code);

  // Whether a row may be taken by itself while words are typed; always, without a handler.
  Event<bool&> MayTake;
  // All rows are shown again, or not all any more.
  Event<> FilteredChanged;

 private:
  static constexpr std::size_t kMostWords = 256;  // units

  void Field_Change();
  void Field_KeyDown(KeyEvent& key);
  void List_KeyPress(char16_t& character);
  void Type(char16_t character);
  void FollowRows();
  void ShowCount();

  ListBox& list_;
  Search search_;
  WordSearch words_;
  Text before_;  // the words as they were before the change
  bool follows_ = false;
};

}  // namespace quillbox
