#include "storage/DataFiles.h"

#include <algorithm>

#include "base/Trace.h"
#include "base/Utf8.h"

namespace quillbox {

namespace {

bool IsSingleBytes(const ListBox& list) {
  for (int i = 0; i < list.GetListCount(); ++i)
    if (!list.GetList(i).SingleBytes()) return false;
  return true;
}

}  // namespace

DataFiles::DataFiles(PadList& pad, ClipList& clip, ToDoList& toDo, Norvane& settings, Files& files,
                     SystemInfo& system)
    : pad_(pad), clip_(clip), toDo_(toDo), settings_(settings), files_(files), system_(system) {}

Text DataFiles::UserFile(TextView name) const {
  return settings_.UserDataDir().append(system_.PathSeparator()).append(name);
}

Text DataFiles::TemplateFile(TextView name) const {
  return system_.TemplateFolder().append(system_.PathSeparator()).append(name);
}

bool DataFiles::IsSaved(TextView name) const { return unsaved_.find(name) == unsaved_.end(); }

bool DataFiles::CutAll(EntrySlots& slots, int rows) {
  bool singleBytes = true;
  for (int i = 0; i < rows; ++i) {
    if (slots(i).Length() > limits::kEntryLength)
      slots.Set(i, SharedText(CutTo(slots(i).Get(), limits::kEntryLength)));
    singleBytes = singleBytes && slots(i).SingleBytes();
  }
  return singleBytes;
}

void DataFiles::Save(const DataFileKind& kind, bool singleBytes,
                     const std::function<void(LineWriter&)>& appendEntries) {
  const Text path = UserFile(kind.fileName);
  try {
    files_.MakeFolder(settings_.UserDataDir());
    if (const auto unread = std::find(unread_.begin(), unread_.end(), path); unread != unread_.end()) {
      IgnoreFailure([&] { files_.Rename(path, path + u".unread"); });
      unread_.erase(unread);
    }
    std::size_t bytes = 0;
    files_.WritePieces(path, [&](const Files::Put& put) {
      const MarkerLines markers(kind.marker);
      LineWriter file(singleBytes ? Encoding::SingleBytes : Encoding::Utf8,
                      [&](std::span<const std::string_view> pieces) {
                        for (const std::string_view piece : pieces) bytes += piece.size();
                        put(pieces);
                      });
      file.Line(markers.Header());
      appendEntries(file);
      file.Line(markers.End());
    });
    unsaved_.erase(Text(kind.fileName));
    if (Tracing()) Trace({"saved: ", ToUtf8(path), ", ", std::to_string(bytes), " bytes"});
  } catch (const RuntimeError& error) {
    unsaved_.emplace(kind.fileName);
    Trace({"not saved: ", error.what()});
    Text text = u"An error (";
    text.append(Decimal(error.Number()))
        .append(u") occured while Quillbox tried to write to its data files. Try to fix the problem. ")
        .append(DescriptionOf(error));
    MessageBox(text, BoxCode::Information, u"Quillbox Message");
  }
}

void DataFiles::AktualisiereCle1() {
  Raise(RebuildPadMenu);
  const int rows = pad_.List1.GetListCount();
  Save(kPadFile, CutAll(pad_.PadEntries, rows) && IsSingleBytes(pad_.List1), [this, rows](LineWriter& file) {
    const MarkerLines markers(kPadFile.marker);
    for (int i = 0; i < rows; ++i) {
      file.Line(markers.Entry(i));
      file.Entry(pad_.List1.GetList(i));
      file.Entry(pad_.PadEntries(i));
    }
  });
}

void DataFiles::AktualisiereCle2() {
  Raise(RebuildClipMenu);
  const int rows = clip_.List2.GetListCount();
  Save(kClipFile, CutAll(clip_.ClipEntries, rows), [this, rows](LineWriter& file) {
    const MarkerLines markers(kClipFile.marker);
    for (int i = 0; i < rows; ++i) {
      file.Line(markers.Entry(i));
      file.Entry(clip_.ClipEntries(i));
    }
  });
}

void DataFiles::AktualisiereCle3() {
  const int rows = toDo_.List3.GetListCount();
  Save(kToDoFile, IsSingleBytes(toDo_.List3), [this, rows](LineWriter& file) {
    const MarkerLines markers(kToDoFile.marker);
    for (int i = 0; i < rows; ++i) {
      file.Line(markers.Entry(i));
      file.Line(toDo_.List3.GetSelected(i) ? u"True" : u"False");
      file.Entry(toDo_.List3.GetList(i));
    }
  });
}

}  // namespace quillbox
