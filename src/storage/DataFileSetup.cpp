#include "storage/DataFileSetup.h"

namespace quillbox {

void DataFileSetup::GetClesAndLists() {
  const auto choose = [this](TextView name) {
    const Text own = files_.UserFile(name);
    return files_.Exists(own) ? own : files_.TemplateFile(name);
  };
  if (files_.IsSaved(u"PadData.qbx")) {
    IgnoreFailure([&] { files_.ReadPadFile(choose(u"PadData.qbx")); });
  }
  if (files_.IsSaved(u"ClipData.qbx")) {
    if (!files_.Exists(files_.UserFile(u"ClipData.qbx"))) IgnoreFailure([&] { clipboard_.Clear(); });
    IgnoreFailure([&] { files_.ReadClipFile(choose(u"ClipData.qbx")); });
  }
  if (files_.IsSaved(u"ToDoData.qbx")) {
    IgnoreFailure([&] { files_.ReadToDoFile(choose(u"ToDoData.qbx")); });
  }
  for (ListBox* list : {&pad_.List1, &clip_.List2, &toDo_.List3})
    IgnoreFailure([&] { list->SetListIndex(-1); });
}

}  // namespace quillbox
