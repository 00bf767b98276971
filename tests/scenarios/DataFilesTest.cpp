#include <filesystem>
#include <utility>

#include "platform/forms/Dispatcher.h"
#include "scenarios/RecordScenario.h"

namespace quillbox {
namespace {

class DataFilesOfTheProgram : public RecordScenario {
 protected:
  static Box Damage(const std::string& list) {
    return {"64", "Quillbox " + list + " file damaged",
            "The " + list +
                " data file has been damaged. Quillbox recovered entries as far as possible. The damaged "
                "file will be replaced automatically."};
  }
};

TEST_F(DataFilesOfTheProgram, ByteByByte) {
  Do("start");
  Show();
  AddPad("", "Thanks");
  AddPad("Greeting", "Dear Sir,\r\n\r\nkind regards");
  const std::string file = DataFile("PadData.qbx");
  EXPECT_EQ(file.size(), 192u);
  EXPECT_EQ(file, kMark + " [PAD ENTRY FILE 4.31, DO NOT EDIT] " + kMark + "\r\n" +             //
                      kMark + " [PAD ENTRY 0] " + kMark + "\r\n" +                              //
                      "Greeting\r\nDear Sir,\r\n\r\nkind regards\r\n" +                         //
                      kMark + " [PAD ENTRY 1] " + kMark + "\r\n" + "[No Name]\r\nThanks\r\n" +  //
                      kMark + " [PAD ENTRY FILE END] " + kMark + "\r\n");
  AddToDo("Buy milk");
  EXPECT_EQ(DataFile("ToDoData.qbx"), File("TODO", {{"False", "Buy milk"}}));
  Do("check", "frmTray.List3", "0", "1");
  Do("click", "frmTray.Command6");
  EXPECT_EQ(DataFile("ToDoData.qbx"), File("TODO", {{"True", "Buy milk"}}));
  EXPECT_EQ(DataFile("ClipData.qbx"), File("CLIP", {}));
  EXPECT_EQ(DataFile("ClipData.qbx").size(), 84u);
}

TEST_F(DataFilesOfTheProgram, TextsComeBack) {
  Do("start");
  const Values texts{"three\r\nlines\r\n", "lone\nfeed", "", "Grüße ½ €", "tab\tand \x01 control"};
  Show();
  for (const std::string& text : texts) {
    if (!text.empty()) AddPad("length " + std::to_string(text.size()), text);
  }
  for (const std::string& text : texts) Copy(text);
  const auto lists = [this] {
    return std::vector<Values>{Rows("List1"), Slots("PadEntries"), Rows("List2")};
  };
  const auto before = lists();
  Restart();
  EXPECT_EQ(lists(), before);
  EXPECT_NE(DataFile("PadData.qbx").find("Gr\xFC\xDF\x65 \xBD \x80"), std::string::npos) << "single bytes";
  Copy("lone\rreturn");
  Copy("next");
  Restart();
  EXPECT_EQ(Rows("List2").at(1), "lone\r\nreturn") << "a lone carriage return ends a line";
}

TEST_F(DataFilesOfTheProgram, OtherAlphabetsMakeTheFileUtf8) {
  Do("start");
  for (const char* text : {"Ελληνικά", "日本語 \U0001F600", "plain"}) Copy(text);
  const std::string file = DataFile("ClipData.qbx");
  EXPECT_EQ(file.substr(0, 3), "\xEF\xBB\xBF");
  EXPECT_NE(file.find("日本語"), std::string::npos);
  Restart();
  EXPECT_EQ(Rows("List2"), (Values{"plain", "日本語 \U0001F600", "Ελληνικά"}));
}

TEST_F(DataFilesOfTheProgram, SmallFilesHoldNothing) {
  WriteData("ClipData.qbx", std::string(90, 'x'));
  WriteData("PadData.qbx", "");
  WriteData("ToDoData.qbx", Marker("TODO ENTRY FILE 4.31, DO NOT EDIT"));
  WriteTemplate("PadData.qbx", File("PAD", {{"template", "text", "to be long enough to be read"}}));
  Do("clip.set", "text");
  Do("start");
  EXPECT_TRUE(Boxes().empty());
  for (const char* list : {"List1", "List2", "List3"}) EXPECT_EQ(Rows(list), Values{});
  EXPECT_EQ(Clipboard(), "text") << "there is a Clip file";
}

TEST_F(DataFilesOfTheProgram, WhatIsWholeInADamagedFileIsReadAndReplacesIt) {
  const std::string pad =
      File("PAD", {{"name 0", "text 0"}, {"name 1", "text 1"}, {"name 2", "text 2"}, {"name 3", "text 3"}});
  const std::string toDo =
      File("TODO", {{"True", "first task"}, {"true", "second task"}, {"False", "third"}});
  WriteData("ClipData.qbx", std::string(91, 'x'));
  WriteData("PadData.qbx", pad.substr(0, pad.find("text 2") + 3));
  WriteData("ToDoData.qbx", toDo.substr(0, toDo.find("third") + 7));
  Do("start");
  EXPECT_EQ(Boxes(), (std::vector<Box>{Damage("Pad-List"), Damage("Clip-List"), Damage("ToDo-List")}));
  EXPECT_EQ(Rows("List2"), Values{});
  EXPECT_EQ(Rows("List1"), (Values{"name 0", "name 1"}));
  EXPECT_EQ(Rows("List3"), (Values{"first task", "second task", "third"}));
  EXPECT_EQ(Marks("List3"), "100") << "only True is a mark";
  Do("end");
  EXPECT_EQ(DataFile("ClipData.qbx"), File("CLIP", {}));
  EXPECT_EQ(DataFile("PadData.qbx"), File("PAD", {{"name 0", "text 0"}, {"name 1", "text 1"}}));
}

// What there is to say about a file is said when all three lists are read: whatever is done meanwhile finds
// them whole.
TEST_F(DataFilesOfTheProgram, AnEndWhileDamageIsReportedSavesWhatWasRead) {
  const std::string clips = File("CLIP", {{"newest"}, {"older"}, {"oldest of the three"}});
  const std::string tasks = File("TODO", {{"False", "a task"}, {"True", "another task"}});
  WriteData("PadData.qbx", std::string(91, 'x'));
  WriteData("ClipData.qbx", clips);
  WriteData("ToDoData.qbx", tasks);
  MemoryWorld& world = console.World();
  world.messageBoxes.WhileOpen = [&] {
    world.trayIcon.Press(516);
    world.windows.OpenMenu()->Find("mnuEnd")->Click();
  };
  Do("start");
  EXPECT_EQ(Do("running"), Values{"0"});
  EXPECT_EQ(Boxes().size(), 1u);
  EXPECT_EQ(Do("tray").at(0), "0");
  EXPECT_EQ(Everything().files, (Values{File("PAD", {}), clips, tasks}));
  Tick();
  EXPECT_EQ(Clipboard(), "") << "nothing of the start goes on";
}

TEST_F(DataFilesOfTheProgram, ClearBoardWhileDamageIsReportedKeepsRowsAndSlotsTogether) {
  WriteData("PadData.qbx", std::string(91, 'x'));
  WriteData("ClipData.qbx", File("CLIP", {{"newest"}, {"older"}, {"oldest of the three"}}));
  MemoryWorld& world = console.World();
  world.messageBoxes.WhileOpen = [&] {
    world.trayIcon.Press(516);
    world.windows.OpenMenu()->Find("mnuClear")->Click();
  };
  Do("start");
  EXPECT_EQ(Rows("List2"), (Values{"", "older", "oldest of the three"}));
  EXPECT_EQ(Slots("ClipEntries"), Rows("List2"));
  Do("dblrow", "frmTray.List2", "1");
  EXPECT_EQ(Clipboard(), "older");
}

// Of two reads one within the other, each list is filled by one.
TEST_F(DataFilesOfTheProgram, AReloadWhileDamageIsReportedFillsEachListOnce) {
  WriteData("PadData.qbx", std::string(91, 'x'));
  WriteData("ClipData.qbx", File("CLIP", {{"newest"}, {"older"}, {"oldest of the three"}}));
  MemoryWorld& world = console.World();
  bool first = true;
  world.messageBoxes.WhileOpen = [&] {
    if (!std::exchange(first, false)) return;
    world.trayIcon.Press(516);
    world.windows.OpenMenu()->Find("mnuSettings")->Click();
    for (Form* form : world.windows.Foreground()->GetDispatcher().Forms()) {
      if (form->Name() != "frmSettings") continue;
      form->Find("Command1")->PersonClick();
      break;
    }
  };
  Do("start");
  EXPECT_EQ(Rows("List2"), (Values{"newest", "older", "oldest of the three"}));
  EXPECT_EQ(Slots("ClipEntries"), Rows("List2"));
}

TEST_F(DataFilesOfTheProgram, MarkersWithinATextCutIt) {
  WriteData("ClipData.qbx",
            File("CLIP", {{"before", kMark + " [CLIP ENTRY 1] " + kMark, "remainder"}, {"joined"}}));
  Do("start");
  EXPECT_EQ(Rows("List2").size(), 2u);
  EXPECT_EQ(Rows("List2").at(0), "before");
  // The marker that follows has the number 1 again, not 2: it belongs to the text.
  EXPECT_EQ(Rows("List2").at(1), "remainder\r\n½½½½½ [CLIP ENTRY 1] ½½½½½\r\njoined");
}

TEST_F(DataFilesOfTheProgram, ForeignMarkersAndVersionsLoad) {
  std::string file = File("CLIP", {{"first"}, {"second"}, {"third entry"}});
  for (std::size_t at = file.find(kMark); at != std::string::npos; at = file.find(kMark)) {
    file.replace(at, 5, "#####");
  }
  file.replace(file.find("4.31"), 4, "9.99");
  WriteData("ClipData.qbx", file);
  Do("start");
  EXPECT_EQ(Rows("List2"), (Values{"first", "second", "third entry"}));
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(DataFilesOfTheProgram, ALoweredLimitReadsLess) {
  std::vector<Values> entries;
  for (int i = 0; i < 50; ++i) entries.push_back({i == 3 ? "" : "name " + std::to_string(i), "text"});
  WriteData("PadData.qbx", File("PAD", entries));
  Set("PermEntriesMax", "9");
  Do("start");
  EXPECT_EQ(Rows("List1").size(), 10u);
  EXPECT_EQ(Rows("List1").at(3), "[No Name]");
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(DataFilesOfTheProgram, TemplatesForWhoeverHasNoFile) {
  WriteTemplate("PadData.qbx", File("PAD", {{"template", "pad text"}, {"more", "of it"}}));
  WriteTemplate("ClipData.qbx", File("CLIP", {{"template clip"}, {"second"}, {"third"}}));
  WriteTemplate("ToDoData.qbx", File("TODO", {{"True", "template task"}, {"False", "more"}}));
  WriteData("PadData.qbx", File("PAD", {{"own", "own text"}, {"own too", "own text, the second"}}));
  Do("clip.set", "left over");
  Do("start");
  EXPECT_EQ(Rows("List1"), (Values{"own", "own too"}));
  EXPECT_EQ(Rows("List2").at(0), "template clip");
  EXPECT_EQ(Rows("List3"), (Values{"template task", "more"}));
  EXPECT_EQ(Clipboard(), "template clip") << "emptied first, then filled by the first entry";
  for (const std::string list : {"List1", "List2", "List3"}) EXPECT_EQ(Of(list, "ListIndex"), "-1");
  Do("end");
  Do("user", "second user");
  Do("start");
  EXPECT_EQ(Rows("List1"), (Values{"template", "more"}));
  EXPECT_EQ(Read(Folder() + "/second user/PadData.qbx"), "(missing)") << "a start writes nothing";
}

TEST_F(DataFilesOfTheProgram, AFolderThatCannotBeMade) {
  Do("folder", Folder() + "/nowhere/deep");
  Do("start");
  Copy("text");
  const auto boxes = Boxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].code + " " + boxes[0].title, "64 Quillbox Message");
  EXPECT_EQ(boxes[0].text.rfind("An error (", 0), 0u);
  EXPECT_NE(boxes[0].text.find(") occured while Quillbox tried to write to its data files. Try to fix the "
                               "problem. The error description is: \""),
            std::string::npos);
  EXPECT_EQ(Rows("List2"), Values{"text"}) << "the list in memory is unharmed";
  Copy("next");
  EXPECT_EQ(Boxes().size(), 1u) << "each attempt reports";
}

TEST_F(DataFilesOfTheProgram, AFileThatCannotBeReadReportsItself) {
  std::filesystem::create_directories(Folder() + "/user/ClipData.qbx");
  Do("start");
  const auto boxes = Boxes();
  ASSERT_GE(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, "Quillbox Message");
  EXPECT_EQ(boxes[0].text.rfind("An error (#", 0), 0u);
  EXPECT_NE(boxes[0].text.find("tried to read from the Clip-List data file"), std::string::npos);
  EXPECT_EQ(Do("running"), Values{"1"});
}

}  // namespace
}  // namespace quillbox
