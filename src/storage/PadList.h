#pragma once

#include "platform/forms/ListBox.h"
#include "storage/EntrySlots.h"

namespace quillbox {

// The named texts that stay. A row of List1 shows an entry's name, the slot of its index holds its text. The
// operations never save and check no limit; failures are RuntimeErrors of the caller.
class PadList {
 public:
  explicit PadList(const Place& place) : List1(place, "List1", ListBox::Kind::ExtendedSelection, 8) {}

  ListBox List1;
  EntrySlots PadEntries;

  static constexpr char16_t kNoName[] = u"[No Name]";
  // An entry whose text begins with this, in capitals or small letters, is a script.
  static constexpr TextView kScriptMark = u"{SCRIPT}";
  static bool IsScript(TextView text);
  // The same of the text in a slot, of which no more is read than the mark.
  bool IsScript(int slot) const { return IsScript(PadEntries(slot).Get(kScriptMark.size())); }

  // An empty name becomes "[No Name]", in the caller's variable too.
  void AddEntry1(Text& EintragName, SharedText Eintrag, int Stelle);
  void DeleteEntry1(int Stelle);
  // Takes the selection from all rows and makes none current; the rows stay.
  void ClearList1();
  // Removes all rows and empties all slots.
  void RemoveAll();
  // The row whose text that is, the last of several; -1 if there is none.
  int FindText(TextView text) const;
};

}  // namespace quillbox
