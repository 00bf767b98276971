#include "pad/PadUse.h"

#include <cassert>

#include "storage/ListRows.h"

namespace quillbox {

PadUse::PadUse(MainWindow& window, PadList& pad, DataFiles& files, Norvane& settings, Clipboard& clipboard,
               KeySender& keySender, const Fields& fields)
    : window_(window),
      pad_(pad),
      files_(files),
      settings_(settings),
      clipboard_(clipboard),
      scripts_(window, keySender),
      fields_(fields) {}

void PadUse::UseShown() {
  const SharedText text(fields_.text.GetText());
  if (text.IsEmpty()) return;
  if (PadList::IsScript(fields_.text.GetText())) return ExecuteShown();
  {
    const PollPause pause(window_.poll);
    CopyText(text);
  }
  if (MovesUsedEntries()) MoveShownToTop();
  fields_.status.Show(u"Inserted");
}

void PadUse::ExecuteShown() {
  if (scripts_.Running()) return;
  const Text script = fields_.text.GetText();
  window_.Minimize();
  if (MovesUsedEntries()) MoveShownToTop();
  fields_.status.Show(u"Executed");
  scripts_.Run(script);
}

void PadUse::CopyText(const SharedText& text) {
  assert(!window_.poll.Runs());
  clipboard_.Clear();
  clipboard_.Put(text.Get());
  window_.MinimizeIfSet();
}

void PadUse::UseCurrent() {
  assert(HasCurrentRow(pad_.List1));
  const int current = pad_.List1.GetListIndex();
  if (pad_.IsScript(current)) return ExecuteCurrent();
  const SharedText text = pad_.PadEntries(current);
  const PollPause pause(window_.poll);
  CopyText(text);
  if (MovesUsedEntries()) MoveCurrentToTop(u"Inserted");
}

void PadUse::ExecuteCurrent() {
  if (scripts_.Running()) return;
  const Text script = fields_.text.GetText();
  // Shown and hidden again: the focus goes back to the window that had it before the menu opened.
  IgnoreFailure([this] { window_.form.Show(); });
  IgnoreFailure([this] { window_.Minimize(); });
  if (MovesUsedEntries()) MoveCurrentToTop(u"Executed");
  scripts_.Run(script);
}

void PadUse::MoveToTop(int row) {
  pad_.DeleteEntry1(row);
  Text name = fields_.name.GetText();
  pad_.AddEntry1(name, SharedText(fields_.text.GetText()), 0);
  files_.AktualisiereCle1();
}

void PadUse::MoveShownToTop() {
  const int row = pad_.FindText(fields_.text.GetText());
  if (row >= 0 && pad_.List1.IsRowShown(row)) MoveToTop(row);
}

void PadUse::MoveCurrentToTop(const Text& word) {
  MoveToTop(pad_.List1.GetListIndex());
  pad_.List1.SetListIndex(0);
  pad_.List1.SetSelected(0, true);
  fields_.status.Write(word);
}

}  // namespace quillbox
