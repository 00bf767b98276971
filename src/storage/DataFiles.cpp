#include "storage/DataFiles.h"

#include <algorithm>

#include "base/Trace.h"
#include "base/Utf8.h"

namespace quillbox {

namespace {

// What a row needs beside its texts: a marker line and the ends of its lines.
constexpr std::size_t kLineBytes = 48;

// Units in the first `rows` slots together.
std::size_t LengthOf(const EntrySlots& slots, int rows) {
  std::size_t length = 0;
  for (int i = 0; i < rows && i < EntrySlots::kCount; ++i) length += slots(i).Length();
  return length;
}

std::size_t LengthOf(const ListBox& list) {
  std::size_t length = 0;
  for (int i = 0; i < list.GetListCount(); ++i) length += list.GetList(i).Length();
  return length;
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

const SharedText& DataFiles::Cut(EntrySlots& slots, int index) {
  if (slots(index).Length() > limits::kEntryLength)
    slots.Set(index, SharedText(CutTo(slots(index).Get(), limits::kEntryLength)));
  return slots(index);
}

void DataFiles::Save(const DataFileKind& kind, int rows, std::size_t length,
                     const std::function<void(LineWriter&)>& appendEntries) {
  const Text path = UserFile(kind.fileName);
  try {
    const auto put = [&](Encoding encoding) {
      const MarkerLines markers(kind.marker);
      LineWriter file(encoding, length + static_cast<std::size_t>(rows + 2) * kLineBytes);
      file.Line(markers.Header());
      appendEntries(file);
      file.Line(markers.End());
      return file;
    };
    LineWriter file = put(Encoding::SingleBytes);
    if (!file.Fits()) file = put(Encoding::Utf8);
    files_.MakeFolder(settings_.UserDataDir());
    if (const auto unread = std::find(unread_.begin(), unread_.end(), path); unread != unread_.end()) {
      IgnoreFailure([&] { files_.Rename(path, path + u".unread"); });
      unread_.erase(unread);
    }
    files_.Write(path, file.Bytes());
    unsaved_.erase(Text(kind.fileName));
    if (Tracing()) Trace({"saved: ", ToUtf8(path), ", ", std::to_string(file.Bytes().size()), " bytes"});
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
  Save(kPadFile, rows, LengthOf(pad_.List1) + LengthOf(pad_.PadEntries, rows),
       [this, rows](LineWriter& file) {
         const MarkerLines markers(kPadFile.marker);
         for (int i = 0; i < rows; ++i) {
           file.Line(markers.Entry(i));
           file.Line(pad_.List1.GetList(i).Get());
           file.Line(Cut(pad_.PadEntries, i).Get());
         }
       });
}

void DataFiles::AktualisiereCle2() {
  Raise(RebuildClipMenu);
  const int rows = clip_.List2.GetListCount();
  Save(kClipFile, rows, LengthOf(clip_.ClipEntries, rows), [this, rows](LineWriter& file) {
    const MarkerLines markers(kClipFile.marker);
    for (int i = 0; i < rows; ++i) {
      file.Line(markers.Entry(i));
      file.Line(Cut(clip_.ClipEntries, i).Get());
    }
  });
}

void DataFiles::AktualisiereCle3() {
  const int rows = toDo_.List3.GetListCount();
  Save(kToDoFile, rows, LengthOf(toDo_.List3), [this, rows](LineWriter& file) {
    const MarkerLines markers(kToDoFile.marker);
    for (int i = 0; i < rows; ++i) {
      file.Line(markers.Entry(i));
      file.Line(toDo_.List3.GetSelected(i) ? u"True" : u"False");
      file.Line(toDo_.List3.GetList(i).Get());
    }
  });
}

}  // namespace quillbox
