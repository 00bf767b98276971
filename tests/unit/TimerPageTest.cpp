// The message text, the clock's labels, and the ticks that need not be made.
#include "unit/TimerFixture.h"

namespace quillbox {
namespace {

using TimerMessageTextTest = TimerFixture;
using TimerClockTest = TimerFixture;

TEST_F(TimerMessageTextTest, IsStoredAtEveryChange) {
  page_.Text13.PersonCharacter(u'H');
  EXPECT_EQ(Stored(), "H");
  page_.Text13.SetText(u"by the program");
  EXPECT_EQ(Stored(), "by the program");
  Click("Command1");
  EXPECT_EQ(Value("Text13"), "");
  EXPECT_EQ(Stored(), "");
  world_.registry.Deny(Hive::CurrentUser, true);
  page_.Text13.PersonCharacter(u'x');
  EXPECT_EQ(Value("Text13"), "x");
}

TEST_F(TimerMessageTextTest, HoldsAtMost512CharactersByPerson) {
  page_.Text13.PersonSetText(Text(511, u'a') + u"\U0001F600 and more");
  EXPECT_EQ(page_.Text13.GetText(), Text(511, u'a'));
  page_.Text13.PersonCharacter(u'b');
  page_.Text13.PersonCharacter(u'c');
  EXPECT_EQ(page_.Text13.GetText(), Text(511, u'a') + u"b");
}

TEST_F(TimerMessageTextTest, CutsWhatIsPutInAndNeverWhatStoodThere) {
  TextBox& field = page_.Text13;
  const auto paste = [&](std::size_t at, const Text& text) {
    field.PersonEdit(Text(field.GetText()).insert(at, text), at + text.size());
    return field.GetSelStart();
  };
  field.SetText(Text(500, u'a') + u"END");
  EXPECT_EQ(paste(1, Text(20, u'b')), 10U);
  EXPECT_EQ(field.GetText(), Text(1, u'a') + Text(9, u'b') + Text(499, u'a') + u"END");
  paste(0, u"more");
  EXPECT_EQ(field.GetText(), Text(1, u'a') + Text(9, u'b') + Text(499, u'a') + u"END");
  // Half a pair isn't put in.
  field.SetText(Text(510, u'a'));
  paste(510, u"b\U0001F600");
  EXPECT_EQ(field.GetText(), Text(510, u'a') + u"b");
  // A text that came in longer from the clipboard stays, but for what is deleted from it.
  field.SetText(Text(600, u'a') + u"END");
  field.PersonDrop(Text(u"dropped"));
  paste(603, u"more");
  EXPECT_EQ(field.GetText(), Text(600, u'a') + u"END");
  field.PersonEdit(Text(597, u'a') + u"END", 10);
  EXPECT_EQ(field.GetText(), Text(597, u'a') + u"END");
  // All of it replaced.
  field.PersonEdit(Text(700, u'z'), 700);
  EXPECT_EQ(field.GetText(), Text(512, u'z'));
}

TEST_F(TimerMessageTextTest, TakesWhatTheClipboardHoldsUpTo32000) {
  world_.clipboard.OtherSets(Text(31999, u'a') + u"\U0001F600");
  Click("Command42");
  EXPECT_EQ(page_.Text13.GetText(), Text(31999, u'a'));
  world_.clipboard.OtherSets(Text(600, u'b'));
  Click("Command42");
  EXPECT_EQ(page_.Text13.GetText(), Text(600, u'b'));
  // What is too long already can't grow, but can be shortened key by key.
  page_.Text13.PersonCharacter(u'c');
  EXPECT_EQ(page_.Text13.GetText().size(), 600U);
  page_.Text13.PersonCharacter(u'\b');
  EXPECT_EQ(page_.Text13.GetText(), Text(599, u'b'));
  world_.clipboard.OtherSetsPicture();
  Click("Command42");
  EXPECT_EQ(Value("Text13"), "");
}

TEST_F(TimerMessageTextTest, GoesToTheClipboard) {
  page_.Text13.SetText(u"to copy");
  Click("Command43");
  EXPECT_EQ(world_.clipboard.Content(), u"to copy");
  EXPECT_TRUE(page_.Text13.GetText() == u"to copy");
  world_.clipboard.OtherSets(u"other");
  world_.clipboard.OtherLocks(true);
  Click("Command43");
  Click("Command42");
  world_.clipboard.OtherLocks(false);
  EXPECT_EQ(world_.clipboard.Content(), u"other");
  EXPECT_EQ(Value("Text13"), "to copy");
}

TEST_F(TimerClockTest, ShowsTheTimeFromTheFirstTickOn) {
  world_.clock.Set({2024, 2, 29, 23, 59, 59});
  EXPECT_EQ(Caption("Label5") + Caption("Label8"), "");
  Pass(250);
  EXPECT_EQ(Caption("Label5"), "23:59:59");
  EXPECT_EQ(Caption("Label8"), "2024-02-29");
  PassSeconds(1);
  EXPECT_EQ(Caption("Label5"), "00:00:00");
  EXPECT_EQ(Caption("Label8"), "2024-03-01");
}

TEST_F(TimerClockTest, MakesItsTextsOnceASecond) {
  PassSeconds(1);
  const int before = clock_.texts;
  PassSeconds(10);
  EXPECT_EQ(clock_.texts - before, 20);
}

TEST_F(TimerClockTest, AClickCopiesAndShowsTheClipPage) {
  TickAt(At(10, 11, 12));
  window_.Timer1.SetEnabled(true);
  Click("Label5");
  EXPECT_EQ(world_.clipboard.Content(), u"2024-05-17 10:11:12");
  EXPECT_EQ(window_.SSTab1.GetTab(), 0);
  EXPECT_TRUE(form_.GetVisible());
  EXPECT_TRUE(window_.Timer1.GetEnabled());
  Set(u"Minimize", u"1");
  window_.SSTab1.SetTab(3);
  Click("Label8");
  EXPECT_EQ(world_.clipboard.Content(), u"2024-05-17");
  EXPECT_FALSE(form_.GetVisible());
}

TEST_F(TimerClockTest, AClickWithTheClipboardOutOfReachOnlyKeepsThePollGoing) {
  TickAt(At(10, 11, 12));
  world_.clipboard.OtherSets(u"other");
  world_.clipboard.OtherLocks(true);
  Click("Label5");
  EXPECT_EQ(window_.SSTab1.GetTab(), 3);
  EXPECT_TRUE(window_.Timer1.GetEnabled());
  world_.clipboard.OtherLocks(false);
  EXPECT_EQ(world_.clipboard.Content(), u"other");
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
  void TickUnlessIdle(const LocalTime& time) {
    world_.clock.Set(time);
    if (!window_.Timer2.IsIdle()) window_.Timer2.Fire();
  }
};

TEST_F(TimerSleep, OnlyWhileNothingRunsAndNobodyLooks) {
  EXPECT_FALSE(window_.Timer2.IsIdle());
  form_.Hide();
  EXPECT_TRUE(window_.Timer2.IsIdle());
  form_.SetVisible(true);
  EXPECT_FALSE(window_.Timer2.IsIdle());
  window_.SSTab1.SetTab(2);
  EXPECT_TRUE(window_.Timer2.IsIdle());
  page_.ShowAgainInTwoMinutes();
  EXPECT_FALSE(window_.Timer2.IsIdle());
  form_.Hide();
  EXPECT_FALSE(window_.Timer2.IsIdle());
  page_.ShowAgainInTwoMinutes();
  EXPECT_TRUE(window_.Timer2.IsIdle());
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
