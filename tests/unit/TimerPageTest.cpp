// The message text, the clock's labels, and the ticks that need not be made.
#include "unit/TimerFixture.h"

namespace quillbox {
namespace {

class TimerMessageText : public TimerFixture {
 protected:
  // Puts a text in; gives where the caret is then.
  std::size_t Paste(std::size_t at, const Text& text) {
    field_.PersonEdit(Text(field_.GetText()).insert(at, text), at + text.size());
    return field_.GetSelStart();
  }
  Text TextFromClipboard(const Text& content) {
    world_.clipboard.OtherSets(content);
    Click("Command42");
    return field_.GetText();
  }
  TextBox& field_ = page_.Text13;
};

TEST_F(TimerMessageText, IsStoredAtEveryChange) {
  Type("Text13", u"H");
  EXPECT_EQ(Stored(), "H");
  field_.SetText(u"by the program");
  EXPECT_EQ(Stored(), "by the program");
  Click("Command1");
  EXPECT_EQ(Value("Text13") + Stored(), "");
  world_.registry.Deny(Hive::CurrentUser, true);
  Type("Text13", u"x");
  EXPECT_EQ(Value("Text13"), "x");
}

TEST_F(TimerMessageText, APersonsInputIsCutAt512AndNeverWhatStoodThere) {
  field_.PersonSetText(Text(511, u'a') + u"\U0001F600 and more");
  EXPECT_EQ(field_.GetText(), Text(511, u'a'));
  Type("Text13", u"bc");
  EXPECT_EQ(field_.GetText(), Text(511, u'a') + u"b");
  field_.SetText(Text(500, u'a') + u"END");
  EXPECT_EQ(Paste(1, Text(20, u'b')), 10U);
  EXPECT_EQ(field_.GetText(), Text(1, u'a') + Text(9, u'b') + Text(499, u'a') + u"END");
  Paste(0, u"more");
  EXPECT_EQ(field_.GetText(), Text(1, u'a') + Text(9, u'b') + Text(499, u'a') + u"END");
  // Half a pair isn't put in.
  field_.SetText(Text(510, u'a'));
  Paste(510, u"b\U0001F600");
  EXPECT_EQ(field_.GetText(), Text(510, u'a') + u"b");
}

TEST_F(TimerMessageText, OneThatIsLongerAlreadyCanOnlyBeShortened) {
  EXPECT_EQ(TextFromClipboard(Text(31999, u'a') + u"\U0001F600"), Text(31999, u'a'));
  EXPECT_EQ(TextFromClipboard(Text(600, u'a') + u"END"), Text(600, u'a') + u"END");
  field_.PersonDrop(Text(u"dropped"));
  Paste(603, u"more");
  Type("Text13", u"c");
  EXPECT_EQ(field_.GetText(), Text(600, u'a') + u"END");
  field_.PersonEdit(Text(597, u'a') + u"END", 600);
  EXPECT_EQ(field_.GetText(), Text(597, u'a') + u"END");
  Type("Text13", u"\b");
  EXPECT_EQ(field_.GetText(), Text(597, u'a') + u"EN");
  // All of it replaced.
  field_.PersonEdit(Text(700, u'z'), 700);
  EXPECT_EQ(field_.GetText(), Text(512, u'z'));
}

TEST_F(TimerMessageText, AClipboardWithoutTextOrOutOfReach) {
  world_.clipboard.OtherSetsPicture();
  Click("Command42");
  EXPECT_EQ(Value("Text13"), "");
  field_.SetText(u"kept");
  world_.clipboard.OtherSets(u"other");
  world_.clipboard.OtherLocks(true);
  Click("Command43");
  Click("Command42");
  // The clock's labels copy, too; a failure only keeps the poll going.
  Click("Label5");
  EXPECT_EQ(window_.SSTab1.GetTab(), 3);
  EXPECT_TRUE(window_.Timer1.GetEnabled());
  world_.clipboard.OtherLocks(false);
  EXPECT_EQ(world_.clipboard.Content(), u"other");
  EXPECT_EQ(Value("Text13"), "kept");
}

using TimerClockTest = TimerFixture;

TEST_F(TimerClockTest, ShowsTheTimeFromTheFirstTickOnMadeOnceASecond) {
  const auto shown = [this] { return Caption("Label8") + " " + Caption("Label5"); };
  world_.clock.Set({2024, 2, 29, 23, 59, 59});
  EXPECT_EQ(shown(), " ");
  Pass(250);
  EXPECT_EQ(shown(), "2024-02-29 23:59:59");
  PassSeconds(1);
  EXPECT_EQ(shown(), "2024-03-01 00:00:00");
  const int before = clock_.texts;
  PassSeconds(10);
  EXPECT_EQ(clock_.texts - before, 20);
}

// An event loop that leaves out the ticks of which nobody would see anything.
class TimerSleep : public TimerFixture {
 protected:
  struct WakeRecorder : TimerHost {
    void Started(Timer&) override {}
    void Stopped(Timer&) override {}
    void Woken(Timer& timer, bool) override { woken.push_back(timer.Name()); }
    std::vector<std::string> woken;
  };
  bool Sleeps() { return window_.Timer2.IsIdle(); }
  void TickUnlessIdle(const LocalTime& time) {
    world_.clock.Set(time);
    if (!Sleeps()) window_.Timer2.Fire();
  }
};

TEST_F(TimerSleep, OnlyWhileNothingRunsAndNobodyLooks) {
  EXPECT_FALSE(Sleeps());
  form_.Hide();
  EXPECT_TRUE(Sleeps());
  form_.SetVisible(true);
  EXPECT_FALSE(Sleeps());
  window_.SSTab1.SetTab(2);
  EXPECT_TRUE(Sleeps());
  page_.ShowAgainInTwoMinutes();
  EXPECT_FALSE(Sleeps());
  form_.Hide();
  EXPECT_FALSE(Sleeps());
  page_.ShowAgainInTwoMinutes();
  EXPECT_TRUE(Sleeps());
}

TEST_F(TimerSleep, WhoeverLooksFindsTheTimeOfNow) {
  TickUnlessIdle(At(10, 0, 0));
  form_.Hide();
  TickUnlessIdle(At(11, 30, 0));
  EXPECT_EQ(Caption("Label5"), "10:00:00");
  page_.CatchUp();
  EXPECT_EQ(Caption("Label5"), "11:30:00");
  // With no tick left out there is nothing to catch up with.
  form_.SetVisible(true);
  TickUnlessIdle(At(11, 30, 1));
  world_.clock.Set(At(11, 30, 2));
  page_.CatchUp();
  EXPECT_EQ(Caption("Label5"), "11:30:01");
}

TEST_F(TimerSleep, ACountdownThatIsStartedAfterwardsCountsFromNow) {
  TickUnlessIdle(At(10, 0, 0));
  form_.Hide();
  TickUnlessIdle(At(11, 30, 0));
  WakeRecorder recorder;
  dispatcher_.UseTimerHost(&recorder);
  page_.ShowAgainInTwoMinutes();
  EXPECT_EQ(recorder.woken, std::vector<std::string>{"Timer2"});
  dispatcher_.UseTimerHost(&world_.timers);
  TickUnlessIdle(At(11, 30, 0));
  EXPECT_EQ(Fields(), "0 2 0");
  TickUnlessIdle(At(11, 30, 1));
  EXPECT_EQ(Fields(), "0 1 59");
}

}  // namespace
}  // namespace quillbox
