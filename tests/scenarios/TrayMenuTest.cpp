// The tray: its icon's tip and mouse, and what the menu shows. What its items do is in TrayCommandsTest.cpp.
#include "scenarios/RecordScenario.h"

namespace quillbox {
namespace {

class TrayMenu : public RecordScenario {
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
  // Captions of items; "(hidden)" for one that isn't shown.
  void ExpectCaptions(const std::vector<std::pair<std::string, std::string>>& expected) {
    const auto items = Open();
    for (const auto& [item, caption] : expected) {
      std::string found = "(hidden)";
      for (const auto& [name, shown] : items) {
        if (name == item) found = shown;
      }
      EXPECT_EQ(found, caption) << item;
    }
  }
  void WritePad(const Values& names) {
    std::vector<Values> entries;
    for (const std::string& name : names) entries.push_back({name, "the text behind " + name});
    WriteData("PadData.qbx", File("PAD", entries));
  }
};

TEST_F(TrayMenu, TheTipShowsTheClipboard) {
  struct Case {
    std::string text;
    std::string tip;
  };
  const auto x = [](int count) { return std::string(static_cast<std::size_t>(count), 'x'); };
  const Case inLines[] = {
      {"Hello", "Quillbox (L:5)\nHello"},        {"a\r\nb", "Quillbox (L:4)\na\nb"},
      {"a&b &&", "Quillbox (L:6)\na&&&b &&&&&"}, {x(1000), "Quillbox (L:1000)\n" + x(43) + "..."},
      {x(48), "Quillbox (L:48)\n" + x(48)},
  };
  const Case inOneLine[] = {
      {"a\r\nb", "Quillbox - a||b"},
      {"a&b\tc\x16 d", "Quillbox - a&&&b c  d"},
      {x(36), "Quillbox - " + x(36)},
      {x(37), "Quillbox - " + x(34) + "...  (37)"},
      // A pair stands five times.
      {std::string(12, '&') + "x", "Quillbox - " + std::string(30, '&') + "x"},
  };
  Do("start");
  EXPECT_EQ(Tip(), "Quillbox");
  for (const Case& c : inLines) {
    Copy(c.text);
    EXPECT_EQ(Tip(), c.tip);
    EXPECT_LE(Tip().size(), 64u);
  }
  Set("TrayTipMode", "1");
  for (const Case& c : inOneLine) {
    Copy(c.text);
    EXPECT_EQ(Tip(), c.tip);
  }
  Set("TrayTipMode", "0");
  Copy("again");
  EXPECT_EQ(Tip(), "Quillbox");
  Do("clip.clear");
  Set("TrayTipMode", "2");
  Tick();
  EXPECT_EQ(Tip(), "Quillbox");
  // A mode not chosen follows the platform.
  Set("TrayTipMode", "3");
  Do("platform", "1");
  Copy("Hello");
  EXPECT_EQ(Tip(), "Quillbox - Hello");
}

TEST_F(TrayMenu, TheMenuOfAnEmptyProgram) {
  Do("start");
  EXPECT_EQ(Names(),
            (Values{"mnuShow", "mnuClear", "mnuTrennlinie3", "mnuClip1", "mnuTrennlinie4", "mnuOnTop",
                    "mnuSettings", "mnuTrennlinie", "mnuInfo", "mnuStartHelp", "mnuTrennlinie2", "mnuEnd"}));
  ExpectCaptions({{"mnuClip1", "&1:  "},
                  {"mnuShow", "Show &Quillbox"},
                  {"mnuTrennlinie3", "-"},
                  {"mnuEnd", "E&xit Quillbox"}});
}

TEST_F(TrayMenu, CaptionsOfEntries) {
  Do("start");
  CopyAll({std::string(29, 'z') + "&123", "a&b", "a\r\nb\tc", std::string(33, 'y'), std::string(32, 'x')});
  ExpectCaptions({{"mnuClip1", "&1:  " + std::string(29, 'z') + "&..."},  // cut between two ampersands
                  {"mnuClip2", "&2:  a&&b"},
                  {"mnuClip3", "&3:  a||b c"},
                  {"mnuClip4", "&4:  " + std::string(30, 'y') + "..."},
                  {"mnuClip5", "&5:  " + std::string(32, 'x')}});
  Copy("sixth");
  ExpectCaptions({{"mnuClip6", "(hidden)"}});
  Set("MenuEntriesLen", "0");
  ExpectCaptions({{"mnuClip1", "&1:  s..."}});
}

TEST_F(TrayMenu, NormalAndCollapsedEntries) {
  Set("MenuEntriesMax", "3");
  Set("MenuEntriesSubMax", "5");
  Do("start");
  CopyAll({"a", "b", "c", "d"});
  EXPECT_EQ(Names(),
            (Values{"mnuShow", "mnuClear", "mnuTrennlinie3", "mnuClip1", "mnuClip2", "mnuClip3", "mnuClips",
                    "mnuClipSub1", "mnuClipSub2", "mnuClipSub3", "mnuClipSub4", "mnuTrennlinie4", "mnuOnTop",
                    "mnuSettings", "mnuTrennlinie", "mnuInfo", "mnuStartHelp", "mnuTrennlinie2", "mnuEnd"}));
  ExpectCaptions({{"mnuClipSub4", "  4:  d"}});
  Set("MenuEntriesMax", "0");
  Set("MenuEntriesSubMax", "0");
  const Values none = Names();
  EXPECT_EQ(Values(none.begin(), none.begin() + 3), (Values{"mnuShow", "mnuClear", "mnuTrennlinie4"}));
  Set("MenuEntriesSubMax", "1");
  ExpectCaptions({{"mnuTrennlinie3", "-"},
                  {"mnuClips", "Clip Entries"},
                  {"mnuClipSub1", "  1:  a"},
                  {"mnuClipSub2", "(hidden)"}});
  Set("MenuEntriesMax", "10");
  Set("MenuEntriesSubMax", "25");
  for (int i = 30; i > 0; --i) Copy("text " + std::to_string(i));
  ExpectCaptions({{"mnuClip10", "&0:  text 10"},
                  {"mnuClipSub9", "  9:  text 9"},
                  {"mnuClipSub10", "10:  text 10"},
                  {"mnuClipSub25", "25:  text 25"}});
}

TEST_F(TrayMenu, PadEntriesShowTheirNames) {
  WritePad({"one & two", "second"});
  Do("start");
  ExpectCaptions({{"mnuPads", "Pad Entries"}, {"mnuPadSub1", "  1:  one && two"}, {"mnuPad1", "(hidden)"}});
  Set("MenuEntriesMax2", "2");
  ExpectCaptions({{"mnuPad2", "2:  second"}, {"mnuPad3", "(hidden)"}});
  Set("MenuEntriesMax2", "0");
  Set("MenuEntriesSubMax2", "0");
  ExpectCaptions({{"mnuTrennlinie5", "(hidden)"}});
}

TEST_F(TrayMenu, TheMouse) {
  Do("start");
  Do("tray.mouse", "515");
  EXPECT_FALSE(Is("frmTray", "Visible"));
  Do("tray.mouse", "513");
  EXPECT_TRUE(Is("frmTray", "Visible"));
  Do("end");
  Set("ClicksToShow", "2");
  Do("start");
  for (const char* message : {"513", "514", "517", "519"}) Do("tray.mouse", message);
  EXPECT_FALSE(Is("frmTray", "Visible"));
  EXPECT_EQ(Do("menu"), Values{});
  Do("tray.mouse", "515");
  EXPECT_TRUE(Is("frmTray", "Visible"));
}

}  // namespace
}  // namespace quillbox
