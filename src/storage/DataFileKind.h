#pragma once

#include "base/RuntimeError.h"
#include "base/Text.h"

namespace quillbox {

// What tells the three data files from one another.
struct DataFileKind {
  TextView marker;  // the word in the marker lines
  TextView fileName;
  TextView listName;  // as messages call the list
};

inline constexpr DataFileKind kPadFile{u"PAD", u"PadData.qbx", u"Pad-List"};
inline constexpr DataFileKind kClipFile{u"CLIP", u"ClipData.qbx", u"Clip-List"};
inline constexpr DataFileKind kToDoFile{u"TODO", u"ToDoData.qbx", u"ToDo-List"};

// A file error in words: the end of the messages about a read and about a write.
inline Text DescriptionOf(const RuntimeError& error) {
  const std::string_view description = error.what();
  Text text = u"The error description is: \"";
  return text.append(description.begin(), description.end())
      .append(u"\".\r\nIf this happens again, please report it to the maintainers of Quillbox.");
}

}  // namespace quillbox
