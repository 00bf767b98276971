#pragma once

#include <functional>
#include <set>
#include <vector>

#include "core/settings/Norvane.h"
#include "platform/ports/Files.h"
#include "platform/ports/MessageBoxes.h"
#include "platform/ports/SystemInfo.h"
#include "storage/ClipList.h"
#include "storage/DataFileFormat.h"
#include "storage/DataFileKind.h"
#include "storage/PadList.h"
#include "storage/ToDoList.h"

namespace quillbox {

// Saves the three lists, each in a file of its own: one pass over the list, one write. Reports its own
// failures.
class DataFiles {
 public:
  DataFiles(PadList& pad, ClipList& clip, ToDoList& toDo, Norvane& settings, Files& files,
            SystemInfo& system);

  // Shows a message: text, code, title.
  Event<const Text&, BoxCode, const Text&> MessageBox;
  // Rebuild the list's part of the tray menu; a save runs them first.
  Event<> RebuildPadMenu;
  Event<> RebuildClipMenu;

  // Save the Pad-List, the Clip-List, the ToDo-List.
  void AktualisiereCle1();
  void AktualisiereCle2();
  void AktualisiereCle3();
  // Whether the last save of that file succeeded. True before the first one.
  bool IsSaved(TextView name) const;

  // A file that could not be read, though it is there: it is kept beside the new one when its list is next
  // saved.
  void KeepAtNextSave(const Text& path) { unread_.push_back(path); }

  // The user's file of that name, whether it exists or not.
  Text UserFile(TextView name) const;
  Text TemplateFile(TextView name) const;
  bool Exists(const Text& path) const { return files_.Exists(path); }

 private:
  // `singleBytes`: all texts are in Windows-1252, and so is the file.
  void Save(const DataFileKind& kind, bool singleBytes,
            const std::function<void(LineWriter&)>& appendEntries);
  // Cuts the first `rows` texts, in memory too, where they are longer than a text may be. Whether all of them
  // are in Windows-1252.
  static bool CutAll(EntrySlots& slots, int rows);

  PadList& pad_;
  ClipList& clip_;
  ToDoList& toDo_;
  Norvane& settings_;
  Files& files_;
  SystemInfo& system_;
  // Files that could not be read.
  std::vector<Text> unread_;
  // The names of files whose last save failed: memory alone holds what their lists hold.
  std::set<Text, std::less<>> unsaved_;
};

}  // namespace quillbox
