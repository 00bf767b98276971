#pragma once

#include <functional>
#include <optional>

#include "core/settings/Norvane.h"
#include "platform/ports/Files.h"
#include "storage/ClipList.h"
#include "storage/DataFileKind.h"
#include "storage/PadList.h"
#include "storage/ToDoList.h"

namespace quillbox {

// What is to be said about a file that was not read whole.
struct DataFileTrouble {
  Text title;
  Text message;
  // There was no reading it: what it holds is not in the list.
  bool unread;
};

// Reads the lists back and recovers what it can of a damaged file. It says nothing itself: a message lets
// other inputs in, and they must not find a list half read.
class DataFileReader {
 public:
  DataFileReader(PadList& pad, ClipList& clip, ToDoList& toDo, Norvane& settings, Files& files)
      : pad_(pad), clip_(clip), toDo_(toDo), settings_(settings), files_(files) {}

  // Each adds the file's entries at the bottom of the list, up to the list's maximum. A file that isn't
  // there, or is too small to hold an entry, adds none.
  std::optional<DataFileTrouble> ReadPadFile(const Text& path);
  std::optional<DataFileTrouble> ReadClipFile(const Text& path);
  std::optional<DataFileTrouble> ReadToDoFile(const Text& path);

 private:
  class Reading;
  std::optional<DataFileTrouble> Read(const DataFileKind& kind, const Text& path,
                                      const std::function<void(Reading&)>& readEntries);

  PadList& pad_;
  ClipList& clip_;
  ToDoList& toDo_;
  Norvane& settings_;
  Files& files_;
};

}  // namespace quillbox
