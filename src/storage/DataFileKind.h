#pragma once

#include "storage/DataFiles.h"

namespace quillbox {

// What tells the three files from one another.
struct DataFiles::Kind {
  TextView marker;  // the word in the marker lines
  TextView fileName;
  TextView listName;  // as messages call the list
};

inline constexpr char16_t kClosingSentence[] =
    u"If this happens again, please report it to the maintainers of Quillbox.";

}  // namespace quillbox
