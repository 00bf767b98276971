#include "storage/DataFileReader.h"

#include "storage/DataFileFormat.h"

namespace quillbox {

namespace {

// A file up to this size counts as one without entries.
constexpr std::size_t kEmptyFileBytes = 90;

}  // namespace

// A file's text in the hands of its reader: the marker lines as this file writes them, and the lines.
class DataFileReader::Reading {
 public:
  Reading(const DataFileKind& kind, std::string_view bytes)
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
      slots.Set(number, text);
      throw;
    }
    slots.Set(number, text);
  }

 private:
  LineReader lines_;
  MarkerLines markers_;
  Text end_;
};

std::optional<DataFileTrouble> DataFileReader::Read(const DataFileKind& kind, const Text& path,
                                                    const std::function<void(Reading&)>& readEntries) {
  const Text list(kind.listName);
  try {
    if (!files_.Exists(path)) return {};
    const std::string bytes = files_.Read(path);
    if (bytes.size() <= kEmptyFileBytes) return {};
    Reading reading(kind, bytes);
    readEntries(reading);
    return {};
  } catch (const RuntimeError& error) {
    if (error.Number() == errors::kPastEnd) {
      return DataFileTrouble{u"Quillbox " + list + u" file damaged",
                             u"The " + list +
                                 u" data file has been damaged. Quillbox recovered entries as far as "
                                 u"possible. The damaged file will be replaced automatically.",
                             false};
    }
    Text message = u"An error (#";
    message.append(Decimal(error.Number()))
        .append(u") occured while Quillbox tried to read from the ")
        .append(list)
        .append(u" data file. ")
        .append(DescriptionOf(error));
    return DataFileTrouble{u"Quillbox Message", message, true};
  }
}

std::optional<DataFileTrouble> DataFileReader::ReadPadFile(const Text& path) {
  const int maximum = settings_.Read(setting::kPermEntriesMax);
  return Read(kPadFile, path, [&](Reading& reading) {
    bool last = false;
    for (int i = 0; i <= maximum && !last; ++i) {
      Text name = reading.Line();
      if (name.empty()) name = PadList::kNoName;
      reading.ReadText(pad_.PadEntries, i, last);
      pad_.List1.AddItem(name);
    }
  });
}

std::optional<DataFileTrouble> DataFileReader::ReadClipFile(const Text& path) {
  const int maximum = settings_.Read(setting::kClipEntriesMax);
  return Read(kClipFile, path, [&](Reading& reading) {
    bool last = false;
    for (int i = 0; i <= maximum && !last; ++i) {
      reading.ReadText(clip_.ClipEntries, i, last);
      clip_.List2.AddItem(clip_.ClipEntries(i));
    }
  });
}

std::optional<DataFileTrouble> DataFileReader::ReadToDoFile(const Text& path) {
  const int maximum = settings_.Read(setting::kToDoEntriesMax);
  return Read(kToDoFile, path, [&](Reading& reading) {
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
