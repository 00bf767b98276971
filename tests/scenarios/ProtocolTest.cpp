// The console's own rules: how requests are read, and what is refused.
#include <random>
#include <sstream>

#include "scenarios/Scenario.h"

namespace quillbox {
namespace {

class Protocol : public Scenario {
 protected:
  // A raw line and its raw answer.
  std::string Line(const std::string& line) { return console.Answer(line); }
  bool IsError(const std::string& line) { return Line(line).rfind("error\t", 0) == 0; }
  void ExpectErrors(const std::string& requests) {
    for (const Values& request : Requests(requests))
      EXPECT_TRUE(Fails(request)) << ::testing::PrintToString(request);
  }
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
  for (const std::string bad : {"", "\t", " clip.get", "clip.get\t", "clip.lock\t", "advance\t",
                                "advance\t 1", "separator\t", "folder\t"}) {
    EXPECT_TRUE(IsError(bad)) << bad;
  }
  ExpectErrors(
      "nothing; clip; CLIP.GET; clip.set a b; screen 10; screen 10 10 10; clip.lock 2; advance -1; advance "
      "1.5; advance 1e3; advance 99999999999999999999; platform x; separator ab; clock 2000-13-01 00:00:00; "
      "clock 2001-02-29 00:00:00; clock 2000-01-01 24:00:00; clock 2000-01-01; clock 0000-01-01 00:00:00; "
      "clock 2000-1-1 0:0:0; reg.set HKXX a b c; reg.bytes HKCU a b 1 1; reg.bytes HKCU a b 1 zz; reg.deny "
      "HKCU yes; instance yes");
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
  ExpectErrors(
      "end; shutdown; closebox frmTray; get frmTray Visible; slots ClipEntries; click frmTray.Command6; "
      "tray.mouse 513; pick mnuShow; move frmTray 0 0; tip frmTray.Label7 0; settip frmTray.Label7 x; "
      "select frmTray.List2");
  for (const Values& request : Requests(
           "clip.get; clip.writes; reg.get HKCU a b; boxes; keys; sounds; tray; menu; writes ClipData.qbx; "
           "advance 1000; answer 6 7; keys.fail 0; clock 2001-02-03 04:05:06"))
    Do(request);
  EXPECT_EQ(Line("clock\t2001-02-03 04:05:06"), "ok") << "as one argument, too";
}

TEST_F(Protocol, WhatAPersonCannotReach) {
  Do("start");
  Show();
  Do("click", "frmTray.Text0");
  ASSERT_EQ(Get("frmTray.Label7", "Visible"), "1");
  ExpectErrors(
      "start; click frmTray.Nothing; click frmNothing.Command6; click frmTray; click Command6; click "
      "frmSettings.Command1; click frmTray.Text2; click frmTray.Timer1; key frmTray.List1 Home; key "
      "frmTray.List2 Tab; key frmTray.List2 Home meta; key frmTray.List2; key frmTray.Label7 Home; focus "
      "frmTray.Label7; focus frmTray.List3; settext frmTray.List2 x; settext frmTray.Text3 x; type "
      "frmTray.Text1 x; select frmTray.List2 1; select frmTray.Text0 0; dblrow frmTray.List2 1; dblrow "
      "frmTray.List2 -1; check frmTray.List2 0 1; drop frmTray.List1 x; dropother frmTray.List1; drag "
      "frmTray.Text0; tab frmTray.SSTab1 5; tab frmTray.SSTab1 -1; choose frmTray.SSTab1 0; spin "
      "frmTray.UpDown2 up; scroll frmTray.SSTab1 1; get frmTray.Nothing Text; get frmTray.List2 Nothing; "
      "get frmTray.Label7 Text; get frmNothing Loaded; get frmSettings Left; get frmSettings.Command1 "
      "Caption; get frmTray; get frmTray.mnuNothing Caption; get frmTray.Timer1 Caption; get frmTray.mnuEnd "
      "Text; slots Nothing; pick mnuNothing; closebox frmAbout; closebox frmNothing; tray.mouse x; move "
      "frmTray x 0; tip frmTray.Label7 x");
  EXPECT_EQ(Get("frmSettings", "Loaded"), "0");
  EXPECT_EQ(Get("frmSettings", "Visible"), "0");
  OpenPage(1);
  ExpectErrors("click frmTray.Command101; spin frmTray.UpDown2 up");  // disabled
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
  ExpectErrors("click frmTray.Command6; tray.mouse 516; pick mnuShow; move frmTray 0 0");
  Do("clip.set", "while nobody watches");
  Advance(10'000);
  EXPECT_EQ(Slots("ClipEntries"), Values{"text"});
  Do("start");
  Tick();
  EXPECT_EQ(Rows("List2"), (Values{"while nobody watches", "text"}));
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
  std::istringstream words(
      "start end shutdown running closebox advance clip.set clip.picture clip.lock get slots settext type "
      "key "
      "click dblclick focus select dblrow check spin scroll choose tab drop dropother drag move tray "
      "tray.mouse menu pick answer boxes keys keys.fail sounds writes settip tip reg.set reg.get reg.deny "
      "user separator clock version frmTray frmSettings frmAbout frmTray.List1 frmTray.List2 frmTray.List3 "
      "frmTray.Text0 frmTray.Text101 frmTray.Text3 frmTray.Text1 frmTray.SSTab1 frmTray.Command000 "
      "frmTray.Command101 frmTray.Label7 frmTray.Timer1 frmSettings.Command1 mnuClip2 mnuPad1 mnuOnTop "
      "mnuSettings mnuInfo 0 1 2 -1 250 516 99999 HKCU HKLM Text List Home ctrl up text \\u0000 \\ \xFF");
  Values pieces{""};
  for (std::string word; words >> word;) pieces.push_back(word);
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
