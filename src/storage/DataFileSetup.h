#pragma once

#include <functional>

#include "platform/ports/Clipboard.h"
#include "storage/DataFiles.h"

namespace quillbox {

// Chooses for each list the file that fills it: the user's own, else the template.
class DataFileSetup {
 public:
  DataFileSetup(DataFiles& files, PadList& pad, ClipList& clip, ToDoList& toDo, Clipboard& clipboard)
      : files_(files), pad_(pad), clip_(clip), toDo_(toDo), clipboard_(clipboard) {}

  // Adds the entries to the lists and makes no row current. Where the Clip-List comes from the template, the
  // clipboard is cleared first. A list whose last save failed stays as it is: its file is older. Failures are
  // ignored, statement by statement.
  void GetClesAndLists();

 private:
  // Fills the list of that file; `own`: from the user's file, not from the template.
  void Fill(TextView name, const std::function<void(const Text& path, bool own)>& read);

  DataFiles& files_;
  PadList& pad_;
  ClipList& clip_;
  ToDoList& toDo_;
  Clipboard& clipboard_;
};

}  // namespace quillbox
