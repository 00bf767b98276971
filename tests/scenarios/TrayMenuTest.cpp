#include "scenarios/Scenario.h"

namespace quillbox {
namespace {

class TrayMenu : public Scenario {
 protected:
  std::string Tip() { return Do("tray").at(2); }
  // Opens the menu; name and caption of each visible item.
  std::vector<std::pair<std::string, std::string>> Open() {
    Do("tray.mouse", "516");
    const Values menu = Do("menu");
    EXPECT_EQ(menu.size() % 3, 0u);
    std::vector<std::pair<std::string, std::string>> items;
    for (std::size_t i = 0; i + 2 < menu.size(); i += 3) items.emplace_back(menu[i], menu[i + 1]);
    return items;
  }
  // The names only.
  Values Names() {
    Values names;
    for (const auto& [name, caption] : Open()) names.push_back(name);
    return names;
  }
  // Caption of a visible item; "(hidden)" for any other.
  std::string Caption(const std::string& item) {
    for (const auto& [name, caption] : Open()) {
      if (name == item) return caption;
    }
    return "(hidden)";
  }
  void WritePad(const Values& names) {
    std::vector<Values> entries;
    for (const std::string& name : names) entries.push_back({name, "the text behind " + name});
    WriteData("PadData.qbx", File("PAD", entries));
  }
};

TEST_F(TrayMenu, TipModes) {
  Do("start");
  EXPECT_EQ(Tip(), "Quillbox");
  Copy("Hello");
  EXPECT_EQ(Tip(), "Quillbox (L:5)\nHello");
  Copy("a\r\nb");
  EXPECT_EQ(Tip(), "Quillbox (L:4)\na\nb");
  Copy("a&b &&");
  EXPECT_EQ(Tip(), "Quillbox (L:6)\na&&&b &&&&&");
  Copy(std::string(1000, 'x'));
  EXPECT_EQ(Tip(), "Quillbox (L:1000)\n" + std::string(43, 'x') + "...");
  EXPECT_EQ(Tip().size(), 64u);
  Copy(std::string(48, 'x'));
  EXPECT_EQ(Tip(), "Quillbox (L:48)\n" + std::string(48, 'x'));
  Set("TrayTipMode", "0");
  Copy("again");
  EXPECT_EQ(Tip(), "Quillbox");
  Do("clip.clear");
  Set("TrayTipMode", "2");
  Tick();
  EXPECT_EQ(Tip(), "Quillbox");
}

TEST_F(TrayMenu, TheTipInOneLine) {
  Set("TrayTipMode", "1");
  Do("start");
  Copy("a\r\nb");
  EXPECT_EQ(Tip(), "Quillbox - a||b");
  Copy(
      "a&b\tc\x16"
      "d");
  EXPECT_EQ(Tip(), "Quillbox - a&&&b c d");
  Copy(std::string(36, 'x'));
  EXPECT_EQ(Tip(), "Quillbox - " + std::string(36, 'x'));
  Copy(std::string(37, 'x'));
  EXPECT_EQ(Tip(), "Quillbox - " + std::string(34, 'x') + "...  (37)");
  Copy(std::string(12, '&') + "x");
  EXPECT_EQ(Tip(), "Quillbox - " + std::string(30, '&') + "x") << "a pair stands five times";
}

TEST_F(TrayMenu, AModeNotChosenFollowsThePlatform) {
  Do("platform", "1");
  Do("start");
  Copy("Hello");
  EXPECT_EQ(Tip(), "Quillbox - Hello");
}

TEST_F(TrayMenu, TheMenuOfAnEmptyProgram) {
  Do("start");
  EXPECT_EQ(Names(),
            (Values{"mnuShow", "mnuClear", "mnuTrennlinie3", "mnuClip1", "mnuTrennlinie4", "mnuOnTop",
                    "mnuSettings", "mnuTrennlinie", "mnuInfo", "mnuStartHelp", "mnuTrennlinie2", "mnuEnd"}));
  EXPECT_EQ(Caption("mnuClip1"), "&1:  ");
  EXPECT_EQ(Caption("mnuShow"), "Show &Quillbox");
  EXPECT_EQ(Caption("mnuTrennlinie3"), "-");
  EXPECT_EQ(Caption("mnuEnd"), "E&xit Quillbox");
}

TEST_F(TrayMenu, CaptionsOfEntries) {
  Do("start");
  Copy(std::string(32, 'x'));
  Copy(std::string(33, 'y'));
  Copy("a\r\nb\tc");
  Copy("a&b");
  Copy(std::string(29, 'z') + "&123");
  EXPECT_EQ(Caption("mnuClip1"), "&1:  " + std::string(29, 'z') + "&...") << "cut between the two ampersands";
  EXPECT_EQ(Caption("mnuClip2"), "&2:  a&&b");
  EXPECT_EQ(Caption("mnuClip3"), "&3:  a||b c");
  EXPECT_EQ(Caption("mnuClip4"), "&4:  " + std::string(30, 'y') + "...");
  EXPECT_EQ(Caption("mnuClip5"), "&5:  " + std::string(32, 'x'));
  Copy("sixth");
  EXPECT_EQ(Caption("mnuClip6"), "(hidden)");
  Set("MenuEntriesLen", "0");
  EXPECT_EQ(Caption("mnuClip1"), "&1:  s...");
}

TEST_F(TrayMenu, NormalAndCollapsedEntries) {
  Set("MenuEntriesMax", "3");
  Set("MenuEntriesSubMax", "5");
  Do("start");
  for (const char* text : {"d", "c", "b", "a"}) Copy(text);
  EXPECT_EQ(Names(),
            (Values{"mnuShow", "mnuClear", "mnuTrennlinie3", "mnuClip1", "mnuClip2", "mnuClip3", "mnuClips",
                    "mnuClipSub1", "mnuClipSub2", "mnuClipSub3", "mnuClipSub4", "mnuTrennlinie4", "mnuOnTop",
                    "mnuSettings", "mnuTrennlinie", "mnuInfo", "mnuStartHelp", "mnuTrennlinie2", "mnuEnd"}));
  EXPECT_EQ(Caption("mnuClipSub4"), "  4:  d");
  Set("MenuEntriesMax", "0");
  Set("MenuEntriesSubMax", "0");
  const Values none = Names();
  EXPECT_EQ(Values(none.begin(), none.begin() + 3), (Values{"mnuShow", "mnuClear", "mnuTrennlinie4"}));
  Set("MenuEntriesSubMax", "1");
  EXPECT_EQ(Caption("mnuTrennlinie3"), "-");
  EXPECT_EQ(Caption("mnuClips"), "Clip Entries");
  EXPECT_EQ(Caption("mnuClipSub1"), "  1:  a");
  EXPECT_EQ(Caption("mnuClipSub2"), "(hidden)");
}

TEST_F(TrayMenu, TheTenthAndLaterEntries) {
  Set("MenuEntriesMax", "10");
  Set("MenuEntriesSubMax", "25");
  Do("start");
  for (int i = 30; i > 0; --i) Copy("text " + std::to_string(i));
  EXPECT_EQ(Caption("mnuClip10"), "&0:  text 10");
  EXPECT_EQ(Caption("mnuClipSub9"), "  9:  text 9");
  EXPECT_EQ(Caption("mnuClipSub10"), "10:  text 10");
  EXPECT_EQ(Caption("mnuClipSub25"), "25:  text 25");
}

TEST_F(TrayMenu, PadEntriesShowTheirNames) {
  WritePad({"one & two", "second"});
  Do("start");
  EXPECT_EQ(Caption("mnuPads"), "Pad Entries");
  EXPECT_EQ(Caption("mnuPadSub1"), "  1:  one && two");
  EXPECT_EQ(Caption("mnuPad1"), "(hidden)");
  Set("MenuEntriesMax2", "2");
  EXPECT_EQ(Caption("mnuPad2"), "2:  second");
  EXPECT_EQ(Caption("mnuPad3"), "(hidden)");
  Set("MenuEntriesMax2", "0");
  Set("MenuEntriesSubMax2", "0");
  EXPECT_EQ(Caption("mnuTrennlinie5"), "(hidden)");
}

TEST_F(TrayMenu, PickingAClipIsADoubleClickOnItsRow) {
  Do("start");
  for (const char* text : {"e", "d", "c", "b", "a"}) Copy(text);
  EXPECT_EQ(Caption("mnuClip4"), "&4:  d");
  Do("pick", "mnuClip4");
  EXPECT_EQ(Do("menu"), Values{}) << "a pick closes the menu";
  EXPECT_EQ(Clipboard(), "d");
  EXPECT_EQ(Rows("List2"), (Values{"d", "a", "b", "c", "e"}));
  EXPECT_EQ(Get("frmTray.List2", "ListIndex"), "0");
  Do("pick", "mnuClipSub5");
  EXPECT_EQ(Clipboard(), "e");
  const int writes = Writes("ClipData.qbx");
  Do("pick", "mnuClip1");
  Do("pick", "mnuClip10");
  EXPECT_EQ(Writes("ClipData.qbx"), writes) << "the first item has no command, the tenth no row";
}

TEST_F(TrayMenu, PickingAPad) {
  WritePad({"first", "second"});
  Do("start");
  Do("pick", "mnuPadSub2");
  EXPECT_EQ(Clipboard(), "the text behind second");
  Tick();
  EXPECT_EQ(Rows("List2"), Values{"the text behind second"});
  Do("pick", "mnuPad3");
  EXPECT_EQ(Clipboard(), "the text behind second");
}

TEST_F(TrayMenu, AScriptFromTheTrayTypesIntoTheProgramBehind) {
  WriteData("PadData.qbx", File("PAD", {{"script", "{SCRIPT}abc{ENTER}", "second line of the script"}}));
  Do("clip.set", "stays");
  Do("start");
  Do("pick", "mnuPadSub1");
  EXPECT_EQ(Get("frmTray", "Visible"), "0");
  EXPECT_NE(Do("keys"), Values{});
  EXPECT_EQ(Do("keys"), Values{});
  Do("keys.fail", "1");
  Do("pick", "mnuPadSub1");
  EXPECT_EQ(Do("keys"), Values{});
  EXPECT_EQ(Do("boxes").size(), 3u);
}

TEST_F(TrayMenu, AlwaysOnTop) {
  Do("start");
  Do("pick", "mnuOnTop");
  EXPECT_EQ(Get("frmTray.mnuOnTop", "Checked"), "0");
  EXPECT_EQ(Get("frmTray", "Topmost"), "0");
  EXPECT_EQ(Get("frmTray", "Visible"), "1");
  EXPECT_EQ(Setting("Intern", "AlwaysOnTop"), "2");
  Do("pick", "mnuOnTop");
  EXPECT_EQ(Get("frmTray.mnuOnTop", "Checked"), "1");
  EXPECT_EQ(Setting("Intern", "AlwaysOnTop"), "1");
}

TEST_F(TrayMenu, TheMouse) {
  Do("start");
  Do("tray.mouse", "515");
  EXPECT_EQ(Get("frmTray", "Visible"), "0");
  Do("tray.mouse", "513");
  EXPECT_EQ(Get("frmTray", "Visible"), "1");
  Do("end");
  Set("ClicksToShow", "2");
  Do("start");
  for (const char* message : {"513", "514", "517", "519"}) Do("tray.mouse", message);
  EXPECT_EQ(Get("frmTray", "Visible"), "0");
  EXPECT_EQ(Do("menu"), Values{});
  Do("tray.mouse", "515");
  EXPECT_EQ(Get("frmTray", "Visible"), "1");
}

}  // namespace
}  // namespace quillbox
