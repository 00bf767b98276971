// The Info dialog and the start help.
#include "scenarios/RecordScenario.h"

namespace quillbox {
namespace {

const std::string kAddress = "https://quillbox.example";

class InfoDialogTest : public RecordScenario {
 protected:
  InfoDialogTest() {
    Do("version", "6", "1", "85", "Desktop");
    Do("start");
    Show();
    Do("click", "frmTray.Command48");
  }
  void Click(const std::string& control) { Do("click", "frmAbout." + control); }
  std::string Line() { return Get("frmAbout.lblVersion", "Caption"); }
};

TEST_F(InfoDialogTest, TellsTheFactsOnClicks) {
  EXPECT_EQ(Get("frmAbout", "Caption"), "Quillbox 4.31 Info");
  EXPECT_EQ(Get("frmAbout.lblTitle", "Caption"), "Quillbox");
  const auto after = [this](const std::string& part) {
    Click(part);
    return Line();
  };
  EXPECT_EQ(Line(), "Version 4.31");
  EXPECT_EQ(after("lblVersion"), "Version 4.31.476");
  EXPECT_EQ(after("lblTitle"), "Version 4.31");
  EXPECT_EQ(after("Label3"), "h: 1   ID: 1");
  EXPECT_EQ(after("Label4"), "Windows NT 6.1.85 Desktop");
  EXPECT_EQ(after("picIcon"), Folder());
  Do("platform", "1");
  Do("version", "4", "10", "67", "");
  EXPECT_EQ(after("Label4"), "Windows  4.10.67 ");
  const std::string about = Get("frmAbout.Label2", "Caption");
  const std::string end = "Whenever you visit us, you should also look out for updates and new products!";
  EXPECT_EQ(about.rfind("Quillbox was developed by Norvane.", 0), 0U);
  EXPECT_EQ(about.substr(about.size() - end.size()), end);
  EXPECT_EQ(Get("frmAbout.Command1", "ToolTipText"), "Click here to close the Information Form");
}

TEST_F(InfoDialogTest, TheWebAddressGoesToTheClipboard) {
  EXPECT_EQ(Get("frmAbout.Label5", "Caption"), kAddress);
  for (const std::string& shown : {std::string("URL copied to clipboard"), kAddress}) {
    Copy("something else");
    Click("Label5");
    EXPECT_EQ(Clipboard(), kAddress + "/");
    EXPECT_EQ(Get("frmAbout.Label5", "Caption"), shown);
  }
  Tick();
  EXPECT_EQ(Rows("List2").front(), kAddress + "/") << "the watcher runs on and takes it as a new text";
  // Another program holds the clipboard: nothing is claimed, and the watcher runs on.
  Do("clip.lock", "1");
  Click("Label5");
  EXPECT_EQ(Get("frmAbout.Label5", "Caption"), kAddress);
  Do("clip.lock", "0");
  Copy("afterwards");
  EXPECT_EQ(Rows("List2").front(), "afterwards");
}

TEST_F(InfoDialogTest, IsMadeAnewAtEachLoad) {
  for (const Values& way :
       std::vector<Values>{{"click", "frmAbout.Command1"}, {"key", "frmAbout.Command1", "Escape"}}) {
    Click("lblVersion");
    Do("click", "frmTray.Command48");
    EXPECT_EQ(Line(), "Version 4.31.476") << "brought up, not loaded again";
    Do(way);
    EXPECT_FALSE(Is("frmAbout", "Loaded")) << way[0];
    Do("click", "frmTray.Command48");
    EXPECT_EQ(Line(), "Version 4.31") << "as it is designed";
  }
}

class StartHelpTest : public RecordScenario {
 protected:
  void Open() {
    Do("tray.mouse", "516");
    Do("pick", "mnuStartHelp");
  }
  void Click(const std::string& control) { Do("click", "frmStartHelp." + control); }
  bool Checked() { return Is("frmStartHelp.Check1", "Value"); }
  std::string Stored() { return Setting("Intern", "StartHelp"); }
};

TEST_F(StartHelpTest, ShowsTheIntroduction) {
  Do("start");
  Open();
  EXPECT_EQ(Get("frmStartHelp", "Caption"), "General Starting Information on Quillbox");
  EXPECT_EQ(Get("frmStartHelp.Check1", "Caption"),
            "Display this StartHelp at every startup  (you may also call it later using the menu)");
  const std::string text = Get("frmStartHelp.Text1", "Text");
  std::size_t lines = 0;
  for (std::size_t at = text.find("\r\n"); at != std::string::npos; at = text.find("\r\n", at + 2)) ++lines;
  EXPECT_EQ(lines, 22U);
  EXPECT_EQ(text.rfind("INTRODUCTION\r\n\r\n\"Clip\" is the main thing: a powerful clipboard enhancement "
                       "utility. It \r\nautomatically",
                       0),
            0U);
  EXPECT_EQ(text.substr(text.size() - 25), "installation directory.\r\n");
  Do("settext", "frmStartHelp.Text1", "edited");
  Do("type", "frmStartHelp.Text1", "edited");
  EXPECT_EQ(Get("frmStartHelp.Text1", "Text"), text) << "the person doesn't edit it";
}

TEST_F(StartHelpTest, OkRemembersWhetherItComesBack) {
  struct Case {
    Values way;
    std::string stored;
  };
  // Enter and Escape are OK, wherever the focus is.
  const Case cases[] = {{{"closebox", "frmStartHelp"}, "No"},
                        {{"key", "frmStartHelp.Text1", "Enter"}, "Yes"},
                        {{"key", "frmStartHelp.Check1", "Escape"}, "No"},
                        {{"click", "frmStartHelp.Command1"}, "Yes"}};
  Do("start");
  for (const Case& c : cases) {
    if (!Is("frmStartHelp", "Loaded")) Open();
    EXPECT_EQ(Checked(), Stored() == "Yes");
    Click("Check1");
    Do(c.way);
    EXPECT_FALSE(Is("frmStartHelp", "Loaded")) << c.way[0];
    EXPECT_EQ(Stored(), c.stored) << c.way[0];
    Restart();
    EXPECT_EQ(Is("frmStartHelp", "Loaded"), c.stored == "Yes");
  }
}

TEST_F(StartHelpTest, ComesUncalledUntilItIsSwitchedOff) {
  Set("StartHelp", "");
  Do("start");
  EXPECT_TRUE(Is("frmStartHelp", "Visible"));
  EXPECT_TRUE(Checked());
  Click("Command1");
  EXPECT_EQ(Stored(), "Yes");
  // A store that can't be written keeps what it has; the dialog closes.
  Do("reg.deny", "HKCU", "1");
  Open();
  Click("Check1");
  Click("Command1");
  EXPECT_EQ(Stored(), "Yes");
  EXPECT_FALSE(Is("frmStartHelp", "Loaded"));
}

TEST_F(StartHelpTest, ItsPartsOpenTheInfoDialog) {
  Do("start");
  Open();
  const std::string tip = "Click here if you want to know more about ";
  const std::vector<Values> links{{"Label1", tip + "Quillbox..."},
                                  {"Label2", tip + "Quillbox..."},
                                  {"Image1", tip + "Norvane..."},
                                  {"Image2", tip + "Norvane..."}};
  for (const Values& link : links) {
    EXPECT_EQ(Get("frmStartHelp." + link[0], "ToolTipText"), link[1]);
    Click(link[0]);
    EXPECT_TRUE(Is("frmAbout", "Visible")) << link[0];
    EXPECT_TRUE(Is("frmStartHelp", "Visible")) << "stays open";
    Do("click", "frmAbout.Command1");
  }
  EXPECT_EQ(Do("end"), Values{"0"});
  EXPECT_FALSE(Is("frmStartHelp", "Loaded"));
}

}  // namespace
}  // namespace quillbox
