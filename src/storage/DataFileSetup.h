#pragma once

#include <functional>

#include "platform/ports/Clipboard.h"
#include "storage/DataFileReader.h"
#include "storage/DataFiles.h"

namespace quillbox {

// Chooses for each list the file that fills it: the user's own, else the template.
class DataFileSetup {
 public:
  DataFileSetup(DataFiles& files, DataFileReader& reader, PadList& pad, ClipList& clip, ToDoList& toDo,
                Clipboard& clipboard)
      : files_(files), reader_(reader), pad_(pad), clip_(clip), toDo_(toDo), clipboard_(clipboard) {}

  // Adds the entries to the lists and makes no row current. Where the Clip-List comes from the template, the
  // clipboard is cleared first. A list whose last save failed stays as it is: its file is older. Failures are
  // ignored, statement by statement. What there is to say about a file is said when all three lists are
  // whole.
  void GetClesAndLists();

 private:
  // Fills the list of that file.
  void Fill(const DataFileKind& kind,
            const std::function<std::optional<DataFileTrouble>(const Text& path)>& read);

  DataFiles& files_;
  DataFileReader& reader_;
  PadList& pad_;
  ClipList& clip_;
  ToDoList& toDo_;
  Clipboard& clipboard_;
  std::vector<DataFileTrouble> troubles_;
};

}  // namespace quillbox
