// How the lists are read, and what is recovered from a damaged file.
#include <algorithm>

#include "storage/DataFileFormat.h"
#include "storage/DataFileKinds.h"
#include "storage/DataFiles.h"

namespace quillbox {

namespace {

// A file up to this size counts as one without entries.
constexpr std::size_t kEmptyFileBytes = 90;

}  // namespace

// A file's text in the hands of its reader: the marker lines as this file writes them, and the lines.
class DataFiles::Reading {
 public:
  Reading(const Kind& kind, std::string_view bytes)
      : lines_(bytes),
        markers_(kind.marker, TextView(LineReader(bytes).Next()).substr(0, 5)),
        end_(markers_.End()) {
    lines_.Next();
    lines_.Next();
  }

  Text Line() { return lines_.Next(); }
  bool IsEnd(const Text& line) const { return line == end_; }

  // The text of entry `number`, up to the marker of the next one or the end line; `last` tells which it was.
  // The slot keeps what was read, also when the file ends in the middle.
  void ReadText(EntrySlots& slots, int number, bool& last) {
    const Text next = markers_.Entry(number + 1);
    Text text;
    const auto ends = [&](const Text& line) {
      last = IsEnd(line);
      return last || line == next;
    };
    try {
      lines_.NextUntil(ends, text);
    } catch (const RuntimeError&) {
      slots.Set(number, std::move(text));
      throw;
    }
    slots.Set(number, std::move(text));
  }

 private:
  LineReader lines_;
  MarkerLines markers_;
  Text end_;
};

void DataFiles::Read(const Kind& kind, const Text& path, const std::function<void(Reading&)>& readEntries) {
  try {
    if (!files_.Exists(path)) return;
    const std::string bytes = files_.Read(path);
    if (bytes.size() <= kEmptyFileBytes) return;
    Reading reading(kind, bytes);
    readEntries(reading);
  } catch (const RuntimeError& error) {
    if (error.Number() == errors::kPastEnd) {
      Text title = u"Quillbox ";
      title.append(kind.listName).append(u" file damaged");
      Text message = u"The ";
      message.append(kind.listName)
          .append(
              u" data file has been damaged. Quillbox recovered entries as far as possible. "
              u"The damaged file will be replaced automatically.");
      MessageBox(message, 64, title);
      return;
    }
    if (path == UserFile(kind.fileName)) unread_.push_back(path);
    const std::string_view description = error.what();
    Text message = u"An error (#";
    message.append(Decimal(error.Number()))
        .append(u") occured while Quillbox tried to read from the ")
        .append(kind.listName)
        .append(u" data file. The error description is: \"")
        .append(Text(description.begin(), description.end()))
        .append(u"\".\r\n")
        .append(kClosingSentence);
    MessageBox(message, 64, u"Quillbox Message");
  }
}

void DataFiles::ReadPadFile(const Text& path) {
  const long long maximum = settings_.ReadListMaximum(u"PermEntriesMax");
  Read(kPad, path, [&](Reading& reading) {
    bool last = false;
    for (int i = 0; i <= maximum && !last; ++i) {
      Text name = reading.Line();
      if (name.empty()) name = PadList::kNoName;
      reading.ReadText(pad_.PadEntries, i, last);
      pad_.List1.AddItem(name);
    }
  });
}

void DataFiles::ReadClipFile(const Text& path) {
  const long long maximum = settings_.ReadListMaximum(u"ClipEntriesMax");
  Read(kClip, path, [&](Reading& reading) {
    bool last = false;
    for (int i = 0; i <= maximum && !last; ++i) {
      reading.ReadText(clip_.ClipEntries, i, last);
      clip_.List2.AddItem(clip_.ClipEntries(i));
    }
  });
}

void DataFiles::ReadToDoFile(const Text& path) {
  const long long maximum = settings_.ReadListMaximum(u"ToDoEntriesMax");
  Read(kToDo, path, [&](Reading& reading) {
    for (int i = 0; i <= maximum; ++i) {
      const bool marked = reading.Line() == u"True";
      const Text text = reading.Line();
      toDo_.List3.AddItem(text);
      toDo_.List3.SetSelected(toDo_.List3.GetListCount() - 1, marked);
      if (reading.IsEnd(reading.Line())) break;
    }
  });
}

}  // namespace quillbox
