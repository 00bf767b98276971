#include "storage/ClipList.h"

#include "storage/ListRows.h"

namespace quillbox {

void ClipList::AddEntry2(SharedText Eintrag, int Stelle) {
  List2.AddItem(Eintrag, Stelle);
  ClipEntries.Insert(Stelle, std::move(Eintrag), List2.GetListCount() - 1);
}

void ClipList::DeleteEntry2(int Stelle) {
  List2.RemoveItem(Stelle);
  ClipEntries.Remove(Stelle, List2.GetListCount() - 1);
}

void ClipList::ClearList2() { ClearSelection(List2); }

void ClipList::RemoveAll() {
  List2.Clear();
  ClipEntries.EmptyAll();
}

void ClipList::ReplaceTop(const SharedText& text) {
  if (List2.GetListCount() > 0) List2.RemoveItem(0);
  List2.AddItem(text, 0);
  ClipEntries.Set(0, text);
}

int ClipList::FindBelowTop(TextView text) const {
  return LastRow(List2, 1, [&](int row) { return ClipEntries(row).Is(text); });
}

}  // namespace quillbox
