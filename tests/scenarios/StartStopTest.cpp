#include "scenarios/Scenario.h"

namespace quillbox {
namespace {

class StartStop : public Scenario {
 protected:
  std::string Extern(const std::string& key) { return Setting("Extern", key); }
};

TEST_F(StartStop, AFirstStartFindsNothing) {
  Do("reg.delete", "HKCU", Intern(), "StartHelp");
  Do("reg.delete", "HKCU", Section("Extern"), "QuillboxVMajor");
  Do("clip.set", "left over");
  Do("start");
  EXPECT_EQ(Do("running"), Values{"1"});
  EXPECT_EQ(Do("tray"), (Values{"1", "window", "Quillbox"}));
  EXPECT_EQ(Get("frmStartHelp", "Loaded"), "1");
  EXPECT_EQ(Get("frmStartHelp", "Visible"), "1");
  EXPECT_EQ(Get("frmTray", "Visible"), "1") << "the help takes the place on top from it, which brings it up behind";
  EXPECT_EQ(Extern("QuillboxPath"), Folder());
  EXPECT_EQ(Extern("QuillboxName"), "quillbox");
  EXPECT_EQ(Extern("QuillboxVMajor"), "4");
  EXPECT_EQ(Extern("QuillboxVMinor"), "31");
  EXPECT_EQ(Extern("QuillboxVRev"), "476");
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
  Do("start");
  EXPECT_EQ(Get("frmTray", "Visible"), "0");
  EXPECT_EQ(Get("frmTray", "WindowState"), "0");
  EXPECT_EQ(Get("frmTray", "Topmost"), "1");
  EXPECT_EQ(Get("frmStartHelp", "Loaded"), "0");
  EXPECT_EQ(Get("frmTray.Timer1", "Enabled"), "1");
  EXPECT_EQ(Get("frmTray.Timer1", "Interval"), "250");
  EXPECT_EQ(Get("frmTray.mnuOnTop", "Checked"), "1");
  EXPECT_TRUE(Fails("click", "frmTray.Command6"));
}

TEST_F(StartStop, NotAlwaysOnTop) {
  Set("AlwaysOnTop", "2");
  Do("start");
  EXPECT_EQ(Get("frmTray", "Topmost"), "0");
  EXPECT_EQ(Get("frmTray.mnuOnTop", "Checked"), "0");
}

// An older major version brings the start help back, whatever the user chose; an older minor one doesn't.
TEST_F(StartStop, TheStartHelpAndTheVersionBefore) {
  Do("reg.set", "HKCU", Section("Extern"), "QuillboxVMajor", "3");
  Do("start");
  EXPECT_EQ(Get("frmStartHelp", "Loaded"), "1");
  EXPECT_EQ(Setting("Intern", "StartHelp"), "");
  Do("end");

  Set("StartHelp", "No");
  Do("reg.set", "HKCU", Section("Extern"), "QuillboxVMajor", "4");
  Do("reg.set", "HKCU", Section("Extern"), "QuillboxVMinor", "20");
  Do("start");
  EXPECT_EQ(Get("frmStartHelp", "Loaded"), "0");
  EXPECT_EQ(Setting("Intern", "StartHelp"), "No");
  EXPECT_EQ(Extern("QuillboxVMinor"), "31");
}

TEST_F(StartStop, TheRecordOfANewerVersionStands) {
  for (const auto& [major, minor] : {std::pair{"5", "0"}, {"4", "40"}}) {
    Do("reg.set", "HKCU", Section("Extern"), "QuillboxVMajor", major);
    Do("reg.set", "HKCU", Section("Extern"), "QuillboxVMinor", minor);
    Do("reg.set", "HKCU", Section("Extern"), "QuillboxVRev", "1");
    Do("reg.set", "HKCU", Section("Extern"), "QuillboxPath", "old");
    Do("start");
    EXPECT_EQ(Extern("QuillboxVMajor"), major);
    EXPECT_EQ(Extern("QuillboxVMinor"), minor);
    EXPECT_EQ(Extern("QuillboxVRev"), "1");
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
  EXPECT_EQ(Get("frmTray.Text0", "Text"), "newest");
  Advance(249);
  EXPECT_EQ(Rows("List2").size(), 3u);
  Advance(1);
  EXPECT_EQ(Rows("List2"), (Values{"other", "newest", "older", "oldest of the three"}));
}

TEST_F(StartStop, AClipboardThatCannotBeOpenedStopsNoStart) {
  WriteData("ClipData.qbx", File("CLIP", {{"newest"}, {"older"}, {"oldest of the three"}}));
  Do("clip.lock", "1");
  Do("start");
  EXPECT_EQ(Do("running"), Values{"1"});
  EXPECT_EQ(Get("frmTray.Timer1", "Enabled"), "1");
}

TEST_F(StartStop, AutoRunNoLeavesTheStartEntryAlone) {
  const std::string run = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run";
  Do("reg.set", "HKLM", "SOFTWARE\\Norvane\\Quillbox", "AutoRun", "No");
  Do("start");
  EXPECT_EQ(Do("reg.get", "HKLM", run, "Quillbox"), Values{"0"});
  Do("end");
  Do("reg.set", "HKLM", run, "Quillbox", "before");
  Do("start");
  EXPECT_EQ(Do("reg.get", "HKLM", run, "Quillbox"), (Values{"1", "before"}));
}

TEST_F(StartStop, ASecondInstanceLeavesEverythingAlone) {
  WriteData("ClipData.qbx", "not to be touched");
  Do("clip.set", "text");
  Do("instance", "1");
  Do("start");
  EXPECT_EQ(Do("running"), Values{"0"});
  EXPECT_EQ(Do("boxes"),
            (Values{"64", "Quillbox already running",
                    "The start of Quillbox has been aborted because the program is already running.\r\n"
                    "To use Quillbox click on the icon in the system traybar."}));
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
  EXPECT_EQ(Get("frmTray", "Visible"), "0");
  EXPECT_EQ(Setting("Intern", "Left"), "(none)");
  for (const char* file : {"PadData.qbx", "ClipData.qbx", "ToDoData.qbx"}) EXPECT_EQ(Writes(file), 0);
  EXPECT_EQ(Do("tray").at(0), "1");
  Show();
  EXPECT_NE(Get("frmTray", "Left"), "300") << "it comes back at its old place";
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
  for (const char* form : {"frmSettings", "frmAbout", "frmStartHelp"}) EXPECT_EQ(Get(form, "Loaded"), "1");
  Do("pick", "mnuEnd");
  for (const char* form : {"frmSettings", "frmAbout", "frmStartHelp"}) EXPECT_EQ(Get(form, "Loaded"), "0");
  EXPECT_EQ(Do("running"), Values{"0"});
}

TEST_F(StartStop, CompletedTasksGoAtTheEndIfSet) {
  Do("start");
  Show();
  AddToDo("done");
  AddToDo("open");
  Do("check", "frmTray.List3", Rows("List3").at(0) == "done" ? "0" : "1", "1");
  Do("end");
  EXPECT_NE(DataFile("ToDoData.qbx").find("done"), std::string::npos);
  Set("AutoRefresh", "1");
  Do("start");
  Do("end");
  EXPECT_EQ(DataFile("ToDoData.qbx"), File("TODO", {{"False", "open"}}));
}

TEST_F(StartStop, TheMemoryOfTheCalculatorComesBack) {
  Do("start");
  EXPECT_EQ(Get("frmTray.Command38", "Enabled"), "0");
  Do("end");
  for (const auto& [value, enabled] : {std::pair{"0", "0"}, {"", "0"}, {"-2.5", "1"}}) {
    Do("reg.set", "HKCU", Section("CalcEntry"), "M1", value);
    Do("start");
    EXPECT_EQ(Get("frmTray.Command38", "Enabled"), enabled) << value;
    EXPECT_EQ(Get("frmTray.Command39", "Enabled"), enabled) << value;
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
