#include "storage/DataFileSetup.h"

namespace quillbox {

void DataFileSetup::GetClesAndLists() {
  files_.HoldSaves();
  Fill(u"PadData.qbx", [this](const Text& path, bool) { files_.ReadPadFile(path); });
  Fill(u"ClipData.qbx", [this](const Text& path, bool own) {
    if (!own) IgnoreFailure([this] { clipboard_.Clear(); });
    files_.ReadClipFile(path);
  });
  Fill(u"ToDoData.qbx", [this](const Text& path, bool) { files_.ReadToDoFile(path); });
  for (ListBox* list : {&pad_.List1, &clip_.List2, &toDo_.List3})
    IgnoreFailure([&] { list->SetListIndex(-1); });
}

void DataFileSetup::Fill(TextView name, const std::function<void(const Text& path, bool own)>& read) {
  // A reload while a message about an earlier list stood open has filled this one.
  if (!files_.IsHeld(name)) return;
  if (files_.IsSaved(name)) {
    const Text path = files_.UserFile(name);
    const bool own = files_.Exists(path);
    IgnoreFailure([&] { read(own ? path : files_.TemplateFile(name), own); });
  }
  files_.Release(name);
}

}  // namespace quillbox
