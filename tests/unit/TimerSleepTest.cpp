// The ticks of the clock that need not be made: what the event loop leaves out, and what wakes it.
#include <gtest/gtest.h>

#include <string>

#include "base/Utf8.h"
#include "core/app/frmTray.h"
#include "memory/MemoryWorld.h"

namespace quillbox {
namespace {

class TimerSleep : public testing::Test {
 protected:
  struct WakeRecorder : TimerHost {
    void Started(Timer&) override {}
    void Stopped(Timer&) override {}
    void Woken(Timer& timer, bool) override { woken += timer.Name(); }
    std::string woken;
  };

  TimerSleep() {
    dispatcher_.UseTimerHost(&host_);
    form_.Load();
    form_.SetVisible(true);
    tray_.window.SSTab1.SetTab(static_cast<int>(Page::Timer));
  }
  bool Sleeps() { return tray_.window.Timer2.IsIdle(); }
  void TickUnlessIdle(int hour, int minute, int second) {
    world_.clock.Set({2024, 5, 17, hour, minute, second});
    if (!Sleeps()) tray_.window.Timer2.Fire();
  }
  std::string Time() { return ToUtf8(page_.labels.Label5.GetCaption()); }
  std::string Left() { return ToUtf8(page_.fields.Text17.GetText() + u":" + page_.fields.Text14.GetText()); }

  MemoryWorld world_;
  WakeRecorder host_;
  Dispatcher dispatcher_;
  frmTray tray_{dispatcher_, world_.platform};
  Form& form_ = tray_.form;
  TimerPage& page_ = tray_.timerPage;
};

TEST_F(TimerSleep, OnlyWhileNothingRunsAndNobodyLooks) {
  EXPECT_FALSE(Sleeps());
  form_.Hide();
  EXPECT_TRUE(Sleeps());
  form_.SetVisible(true);
  EXPECT_FALSE(Sleeps());
  tray_.window.SSTab1.SetTab(2);
  EXPECT_TRUE(Sleeps());
  page_.ShowAgainInTwoMinutes();
  EXPECT_FALSE(Sleeps());
  page_.ShowAgainInTwoMinutes();
  EXPECT_TRUE(Sleeps());
}

TEST_F(TimerSleep, WhoeverLooksOrStartsACountdownFindsTheTimeOfNow) {
  TickUnlessIdle(10, 0, 0);
  form_.Hide();
  TickUnlessIdle(11, 30, 0);
  EXPECT_EQ(Time(), "10:00:00");
  page_.CatchUp();
  EXPECT_EQ(Time(), "11:30:00");
  TickUnlessIdle(11, 40, 0);
  host_.woken.clear();
  page_.ShowAgainInTwoMinutes();
  EXPECT_EQ(host_.woken, "Timer2");
  TickUnlessIdle(11, 40, 0);
  EXPECT_EQ(Left(), "2:0");
  TickUnlessIdle(11, 40, 1);
  EXPECT_EQ(Left(), "1:59");
  // With no tick left out there is nothing to catch up with.
  world_.clock.Set({2024, 5, 17, 11, 40, 2});
  page_.CatchUp();
  EXPECT_EQ(Left(), "1:59");
}

}  // namespace
}  // namespace quillbox
