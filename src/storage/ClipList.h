#pragma once

#include "platform/forms/ListBox.h"
#include "storage/EntrySlots.h"

namespace quillbox {

// The clipboard's past, the newest first. A row of List2 and the slot of its index hold the same text; slot 0
// is the clipboard's text as the watcher knows it, and may be empty. The operations never save and check no
// limit; a row or slot that isn't there is a RuntimeError.
class ClipList {
 public:
  explicit ClipList(const Place& place) : List2(place, "List2", ListBox::Kind::ExtendedSelection, 8) {}

  ListBox List2;
  EntrySlots ClipEntries;

  void AddEntry2(SharedText Eintrag, int Stelle);
  void DeleteEntry2(int Stelle);
  // Takes the selection from all rows and makes none current; the rows stay.
  void ClearList2();
  // Removes all rows and empties all slots.
  void RemoveAll();
  // Removes row 0, if there is one, and puts the text in as the new row 0 and slot 0. The other rows stay.
  void ReplaceTop(const SharedText& text);
  // The row from 1 on whose text that is, the last of several; -1 if there is none.
  int FindBelowTop(TextView text) const;
};

}  // namespace quillbox
