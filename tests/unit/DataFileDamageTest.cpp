// The three data files cut off anywhere, and with anything in them changed.
#include <gtest/gtest.h>

#include <iostream>
#include <random>
#include <set>
#include <string>
#include <vector>

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
  explicit Lists(MemoryWorld& world, OneFile& file)
      : form(dispatcher, "frmTray", u"Quillbox"),
        pad(form),
        clip(form),
        toDo(form),
        settings(world.platform.registry, world.platform.system),
        files(pad, clip, toDo, settings, file, world.platform.system) {
    files.MessageBox = [this](const Text& text, int, const Text& title) {
      messages.push_back(title + u": " + text);
      return 1;
    };
  }

  Dispatcher dispatcher;
  Form form;
  PadList pad;
  ClipList clip;
  ToDoList toDo;
  Norvane settings;
  DataFiles files;
  std::vector<Text> messages;
};

// One of the three kinds of file: how it is read, and an entry of it as one text.
struct Kind {
  const char* name;
  void (*read)(Lists&);
  void (*save)(Lists&);
  std::vector<Text> (*entries)(const Lists&);
};

std::vector<Text> PadEntriesOf(const Lists& lists) {
  std::vector<Text> entries;
  for (int i = 0; i < lists.pad.List1.GetListCount(); ++i) {
    entries.push_back(lists.pad.List1.GetList(i).Get() + Text(1, u'\0') + lists.pad.PadEntries(i).Get());
  }
  return entries;
}

std::vector<Text> ClipEntriesOf(const Lists& lists) {
  std::vector<Text> entries;
  for (int i = 0; i < lists.clip.List2.GetListCount(); ++i) {
    entries.push_back(lists.clip.ClipEntries(i).Get());
    EXPECT_EQ(lists.clip.List2.GetList(i).Get(), entries.back()) << "a row and its slot differ";
  }
  return entries;
}

std::vector<Text> ToDoEntriesOf(const Lists& lists) {
  std::vector<Text> entries;
  for (int i = 0; i < lists.toDo.List3.GetListCount(); ++i) {
    entries.push_back((lists.toDo.List3.GetSelected(i) ? u"x " : u"  ") + lists.toDo.List3.GetList(i).Get());
  }
  return entries;
}

const Kind kKinds[] = {
    {"Pad", [](Lists& lists) { lists.files.ReadPadFile(u"file"); },
     [](Lists& lists) { lists.files.AktualisiereCle1(); }, PadEntriesOf},
    {"Clip", [](Lists& lists) { lists.files.ReadClipFile(u"file"); },
     [](Lists& lists) { lists.files.AktualisiereCle2(); }, ClipEntriesOf},
    {"ToDo", [](Lists& lists) { lists.files.ReadToDoFile(u"file"); },
     [](Lists& lists) { lists.files.AktualisiereCle3(); }, ToDoEntriesOf},
};

class DataFileDamage : public testing::Test {
 protected:
  // A file of entries of all sorts; with `wide` one that needs UTF-8.
  std::string Written(const Kind& kind, bool wide) {
    Lists lists(world_, file_);
    const std::vector<Text> texts = {u"one line",
                                     u"",
                                     u"three\r\nlines\r\n",
                                     u"a line feed\nalone",
                                     wide ? u"Ελληνικά 漢字 😀" : u"Grüße ½",
                                     Text(300, u'x')};
    for (int i = 0; i < static_cast<int>(texts.size()); ++i) {
      Text name = u"name " + Decimal(i);
      lists.pad.AddEntry1(name, texts[i], i);
      lists.clip.AddEntry2(texts[i], i);
      lists.toDo.List3.AddItem(ReplaceAll(texts[i], u"\r\n", u" "));
      lists.toDo.List3.SetSelected(i, i % 2 == 1);
    }
    kind.save(lists);
    return file_.content;
  }

  struct Outcome {
    std::vector<Text> entries;
    std::vector<Text> messages;
  };
  Outcome ReadBack(const Kind& kind, const std::string& content) {
    file_.content = content;
    Lists lists(world_, file_);
    kind.read(lists);
    return {kind.entries(lists), lists.messages};
  }

  // How many entries in front are the same.
  static std::size_t Common(const std::vector<Text>& a, const std::vector<Text>& b) {
    std::size_t same = 0;
    while (same < a.size() && same < b.size() && a[same] == b[same]) ++same;
    return same;
  }

  MemoryWorld world_;
  OneFile file_;
};

TEST_F(DataFileDamage, AFileCutOffAnywhereKeepsTheEntriesBeforeTheCut) {
  for (const Kind& kind : kKinds) {
    for (const bool wide : {false, true}) {
      const std::string whole = Written(kind, wide);
      const std::vector<Text> all = ReadBack(kind, whole).entries;
      ASSERT_EQ(all.size(), 6u);
      std::size_t before = 0;
      for (std::size_t length = 0; length < whole.size(); ++length) {
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
        EXPECT_EQ(cut.messages.size(), length > 90 && !complete ? 1u : 0u);
        EXPECT_TRUE(!complete || cut.entries == all);
        if (HasFailure()) return;
      }
      EXPECT_EQ(before, all.size());
    }
  }
}

TEST_F(DataFileDamage, WhateverIsChangedTheEntriesBeforeItStand) {
  const auto seed = std::random_device()();
  std::cout << "seed " << seed << std::endl;
  std::mt19937 random(seed);
  const auto below = [&](std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
  };
  for (const Kind& kind : kKinds) {
    const std::string whole = Written(kind, false);
    const std::vector<Text> all = ReadBack(kind, whole).entries;
    for (int round = 0; round < 2000; ++round) {
      SCOPED_TRACE(std::string(kind.name) + " round " + std::to_string(round) + " seed " +
                   std::to_string(seed));
      // Behind the header, which gives the file its marker and its encoding.
      const std::size_t header = whole.find('\n') + 1;
      const std::size_t at = header + below(whole.size() - header);
      std::string changed = whole;
      switch (below(4)) {
        case 0:
          changed[at] = static_cast<char>(below(256));
          break;
        case 1:
          changed.erase(at, 1 + below(40));
          break;
        case 2:
          changed.insert(at, std::string(1 + below(40), static_cast<char>(below(256))));
          break;
        default:
          changed.insert(at, whole.substr(below(whole.size()), below(200)));
          break;
      }
      const Outcome read = ReadBack(kind, changed);
      EXPECT_LE(read.entries.size(), 50u);
      EXPECT_LE(read.messages.size(), 1u);
      // What closed before the change is as it was: count the marker lines that stand whole before it.
      std::size_t closed = 0;
      for (std::size_t marker = whole.find(" ENTRY ", header); marker != std::string::npos && marker < at;
           marker = whole.find(" ENTRY ", marker + 1)) {
        const std::size_t end = whole.find('\n', marker);
        if (end < at) ++closed;
      }
      // The first marker closes nothing; the line in which the change stands isn't counted on.
      const std::size_t kept = closed > 1 ? closed - 1 : 0;
      EXPECT_GE(Common(read.entries, all), kept) << "changed at " << at;
      if (HasFailure()) return;
    }
  }
}

TEST_F(DataFileDamage, NoiseIsReadWithoutHarm) {
  const auto seed = std::random_device()();
  std::cout << "seed " << seed << std::endl;
  std::mt19937 random(seed);
  const std::string pieces[] = {"\r\n",
                                "\r",
                                "\n",
                                std::string(1, '\0'),
                                "True",
                                "\xBD\xBD\xBD\xBD\xBD",
                                "\xBD\xBD\xBD\xBD\xBD [CLIP ENTRY 1] \xBD\xBD\xBD\xBD\xBD",
                                "\xEF\xBB\xBF",
                                "\xF0\x9F",
                                "text"};
  for (int round = 0; round < 2000; ++round) {
    std::string noise = round % 3 == 0 ? "\xEF\xBB\xBF" : "";
    for (std::size_t parts = random() % 200; parts > 0; --parts)
      noise += pieces[random() % std::size(pieces)];
    for (const Kind& kind : kKinds) {
      const Outcome read = ReadBack(kind, noise);
      EXPECT_LE(read.entries.size(), 50u);
      EXPECT_LE(read.messages.size(), 1u);
    }
  }
}

}  // namespace
}  // namespace quillbox
