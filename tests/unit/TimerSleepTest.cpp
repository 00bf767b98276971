// The ticks of the clock that need not be made: what the event loop leaves out, and what wakes it.
#include <gtest/gtest.h>

#include <string>

#include "base/Utf8.h"
#include "core/app/frmTray.h"
#include "memory/MemoryWorld.h"

namespace quillbox {
namespace {

class TimerSleep : public testing::Test, protected TimerHost {
 protected:
  TimerSleep() {
    dispatcher_.UseTimerHost(this);
    form_.Load();
    form_.SetVisible(true);
    tray_.window.SSTab1.SetTab(static_cast<int>(Page::Timer));
  }
  void Started(Timer&) override {}
  void Stopped(Timer&) override {}
  void Woken(Timer& timer, bool) override { woken_ = timer.Name(); }
  bool Sleeps() { return tray_.window.Timer2.IsIdle(); }
  // The time that is shown and the minutes and seconds that are left.
  std::string ShownAt(int hour, int minute, int second) {
    world_.clock.Set({2024, 5, 17, hour, minute, second});
    if (!Sleeps()) tray_.window.Timer2.Fire();
    const auto& fields = page_.fields;
    return ToUtf8(page_.labels.Label5.GetCaption() + u" " + fields.Text17.GetText() + u":" +
                  fields.Text14.GetText());
  }

  MemoryWorld world_;
  std::string woken_;
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
  EXPECT_EQ(ShownAt(10, 0, 0), "10:00:00 0:0");
  form_.Hide();
  EXPECT_EQ(ShownAt(11, 30, 0), "10:00:00 0:0");
  page_.CatchUp();
  EXPECT_EQ(ShownAt(11, 40, 0), "11:30:00 0:0");
  woken_.clear();
  page_.ShowAgainInTwoMinutes();
  EXPECT_EQ(woken_, "Timer2");
  EXPECT_EQ(ShownAt(11, 40, 0), "11:40:00 2:0");
  EXPECT_EQ(ShownAt(11, 40, 1), "11:40:01 1:59");
  // With no tick left out there is nothing to catch up with.
  world_.clock.Set({2024, 5, 17, 11, 40, 2});
  page_.CatchUp();
  EXPECT_EQ(ToUtf8(page_.fields.Text14.GetText()), "59");
}

}  // namespace
}  // namespace quillbox
