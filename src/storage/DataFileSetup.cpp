#include "storage/DataFileSetup.h"

#include <utility>

namespace quillbox {

void DataFileSetup::GetClesAndLists() {
  Fill(kPadFile, [this](const Text& path) { return reader_.ReadPadFile(path); });
  Fill(kClipFile, [this](const Text& path) {
    if (path != files_.UserFile(kClipFile.fileName)) IgnoreFailure([this] { clipboard_.Clear(); });
    return reader_.ReadClipFile(path);
  });
  Fill(kToDoFile, [this](const Text& path) { return reader_.ReadToDoFile(path); });
  for (ListBox* list : {&pad_.List1, &clip_.List2, &toDo_.List3})
    IgnoreFailure([&] { list->SetListIndex(-1); });
  for (const DataFileTrouble& trouble : std::exchange(troubles_, {}))
    Raise(files_.MessageBox, trouble.message, BoxCode::Information, trouble.title);
}

void DataFileSetup::Fill(const DataFileKind& kind,
                         const std::function<std::optional<DataFileTrouble>(const Text& path)>& read) {
  if (!files_.IsSaved(kind.fileName)) return;
  const Text own = files_.UserFile(kind.fileName);
  const bool exists = files_.Exists(own);
  IgnoreFailure([&] {
    const std::optional<DataFileTrouble> trouble = read(exists ? own : files_.TemplateFile(kind.fileName));
    if (!trouble) return;
    if (trouble->unread && exists) files_.KeepAtNextSave(own);
    troubles_.push_back(*trouble);
  });
}

}  // namespace quillbox
