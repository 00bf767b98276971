#include "storage/PadList.h"

#include "storage/ListRows.h"

namespace quillbox {

void PadList::AddEntry1(Text& EintragName, SharedText Eintrag, int Stelle) {
  if (EintragName.empty()) EintragName = kNoName;
  List1.AddItem(EintragName, Stelle);
  PadEntries.Insert(Stelle, std::move(Eintrag), List1.GetListCount() - 1);
}

void PadList::DeleteEntry1(int Stelle) {
  List1.RemoveItem(Stelle);
  PadEntries.Remove(Stelle, List1.GetListCount() - 1);
}

void PadList::ClearList1() { ClearSelection(List1); }

void PadList::RemoveAll() {
  List1.Clear();
  PadEntries.EmptyAll();
}

bool PadList::IsScript(TextView text) {
  return AsciiUpper(text.substr(0, kScriptMark.size())) == kScriptMark;
}

int PadList::FindText(TextView text) const {
  return LastRow(List1, 0, [&](int row) { return PadEntries(row).Is(text); });
}

}  // namespace quillbox
