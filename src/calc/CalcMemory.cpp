#include "calc/CalcMemory.h"

#include "base/NumberText.h"

namespace quillbox {

CalcMemory::CalcMemory(const Place& place, CalcDisplay& display, Norvane& settings)
    : Command35(place, "Command35", u"M", u"Save result to memory"),
      Command38(place, "Command38", u"MR", u"Get result from memory", false),
      Command39(place, "Command39", u"MC", u"Clear memory", false),
      display_(display),
      settings_(settings) {
  Command35.Click = [this] { Command35_Click(); };
  Command38.Click = [this] { Command38_Click(); };
  Command39.Click = [this] { Command39_Click(); };
}

void CalcMemory::EnableRecall(bool enabled) {
  Command38.SetEnabled(enabled);
  Command39.SetEnabled(enabled);
}

void CalcMemory::Restore() {
  const Text stored = settings_.Read(setting::kM1);
  IgnoreFailure([&] {
    if (GetNumberFromText(stored) != 0) EnableRecall(true);
  });
}

// A number beyond the range is not stored: the handler ends at its first step and nothing changes.
void CalcMemory::Command35_Click() {
  if (display_.Number() == 0) {
    display_.Text7.SetText(u"Value must be unequal 0!");
  } else {
    settings_.Write(setting::kM1, display_.Text7.GetText());
    EnableRecall(true);
  }
  display_.SetFinished();
}

void CalcMemory::Command38_Click() {
  display_.OrShowCalcError([this] {
    display_.Text7.SetText(settings_.Read(setting::kM1));
    display_.Show(display_.Number());
    display_.SetFinished();
  });
}

void CalcMemory::Command39_Click() {
  settings_.Empty(setting::kM1);
  EnableRecall(false);
  display_.SetFinished();
}

}  // namespace quillbox
