// Pad entries that type themselves.
#include "scenarios/RecordScenario.h"

namespace quillbox {
namespace {

const std::string kList = "frmTray.List1";
const std::string kText = "frmTray.Text101";
const std::string kButton = "frmTray.Command102";
const std::vector<Box> kError{
    {"16", "Quillbox Script Error",
     "Sorry, an error occured while executing the script. Please check your syntax (listed in "
     "the StartHelp) and try again!"}};

class ScriptTest : public RecordScenario {
 protected:
  ScriptTest() {
    Do("start");
    Show();
    OpenPage(1);
  }

  std::string Status() { return Get("frmTray.Label13", "Caption"); }
};

TEST_F(ScriptTest, OnlyTheMarkAtTheVeryBeginningMakesAScript) {
  const std::vector<std::pair<std::string, bool>> cases{
      {"{SCRIPT}abc", true},   {"{script}abc", true},    {"{ScRiPt}", true},    {"{SCRIPT}{SCRIPT}", true},
      {" {SCRIPT}abc", false}, {"{SCRIPT", false},       {"SCRIPT}abc", false}, {"{SCRIPT abc", false},
      {"\n{SCRIPT}", false},   {"{\u015FCRIPT}", false},
  };
  for (const auto& [text, script] : cases) {
    Do("settext", kText, text);
    EXPECT_EQ(Get(kButton, "Caption"), script ? "Script" : "Insert") << text;
    EXPECT_EQ(Get(kButton, "Picture"), script ? "Image4" : "Image3");
    EXPECT_EQ(Get(kButton, "ToolTipText"),
              script ? "Execute the current Script entry" : "Use the current text as clipboard entry");
  }
}

TEST_F(ScriptTest, TheButtonTypesTheField) {
  Copy("kept");
  const Values writes = Do("clip.writes");
  Do("settext", kText, "{script}Hello{ENTER}\r\n^a");
  Do("click", kButton);
  EXPECT_EQ(Do("keys"), (Values{"Hello{ENTER}\r\n^a"}));
  EXPECT_TRUE(Hidden()) << "whatever the setting Minimize says";
  EXPECT_EQ(Status(), "Executed");
  Show();
  Do("settext", kText, "{SCRIPT}");
  Do("key", kList, "Enter");
  EXPECT_EQ(Do("keys"), (Values{""})) << "nothing is typed";
  EXPECT_TRUE(Boxes().empty());
  EXPECT_TRUE(Hidden());
  EXPECT_EQ(Do("clip.writes"), writes);
  EXPECT_EQ(Rows("List2"), (Values{"kept"}));
}

TEST_F(ScriptTest, AUsedScriptMovesToTheTopIfSet) {
  AddPad("s", "{Script}abc");
  AddPad("t", "text");
  const int writes = Writes("PadData.qbx");
  Do("dblrow", kList, "1");
  EXPECT_EQ(Do("keys"), (Values{"abc"}));
  EXPECT_TRUE(Hidden());
  EXPECT_EQ(Rows("List1"), (Values{"t", "s"}));
  EXPECT_EQ(Writes("PadData.qbx"), writes);
  Set("LastSort", "1");
  for (const bool byButton : {false, true}) {
    Show();
    Do("dblrow", kList, "1");  // the second time "t" is at the top again
    if (byButton) {
      Do("select", kList, "1");
      Do("click", kButton);
    }
    EXPECT_EQ(Do("keys"), (Values{"abc"}));
    EXPECT_EQ(Rows("List1"), (Values{"s", "t"}));
    EXPECT_EQ(DataFile("PadData.qbx"), File("PAD", {{"s", "{Script}abc"}, {"t", "text"}}));
    EXPECT_EQ(Status(), "Executed");
  }
}

TEST_F(ScriptTest, AFailureIsToldAndLosesNothing) {
  Set("LastSort", "1");
  AddPad("bad", "{SCRIPT}{");
  AddPad("t", "text");
  Do("dblrow", kList, "1");
  EXPECT_EQ(Do("keys"), Values{});
  EXPECT_EQ(Boxes(), kError);
  EXPECT_EQ(Get("frmTray", "WindowState"), "2");
  EXPECT_EQ(Slots("PadEntries"), (Values{"{SCRIPT}{", "text"})) << "it has moved already";
  Do("pick", "mnuPad1");
  EXPECT_EQ(Boxes(), kError) << "from the tray, too";
  Show();
  Do("click", kButton);
  EXPECT_EQ(Boxes(), kError);
  Do("keys.fail", "1");
  Show();
  Do("settext", kText, "{SCRIPT}abc");
  Do("click", kButton);
  EXPECT_EQ(Boxes(), kError);
  Do("keys.fail", "0");
  Show();
  Do("click", kButton);
  EXPECT_EQ(Do("keys"), (Values{"abc"})) << "after a failure the next one runs";
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(ScriptTest, KeysGoOutWhenTheFileIsSavedAndTheWindowIsGone) {
  Set("LastSort", "1");
  AddPad("s", "{SCRIPT}abc");
  AddPad("t", "text");
  bool looked = false;
  console.World().keySender.WhileSending = [&] {
    looked = true;
    EXPECT_TRUE(Hidden());
    EXPECT_EQ(DataFile("PadData.qbx"), File("PAD", {{"s", "{SCRIPT}abc"}, {"t", "text"}}));
    Copy("from the script");
    EXPECT_EQ(Rows("List2"), (Values{"from the script"})) << "the poll goes on meanwhile";
  };
  Do("dblrow", kList, "1");
  EXPECT_TRUE(looked);
}

TEST_F(ScriptTest, NoSecondScriptJoinsOneUnderWay) {
  AddPad("one", "{SCRIPT}1");
  AddPad("two", "{SCRIPT}2");
  int depth = 0;
  console.World().keySender.WhileSending = [&] {
    ASSERT_EQ(++depth, 1) << "typed into each other";
    Do("pick", "mnuPad1");
    Show();
    OpenPage(1);
    Do("dblrow", kList, "0");
    Do("click", kButton);
    Do("key", kList, "Enter");
    EXPECT_EQ(Get("frmTray", "Visible"), "1") << "what isn't started hides nothing";
    --depth;
  };
  Do("dblrow", kList, "1");
  EXPECT_EQ(Do("keys"), (Values{"1"}));
  console.World().keySender.WhileSending = {};
  Do("dblrow", kList, "0");
  EXPECT_EQ(Do("keys"), (Values{"2"}));
}

TEST_F(ScriptTest, AProgramThatEndsMeanwhileReportsNothing) {
  AddPad("one", "{SCRIPT}1");
  console.World().keySender.WhileSending = [&] {
    Do("pick", "mnuEnd");
    throw RuntimeError(errors::kPermission, "the connection is gone");
  };
  Do("dblrow", kList, "0");
  EXPECT_EQ(Do("running"), (Values{"0"}));
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(ScriptTest, OnlyAPersonsPickStartsAScript) {
  Copy("{SCRIPT}abc");
  EXPECT_EQ(Rows("List2"), (Values{"{SCRIPT}abc"}));
  Do("click", "frmTray.Command103");
  Do("drop", kList, "{SCRIPT}def");
  Advance(1000);
  OpenPage(0);
  Copy("other");
  Do("dblrow", "frmTray.List2", "1");
  EXPECT_EQ(Clipboard(), "{SCRIPT}abc");
  Do("select", "frmTray.List2", "0");
  Do("click", "frmTray.Command001");
  EXPECT_EQ(Rows("List1").size(), 2u);
  EXPECT_EQ(Do("keys"), Values{});
}

}  // namespace
}  // namespace quillbox
