// The ticks of the clock that need not be made: what the event loop leaves out, and what wakes it.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "base/Utf8.h"
#include "core/window/MainWindow.h"
#include "memory/MemoryWorld.h"
#include "platform/forms/Dispatcher.h"
#include "platform/forms/Form.h"
#include "timer/TimerPage.h"

namespace quillbox {
namespace {

class TimerSleep : public testing::Test {
 protected:
  struct WakeRecorder : TimerHost {
    void Started(Timer&) override {}
    void Stopped(Timer&) override {}
    void Woken(Timer& timer, bool) override { woken.push_back(timer.Name()); }
    std::vector<std::string> woken;
  };
  struct TimedDispatcher : Dispatcher {
    explicit TimedDispatcher(TimerHost& host) { UseTimerHost(&host); }
  };

  TimerSleep() {
    form_.Load();
    form_.SetVisible(true);
    window_.SSTab1.SetTab(static_cast<int>(Page::Timer));
  }
  bool Sleeps() { return window_.Timer2.IsIdle(); }
  void TickUnlessIdle(int hour, int minute, int second) {
    world_.clock.Set({2024, 5, 17, hour, minute, second});
    if (!Sleeps()) window_.Timer2.Fire();
  }
  std::string Time() { return ToUtf8(dynamic_cast<Label&>(*form_.Find("Label5")).GetCaption()); }

  // Minutes and seconds of the countdown.
  std::string Left() {
    const auto text = [this](const char* field) {
      return dynamic_cast<TextBox&>(*form_.Find(field)).GetText();
    };
    return ToUtf8(text("Text17") + u" " + text("Text14"));
  }

  MemoryWorld world_;
  TimedDispatcher dispatcher_{world_.timers};
  Form form_{dispatcher_, "frmTray", u"Quillbox"};
  Norvane settings_{world_.registry, world_.system};
  MainWindow window_{form_, settings_, world_.platform};
  FormSlot<frmMessage> message_{dispatcher_, [this] {
                                  return std::make_unique<frmMessage>(
                                      dispatcher_, window_, settings_, world_.sound,
                                      [this] { page_.ShowAgainInTwoMinutes(); });
                                }};
  TimerPage page_{window_, settings_, world_.clipboard, world_.clock, message_};
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

TEST_F(TimerSleep, WhoeverLooksOrStartsACountdownFindsTheTimeOfNow) {
  TickUnlessIdle(10, 0, 0);
  form_.Hide();
  TickUnlessIdle(11, 30, 0);
  EXPECT_EQ(Time(), "10:00:00");
  page_.CatchUp();
  EXPECT_EQ(Time(), "11:30:00");
  TickUnlessIdle(11, 40, 0);
  WakeRecorder recorder;
  dispatcher_.UseTimerHost(&recorder);
  page_.ShowAgainInTwoMinutes();
  EXPECT_EQ(recorder.woken, std::vector<std::string>{"Timer2"});
  dispatcher_.UseTimerHost(&world_.timers);
  TickUnlessIdle(11, 40, 0);
  EXPECT_EQ(Left(), "2 0");
  TickUnlessIdle(11, 40, 1);
  EXPECT_EQ(Left(), "1 59");
  // With no tick left out there is nothing to catch up with.
  world_.clock.Set({2024, 5, 17, 11, 40, 2});
  page_.CatchUp();
  EXPECT_EQ(Left(), "1 59");
}

}  // namespace
}  // namespace quillbox
