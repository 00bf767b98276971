#pragma once

#include <functional>
#include <set>
#include <vector>

#include "core/settings/Norvane.h"
#include "platform/ports/Files.h"
#include "platform/ports/SystemInfo.h"
#include "storage/ClipList.h"
#include "storage/DataFileFormat.h"
#include "storage/PadList.h"
#include "storage/ToDoList.h"

namespace quillbox {

// Saves the three lists and reads them back, each in a file of its own. Both report their own failures.
class DataFiles {
 public:
  DataFiles(PadList& pad, ClipList& clip, ToDoList& toDo, Norvane& settings, Files& files,
            SystemInfo& system);

  // Shows a message: text, code, title.
  Event<const Text&, int, const Text&> MessageBox;
  // Rebuild the list's part of the tray menu; a save runs them first.
  Event<> RebuildPadMenu;
  Event<> RebuildClipMenu;

  // Save the Pad-List, the Clip-List, the ToDo-List.
  void AktualisiereCle1();
  void AktualisiereCle2();
  void AktualisiereCle3();
  // Whether the last save of that file succeeded. True before the first one.
  bool IsSaved(TextView name) const;

  // The lists are about to be read. Until a list has been, its save does nothing: a message that stands open
  // meanwhile lets other inputs in, an end of the program among them, and the file holds what the list lacks.
  void HoldSaves();
  // Whether the list of that file is still to be read.
  bool IsHeld(TextView name) const { return held_.find(name) != held_.end(); }
  void Release(TextView name) { held_.erase(Text(name)); }

  // Add the file's entries at the bottom of the list, up to the list's maximum.
  void ReadPadFile(const Text& path);
  void ReadClipFile(const Text& path);
  void ReadToDoFile(const Text& path);

  // The user's file of that name, whether it exists or not.
  Text UserFile(TextView name) const;
  Text TemplateFile(TextView name) const;
  bool Exists(const Text& path) const { return files_.Exists(path); }

 private:
  struct Kind;
  class Reading;
  static const Kind kPad, kClip, kToDo;

  // `length`: units of the texts together, so that the file is put together in one piece of memory.
  void Save(const Kind& kind, int rows, std::size_t length,
            const std::function<void(LineWriter&)>& appendEntries);
  void Read(const Kind& kind, const Text& path, const std::function<void(Reading&)>& readEntries);
  // A slot's text, cut in memory too where it is longer than a text may be.
  const SharedText& Cut(EntrySlots& slots, int index);

  PadList& pad_;
  ClipList& clip_;
  ToDoList& toDo_;
  Norvane& settings_;
  Files& files_;
  SystemInfo& system_;
  // Files that could not be read, though they are there: kept when their list is next saved.
  std::vector<Text> unread_;
  // The names of files whose last save failed: memory alone holds what their lists hold.
  std::set<Text, std::less<>> unsaved_;
  // The names of files whose lists are being read or still to be read.
  std::set<Text, std::less<>> held_;
};

}  // namespace quillbox
