#include "scenarios/RecordScenario.h"

namespace quillbox {
namespace {

class StartStop : public RecordScenario {
 protected:
  std::string Extern(const std::string& key) { return Setting("Extern", key); }
  void SetExtern(const std::string& key, const std::string& value) {
    Do("reg.set", "HKCU", Section("Extern"), key, value);
  }
};

TEST_F(StartStop, AFirstStartFindsNothing) {
  Do("reg.delete", "HKCU", Intern(), "StartHelp");
  Do("reg.delete", "HKCU", Section("Extern"), "QuillboxVMajor");
  Do("clip.set", "left over");
  Do("start");
  EXPECT_EQ(Do("running"), Values{"1"});
  EXPECT_EQ(Do("tray"), (Values{"1", "window", "Quillbox"}));
  EXPECT_TRUE(Is("frmStartHelp", "Visible"));
  EXPECT_TRUE(Is("frmTray", "Visible"))
      << "the help takes the place on top from it, which brings it up behind";
  EXPECT_EQ(Extern("QuillboxPath") + " " + Extern("QuillboxName"), Folder() + " quillbox");
  EXPECT_EQ(Extern("QuillboxVMajor") + "." + Extern("QuillboxVMinor") + "." + Extern("QuillboxVRev"),
            "4.31.476");
  EXPECT_EQ(Clipboard(), "") << "without a Clip file the clipboard is emptied";
  EXPECT_EQ(Do("boxes"), Values{});
  for (const char* list : {"List1", "List2", "List3"}) EXPECT_EQ(Rows(list), Values{});
  EXPECT_EQ(Do("reg.get", "HKLM", "software\\microsoft\\windows\\currentversion\\run", "QUILLBOX"),
            (Values{"1", Folder() + "/quillbox"}));
  EXPECT_EQ(Do("reg.get", "HKCU", "Software\\Norvane\\Quillbox", "LastUserName"), (Values{"1", "user"}));
  EXPECT_EQ(Do("reg.get", "HKLM", "Software\\Norvane\\Quillbox", "LastUserName"), (Values{"1", "user"}));
  EXPECT_EQ(DataFile("ClipData.qbx"), "(missing)") << "a start writes no list";
}

TEST_F(StartStop, TheWindowStaysInTheTray) {
  for (const bool topmost : {true, false}) {
    Set("AlwaysOnTop", topmost ? "1" : "2");
    Do("start");
    EXPECT_TRUE(Hidden());
    EXPECT_EQ(Is("frmTray", "Topmost"), topmost);
    EXPECT_EQ(Is("frmTray.mnuOnTop", "Checked"), topmost);
    EXPECT_FALSE(Is("frmStartHelp", "Loaded"));
    EXPECT_EQ(Of("Timer1", "Enabled") + " " + Of("Timer1", "Interval"), "1 250");
    EXPECT_TRUE(Fails("click", "frmTray.Command6"));
    Do("end");
  }
}

// An older major version brings the start help back, whatever the user chose; the record of a newer one
// stands.
TEST_F(StartStop, TheVersionThatRanBefore) {
  struct Case {
    std::string before;
    bool help;
    std::string recorded;
  };
  const Case cases[] = {{"3 31", true, "4 31 476"},
                        {"4 20", false, "4 31 476"},
                        {"4 31", false, "4 31 476"},
                        {"4 40", false, "4 40 1"},
                        {"5 0", false, "5 0 1"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.before);
    Set("StartHelp", "No");
    SetExtern("QuillboxVMajor", c.before.substr(0, 1));
    SetExtern("QuillboxVMinor", c.before.substr(2));
    SetExtern("QuillboxVRev", "1");
    SetExtern("QuillboxPath", "old");
    Do("start");
    EXPECT_EQ(Is("frmStartHelp", "Loaded"), c.help);
    EXPECT_EQ(Setting("Intern", "StartHelp"), c.help ? "" : "No");
    EXPECT_EQ(Extern("QuillboxVMajor") + " " + Extern("QuillboxVMinor") + " " + Extern("QuillboxVRev"),
              c.recorded);
    EXPECT_EQ(Extern("QuillboxPath"), Folder());
    Do("end");
  }
}

TEST_F(StartStop, TheNewestEntryGoesOnAnEmptyClipboard) {
  WriteData("ClipData.qbx", File("CLIP", {{"newest"}, {"older"}, {"oldest of the three"}}));
  Do("start");
  EXPECT_EQ(Clipboard(), "newest");
  EXPECT_EQ(Do("clip.writes"), Values{"1"});
  Tick();
  EXPECT_EQ(Rows("List2"), (Values{"newest", "older", "oldest of the three"}));
  EXPECT_EQ(Writes("ClipData.qbx"), 0) << "the first tick sees no change";
  Do("end");

  Do("clip.picture");
  Do("start");
  EXPECT_EQ(Clipboard(), "newest") << "a picture has no text";
  Do("end");

  Do("clip.set", "other");
  Do("start");
  EXPECT_EQ(Clipboard(), "other");
  EXPECT_EQ(Of("Text0", "Text"), "newest");
  Advance(249);
  EXPECT_EQ(Rows("List2").size(), 3u);
  Advance(1);
  EXPECT_EQ(Rows("List2"), (Values{"other", "newest", "older", "oldest of the three"}));
  Do("end");

  Do("clip.lock", "1");
  Do("start");
  EXPECT_EQ(Do("running"), Values{"1"}) << "a clipboard that can't be opened stops no start";
  EXPECT_EQ(Of("Timer1", "Enabled"), "1");
}

TEST_F(StartStop, AutoRunNoLeavesTheStartEntryAlone) {
  const std::string run = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run";
  Do("reg.set", "HKLM", "SOFTWARE\\Norvane\\Quillbox", "AutoRun", "No");
  Do("start");
  EXPECT_EQ(MachineValue(run, "Quillbox"), "(missing)");
  Do("reg.set", "HKLM", run, "Quillbox", "before");
  Restart();
  EXPECT_EQ(MachineValue(run, "Quillbox"), "before");
}

TEST_F(StartStop, ASecondInstanceLeavesEverythingAlone) {
  WriteData("ClipData.qbx", "not to be touched");
  Do("clip.set", "text");
  Do("instance", "1");
  Do("start");
  EXPECT_EQ(Do("running"), Values{"0"});
  EXPECT_EQ(
      Boxes(),
      (std::vector<Box>{{"64", "Quillbox already running",
                         "The start of Quillbox has been aborted because the program is already running.\r\n"
                         "To use Quillbox click on the icon in the system traybar."}}));
  EXPECT_EQ(Do("tray").at(0), "0");
  Advance(1000);
  EXPECT_EQ(DataFile("ClipData.qbx"), "not to be touched");
  EXPECT_EQ(Clipboard(), "text");
  EXPECT_EQ(Do("clip.writes"), Values{"0"});
  EXPECT_EQ(Do("end"), Values{"0"});
  EXPECT_EQ(DataFile("PadData.qbx"), "(missing)");
}

TEST_F(StartStop, TheCloseBoxIsNoStop) {
  Do("start");
  Show();
  Do("move", "frmTray", "300", "450");
  EXPECT_EQ(Do("closebox", "frmTray"), Values{"1"});
  EXPECT_TRUE(Hidden());
  EXPECT_EQ(Setting("Intern", "Left"), "(none)");
  for (const char* file : {"PadData.qbx", "ClipData.qbx", "ToDoData.qbx"}) EXPECT_EQ(Writes(file), 0);
  EXPECT_EQ(Do("tray").at(0), "1");
}

TEST_F(StartStop, BothWaysOutWriteTheLists) {
  int times = 0;
  for (const char* way : {"end", "shutdown"}) {
    Do("start");
    Show();
    EXPECT_EQ(Do(way), Values{"0"});
    ++times;
    EXPECT_EQ(Do("running"), Values{"0"});
    EXPECT_EQ(Do("tray").at(0), "0");
    for (const char* file : {"PadData.qbx", "ClipData.qbx", "ToDoData.qbx"}) EXPECT_EQ(Writes(file), times);
  }
  EXPECT_EQ(DataFile("PadData.qbx").size(), 82u);
  EXPECT_EQ(DataFile("ToDoData.qbx").size(), 84u);
  EXPECT_EQ(DataFile("ClipData.qbx"), File("CLIP", {}));
}

TEST_F(StartStop, TheEndTakesTheDialogsAlong) {
  Do("start");
  for (const char* item : {"mnuSettings", "mnuInfo", "mnuStartHelp"}) Do("pick", item);
  for (const char* form : {"frmSettings", "frmAbout", "frmStartHelp"}) EXPECT_TRUE(Is(form, "Loaded"));
  Do("pick", "mnuEnd");
  for (const char* form : {"frmSettings", "frmAbout", "frmStartHelp"}) EXPECT_FALSE(Is(form, "Loaded"));
  EXPECT_EQ(Do("running"), Values{"0"});
}

TEST_F(StartStop, TheMemoryOfTheCalculatorComesBack) {
  for (const auto& [value, enabled] : {std::pair{"0", "0"}, {"", "0"}, {"-2.5", "1"}}) {
    Do("reg.set", "HKCU", Section("CalcEntry"), "M1", value);
    Do("start");
    for (const std::string button : {"Command38", "Command39"}) EXPECT_EQ(Of(button, "Enabled"), enabled);
    Do("end");
  }
}

TEST_F(StartStop, WithoutALogonName) {
  Do("user", "-");
  Do("start");
  Show();
  Do("click", "frmTray.Command6");
  EXPECT_EQ(Read(Folder() + "/UnknownUser/PadData.qbx"), File("PAD", {}));
  EXPECT_EQ(Do("reg.get", "HKCU", "Software\\Norvane\\Quillbox\\UnknownUser\\Extern", "QuillboxVMajor"),
            (Values{"1", "4"}));
}

}  // namespace
}  // namespace quillbox
