#include <random>

#include "scenarios/Scenario.h"

namespace quillbox {
namespace {

class Protocol : public Scenario {
 protected:
  // A raw line and its raw answer.
  std::string Line(const std::string& line) { return console.Answer(line); }
  bool IsError(const std::string& line) { return Line(line).rfind("error\t", 0) == 0; }
};

TEST_F(Protocol, Escapes) {
  EXPECT_EQ(Line("clip.set\ta\\tb\\nc\\rd\\\\e\\u0041\\u00E9\\ud83d\\ude00"), "ok");
  EXPECT_EQ(Line("clip.get"), "ok\ta\\tb\\nc\\rd\\\\eA\xC3\xA9\xF0\x9F\x98\x80");
  EXPECT_EQ(Line("clip.set\t\\u0000\\u0001\\u007f\\u0085\\u2028\\ud800x\\udc00"), "ok");
  EXPECT_EQ(Line("clip.get"), "ok\t\\u0000\\u0001\\u007f\\u0085\\u2028\\ud800x\\udc00");
  for (const char* bad : {"\\", "\\x", "\\u", "\\u12", "\\u12G4", "\\U0041", "\\ "}) {
    EXPECT_TRUE(IsError(std::string("clip.set\t") + bad)) << bad;
  }
  EXPECT_TRUE(IsError("clip.set\t\xFF"));
  EXPECT_TRUE(IsError("clip.set\t\xED\xA0\x80"));
}

TEST_F(Protocol, LinesAndArguments) {
  EXPECT_EQ(Line("clip.set\ttext\r"), "ok");
  EXPECT_EQ(Line("clip.get\r"), "ok\ttext");
  EXPECT_EQ(Line("clip.set\t"), "ok") << "a last argument may be empty";
  EXPECT_EQ(Line("clip.get"), "ok\t");
  EXPECT_EQ(Line("clip.set\ttext"), "ok");
  EXPECT_EQ(Line("clip.set"), "ok") << "or missing";
  EXPECT_EQ(Line("clip.get"), "ok\t");
  EXPECT_EQ(Line(std::string("clip.set\ta\0b", 12)), "ok");
  EXPECT_EQ(Line("clip.get"), "ok\ta\\u0000b");
  for (const char* bad : {"",
                          "\t",
                          "nothing",
                          "clip",
                          "CLIP.GET",
                          " clip.get",
                          "clip.get\t",
                          "clip.set\ta\tb",
                          "screen\t10",
                          "screen\t10\t10\t10",
                          "clip.lock\t2",
                          "clip.lock\t",
                          "advance\t",
                          "advance\t-1",
                          "advance\t1.5",
                          "advance\t1e3",
                          "advance\t99999999999999999999",
                          "advance\t 1",
                          "platform\tx",
                          "separator\tab",
                          "separator\t",
                          "folder\t",
                          "clock\t2000-13-01\t00:00:00",
                          "clock\t2001-02-29\t00:00:00",
                          "clock\t2000-01-01\t24:00:00",
                          "clock\t2000-01-01",
                          "clock\t0000-01-01\t00:00:00",
                          "clock\t2000-1-1\t0:0:0",
                          "reg.set\tHKXX\ta\tb\tc",
                          "reg.bytes\tHKCU\ta\tb\t1\t1",
                          "reg.bytes\tHKCU\ta\tb\t1\tzz",
                          "reg.deny\tHKCU\tyes",
                          "instance\tyes"}) {
    EXPECT_TRUE(IsError(bad)) << bad;
  }
}

TEST_F(Protocol, LinesOfAnySize) {
  const std::size_t large = 10'000'000;
  EXPECT_TRUE(IsError(std::string(large, 'x')));
  EXPECT_TRUE(IsError(std::string(large, '\t')));
  EXPECT_TRUE(IsError("clip.set\t" + std::string(large + 1, '\\')));
  EXPECT_EQ(Line("start"), "ok");
  EXPECT_EQ(Line("clip.set\t" + std::string(large, 'x')), "ok");
  EXPECT_EQ(Line("advance\t250"), "ok");
  EXPECT_EQ(Get("frmTray.Text0", "Text").size(), 32000u);
  EXPECT_EQ(Line("clip.get").size(), large + 3);
}

TEST_F(Protocol, BeforeTheStart) {
  EXPECT_EQ(Line("running"), "ok\t0");
  for (const char* early :
       {"end", "shutdown", "closebox\tfrmTray", "get\tfrmTray\tVisible", "slots\tClipEntries",
        "click\tfrmTray.Command6", "tray.mouse\t513", "pick\tmnuShow", "move\tfrmTray\t0\t0",
        "tip\tfrmTray.Label7\t0", "settip\tfrmTray.Label7\tx", "select\tfrmTray.List2"}) {
    EXPECT_TRUE(IsError(early)) << early;
  }
  for (const char* early : {"clip.get", "clip.writes", "reg.get\tHKCU\ta\tb", "boxes", "keys", "sounds",
                            "tray", "menu", "writes\tClipData.qbx", "advance\t1000", "answer\t6\t7",
                            "keys.fail\t0", "clock\t2001-02-03\t04:05:06", "clock\t2001-02-03 04:05:06"}) {
    EXPECT_FALSE(IsError(early)) << early;
  }
}

TEST_F(Protocol, WhatAPersonCannotReach) {
  Do("start");
  Show();
  EXPECT_TRUE(IsError("start"));
  Do("click", "frmTray.Text0");
  ASSERT_EQ(Get("frmTray.Label7", "Visible"), "1");
  for (const char* bad : {"click\tfrmTray.Nothing",
                          "click\tfrmNothing.Command6",
                          "click\tfrmTray",
                          "click\tCommand6",
                          "click\tfrmSettings.Command1",
                          "click\tfrmTray.Text2",
                          "click\tfrmTray.Timer1",
                          "key\tfrmTray.List1\tHome",
                          "key\tfrmTray.List2\tTab",
                          "key\tfrmTray.List2\tHome\tmeta",
                          "key\tfrmTray.List2",
                          "focus\tfrmTray.Label7",
                          "key\tfrmTray.Label7\tHome",
                          "focus\tfrmTray.List3",
                          "settext\tfrmTray.List2\tx",
                          "settext\tfrmTray.Text3\tx",
                          "type\tfrmTray.Text1\tx",
                          "select\tfrmTray.List2\t1",
                          "select\tfrmTray.Text0\t0",
                          "dblrow\tfrmTray.List2\t1",
                          "dblrow\tfrmTray.List2\t-1",
                          "check\tfrmTray.List2\t0\t1",
                          "drop\tfrmTray.List1\tx",
                          "dropother\tfrmTray.List1",
                          "drag\tfrmTray.Text0",
                          "tab\tfrmTray.SSTab1\t5",
                          "tab\tfrmTray.SSTab1\t-1",
                          "choose\tfrmTray.SSTab1\t0",
                          "spin\tfrmTray.UpDown2\tup",
                          "scroll\tfrmTray.SSTab1\t1",
                          "get\tfrmTray.Nothing\tText",
                          "get\tfrmTray.List2\tNothing",
                          "get\tfrmTray.Label7\tText",
                          "get\tfrmNothing\tLoaded",
                          "get\tfrmSettings\tLeft",
                          "get\tfrmSettings.Command1\tCaption",
                          "get\tfrmTray",
                          "get\tfrmTray.mnuNothing\tCaption",
                          "get\tfrmTray.Timer1\tCaption",
                          "get\tfrmTray.mnuEnd\tText",
                          "slots\tNothing",
                          "pick\tmnuNothing",
                          "closebox\tfrmAbout",
                          "closebox\tfrmNothing",
                          "tray.mouse\tx",
                          "move\tfrmTray\tx\t0",
                          "tip\tfrmTray.Label7\tx"}) {
    EXPECT_TRUE(IsError(bad)) << bad;
  }
  EXPECT_EQ(Get("frmSettings", "Loaded"), "0");
  EXPECT_EQ(Get("frmSettings", "Visible"), "0");
  Do("tab", "frmTray.SSTab1", "1");
  EXPECT_TRUE(IsError("click\tfrmTray.Command101")) << "disabled";
  EXPECT_TRUE(IsError("spin\tfrmTray.UpDown2\tup")) << "disabled";
}

TEST_F(Protocol, ListsOfValues) {
  Do("start");
  EXPECT_EQ(Line("get\tfrmTray.List2\tList"), "ok") << "no rows";
  Do("clip.clear");
  Copy("text");
  Do("clip.clear");
  Tick();
  EXPECT_EQ(Line("get\tfrmTray.List2\tList"), "ok\t\ttext");
  EXPECT_EQ(Line("get\tfrmTray.List2\tSelected"), "ok\t0\t0");
  EXPECT_EQ(Do("slots", "PadEntries"), Values(101));
}

TEST_F(Protocol, NamesAndModifiersInTheirShortForm) {
  Do("start");
  for (const char* item : {"mnuOnTop", "frmTray.mnuOnTop"}) {
    EXPECT_EQ(Do("get", item, "Checked"), Values{"1"}) << item;
  }
  Copy("b");
  Copy("a");
  Show();
  Do("key", "frmTray.List2", "End", "");
  EXPECT_EQ(Get("frmTray.List2", "ListIndex"), "1") << "a last argument may be empty";
  EXPECT_TRUE(IsError("key\tfrmTray.List2\tHome\t\tctrl"));
}

TEST_F(Protocol, AfterTheEnd) {
  Do("start");
  Show();
  Copy("text");
  Do("end");
  EXPECT_EQ(Line("running"), "ok\t0");
  EXPECT_EQ(Line("end"), "ok\t0");
  EXPECT_EQ(Line("shutdown"), "ok\t0");
  EXPECT_EQ(Line("get\tfrmTray.List2\tList"), "ok\ttext");
  EXPECT_EQ(Line("get\tfrmTray\tLoaded"), "ok\t0");
  EXPECT_EQ(Slots("ClipEntries"), Values{"text"});
  for (const char* late :
       {"click\tfrmTray.Command6", "tray.mouse\t516", "pick\tmnuShow", "move\tfrmTray\t0\t0"}) {
    EXPECT_TRUE(IsError(late)) << late;
  }
  Do("clip.set", "while nobody watches");
  Advance(10'000);
  EXPECT_EQ(Slots("ClipEntries"), Values{"text"});
  Do("start");
  Tick();
  EXPECT_EQ(Rows("List2"), (Values{"while nobody watches", "text"}));
}

TEST_F(Protocol, AnswersForTheBoxesToCome) {
  Do("start");
  Show();
  OpenPage(1);
  AddPad("a", "text");
  AddPad("b", "text 2");
  Do("answer", "7", "6");
  Do("click", "frmTray.Command105");
  EXPECT_EQ(Rows("List1").size(), 2u);
  EXPECT_EQ(Do("boxes").at(0), "68");
  Do("click", "frmTray.Command105");
  EXPECT_EQ(Rows("List1").size(), 0u);
}

TEST_F(Protocol, ADayPasses) {
  Do("start");
  Do("clock", "2000-02-28", "23:59:59");
  Advance(24 * 60 * 60 * 1000);
  EXPECT_EQ(console.World().clock.TimeText(), u"23:59:59");
  EXPECT_EQ(console.World().clock.DateText(), u"2000-02-29");
  Advance(1000);
  EXPECT_EQ(console.World().clock.DateText(), u"2000-03-01");
}

// Requests of right and wrong pieces in any order. Each is answered by one line, and the program lives on.
TEST_F(Protocol, AnyLineIsAnswered) {
  const unsigned seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  const Values pieces{"start",
                      "end",
                      "shutdown",
                      "running",
                      "closebox",
                      "advance",
                      "clip.set",
                      "clip.picture",
                      "clip.lock",
                      "get",
                      "slots",
                      "settext",
                      "type",
                      "key",
                      "click",
                      "dblclick",
                      "focus",
                      "select",
                      "dblrow",
                      "check",
                      "spin",
                      "scroll",
                      "choose",
                      "tab",
                      "drop",
                      "dropother",
                      "drag",
                      "move",
                      "tray",
                      "tray.mouse",
                      "menu",
                      "pick",
                      "answer",
                      "boxes",
                      "keys",
                      "keys.fail",
                      "sounds",
                      "writes",
                      "settip",
                      "tip",
                      "reg.set",
                      "reg.get",
                      "reg.deny",
                      "user",
                      "separator",
                      "clock",
                      "version",
                      "frmTray",
                      "frmSettings",
                      "frmAbout",
                      "frmTray.List1",
                      "frmTray.List2",
                      "frmTray.List3",
                      "frmTray.Text0",
                      "frmTray.Text101",
                      "frmTray.Text3",
                      "frmTray.Text1",
                      "frmTray.SSTab1",
                      "frmTray.Command000",
                      "frmTray.Command101",
                      "frmTray.Label7",
                      "frmTray.Timer1",
                      "frmSettings.Command1",
                      "mnuClip2",
                      "mnuPad1",
                      "mnuOnTop",
                      "mnuSettings",
                      "mnuInfo",
                      "0",
                      "1",
                      "2",
                      "-1",
                      "250",
                      "516",
                      "99999",
                      "HKCU",
                      "HKLM",
                      "Text",
                      "List",
                      "Home",
                      "ctrl",
                      "up",
                      "text",
                      "\\u0000",
                      "\\",
                      "\xFF",
                      ""};
  std::uniform_int_distribution<std::size_t> piece(0, pieces.size() - 1);
  std::uniform_int_distribution<int> count(0, 4);
  Do("start");
  for (int i = 0; i < 20000; ++i) {
    std::string line = pieces[piece(random)];
    for (int more = count(random); more > 0; --more) line += '\t' + pieces[piece(random)];
    if (count(random) == 0 && !line.empty()) line[random() % line.size()] = static_cast<char>(random());
    const std::string answer = console.Answer(line);
    ASSERT_TRUE(answer == "ok" || answer.rfind("ok\t", 0) == 0 || answer.rfind("error\t", 0) == 0)
        << line << " -> " << answer;
    ASSERT_EQ(answer.find_first_of("\r\n"), std::string::npos) << line;
  }
  EXPECT_EQ(Line("clip.lock\t0"), "ok");
  if (Do("running") == Values{"0"}) Do("start");
  EXPECT_EQ(Do("end"), Values{"0"});
}

}  // namespace
}  // namespace quillbox
