// The three data files cut off anywhere, and with anything in them changed.
#include <gtest/gtest.h>

#include <random>

#include "memory/MemoryWorld.h"
#include "platform/forms/Dispatcher.h"
#include "platform/forms/Form.h"
#include "storage/DataFiles.h"

namespace quillbox {
namespace {

// One file in memory, whatever its path.
class OneFile : public Files {
 public:
  std::string content;

  bool Exists(const Text&) override { return true; }
  std::string Read(const Text&) override { return content; }
  void MakeFolder(const Text&) override {}
  void Write(const Text&, const std::string& written) override { content = written; }
  void Rename(const Text&, const Text&) override {}
};

// The lists with what was read into them.
struct Lists {
  Lists(MemoryWorld& world, OneFile& file)
      : settings(world.registry, world.system), files(pad, clip, toDo, settings, file, world.system) {
    files.MessageBox = [this](const Text&, int, const Text&) { ++messages; };
  }

  Dispatcher dispatcher;
  Form form{dispatcher, "frmTray", u"Quillbox"};
  PadList pad{form};
  ClipList clip{form};
  ToDoList toDo{form};
  Norvane settings;
  DataFiles files;
  int messages = 0;
};

// One of the three kinds of file: how it is read and saved, and an entry of it as one text.
struct Kind {
  const char* name;
  void (DataFiles::*read)(const Text&);
  void (DataFiles::*save)();
  ListBox& (*list)(Lists&);
  Text (*entry)(const Lists&, int);
};

const Kind kKinds[] = {
    {"Pad", &DataFiles::ReadPadFile, &DataFiles::AktualisiereCle1,
     [](Lists& lists) -> ListBox& { return lists.pad.List1; },
     [](const Lists& lists, int i) {
       return lists.pad.List1.GetList(i).Get() + Text(1, u'\0') + lists.pad.PadEntries(i).Get();
     }},
    {"Clip", &DataFiles::ReadClipFile, &DataFiles::AktualisiereCle2,
     [](Lists& lists) -> ListBox& { return lists.clip.List2; },
     [](const Lists& lists, int i) {
       EXPECT_EQ(lists.clip.List2.GetList(i).Get(), lists.clip.ClipEntries(i).Get()) << "row and slot";
       return lists.clip.ClipEntries(i).Get();
     }},
    {"ToDo", &DataFiles::ReadToDoFile, &DataFiles::AktualisiereCle3,
     [](Lists& lists) -> ListBox& { return lists.toDo.List3; },
     [](const Lists& lists, int i) {
       return (lists.toDo.List3.GetSelected(i) ? u"x " : u"  ") + lists.toDo.List3.GetList(i).Get();
     }},
};

class DataFileDamage : public testing::Test {
 protected:
  // A file of entries of all sorts; with `wide` one that needs UTF-8.
  std::string Written(const Kind& kind, bool wide) {
    Lists lists(world_, file_);
    const Text texts[] = {u"one line",
                          u"",
                          u"three\r\nlines\r\n",
                          u"a line feed\nalone",
                          wide ? u"Ελληνικά 漢字 😀" : u"Grüße ½",
                          Text(300, u'x')};
    int row = 0;
    for (const Text& text : texts) {
      Text name = u"name " + Decimal(row);
      lists.pad.AddEntry1(name, text, row);
      lists.clip.AddEntry2(text, row);
      lists.toDo.List3.AddItem(ReplaceAll(text, u"\r\n", u" "));
      lists.toDo.List3.SetSelected(row, row % 2 == 1);
      ++row;
    }
    (lists.files.*kind.save)();
    return file_.content;
  }

  struct Outcome {
    std::vector<Text> entries;
    int messages;
  };
  Outcome ReadBack(const Kind& kind, const std::string& content) {
    file_.content = content;
    Lists lists(world_, file_);
    (lists.files.*kind.read)(u"file");
    std::vector<Text> entries;
    for (int i = 0; i < kind.list(lists).GetListCount(); ++i) entries.push_back(kind.entry(lists, i));
    EXPECT_LE(entries.size(), 50u);
    EXPECT_LE(lists.messages, 1);
    return {entries, lists.messages};
  }

  // How many entries in front are the same.
  static std::size_t Common(const std::vector<Text>& a, const std::vector<Text>& b) {
    return static_cast<std::size_t>(std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first - a.begin());
  }
  std::size_t Below(std::size_t count) { return random_() % count; }

  MemoryWorld world_;
  OneFile file_;
  const unsigned seed_ = std::random_device()();
  const testing::ScopedTrace trace_{__FILE__, __LINE__, "seed " + std::to_string(seed_)};
  std::mt19937 random_{seed_};
};

TEST_F(DataFileDamage, AFileCutOffAnywhereKeepsTheEntriesBeforeTheCut) {
  for (const Kind& kind : kKinds) {
    for (const bool wide : {false, true}) {
      const std::string whole = Written(kind, wide);
      const std::vector<Text> all = ReadBack(kind, whole).entries;
      ASSERT_EQ(all.size(), 6u);
      std::size_t before = 0;
      for (std::size_t length = 0; length < whole.size() && !HasFailure(); ++length) {
        SCOPED_TRACE(std::string(kind.name) + (wide ? " wide" : "") + " cut at " + std::to_string(length));
        const Outcome cut = ReadBack(kind, whole.substr(0, length));
        // The last line may be there in part, so that a task's text or a marker is cut; all before it is
        // whole.
        const std::size_t same = Common(cut.entries, all);
        EXPECT_GE(same + 1, cut.entries.size());
        EXPECT_GE(same + 1, before) << "a longer file has kept less";
        before = same;
        // Only the end line's own line end may be missing without harm.
        const bool complete = length + 2 >= whole.size();
        EXPECT_EQ(cut.messages, length > 90 && !complete ? 1 : 0);
        EXPECT_TRUE(!complete || cut.entries == all);
      }
      EXPECT_EQ(before, all.size());
    }
  }
}

TEST_F(DataFileDamage, WhateverIsChangedTheEntriesBeforeItStand) {
  for (const Kind& kind : kKinds) {
    const std::string whole = Written(kind, false);
    const std::vector<Text> all = ReadBack(kind, whole).entries;
    // Behind the header, which gives the file its marker and its encoding.
    const std::size_t header = whole.find('\n') + 1;
    for (int round = 0; round < 2000 && !HasFailure(); ++round) {
      const std::size_t at = header + Below(whole.size() - header);
      SCOPED_TRACE(std::string(kind.name) + " changed at " + std::to_string(at));
      std::string changed = whole;
      switch (Below(4)) {
        case 0:
          changed[at] = static_cast<char>(Below(256));
          break;
        case 1:
          changed.erase(at, 1 + Below(40));
          break;
        case 2:
          changed.insert(at, std::string(1 + Below(40), static_cast<char>(Below(256))));
          break;
        default:
          changed.insert(at, whole.substr(Below(whole.size()), Below(200)));
          break;
      }
      // What closed before the change is as it was: count the marker lines that stand whole before it.
      std::size_t closed = 0;
      for (std::size_t marker = whole.find(" ENTRY ", header); marker < at;
           marker = whole.find(" ENTRY ", marker + 1)) {
        if (whole.find('\n', marker) < at) ++closed;
      }
      // The first marker closes nothing; the line in which the change stands isn't counted on.
      EXPECT_GE(Common(ReadBack(kind, changed).entries, all) + 1, closed);
    }
  }
}

TEST_F(DataFileDamage, NoiseIsReadWithoutHarm) {
  const std::string half(5, '\xBD');
  const std::string pieces[] = {
      "\r\n",         "\r",       "\n",  std::string(1, '\0'), "True", half, half + " [CLIP ENTRY 1] " + half,
      "\xEF\xBB\xBF", "\xF0\x9F", "text"};
  for (int round = 0; round < 2000 && !HasFailure(); ++round) {
    std::string noise = round % 3 == 0 ? "\xEF\xBB\xBF" : "";
    for (std::size_t parts = Below(200); parts > 0; --parts) noise += pieces[Below(std::size(pieces))];
    for (const Kind& kind : kKinds) ReadBack(kind, noise);
  }
}

}  // namespace
}  // namespace quillbox
