#include "unit/TimerFixture.h"

namespace quillbox {
namespace {

class TimerMessageWindow : public TimerFixture {
 protected:
  // The window comes up after a countdown of no time.
  frmMessage& Appear() {
    Click("Option2");
    Click("Option1");
    Click("Command45");
    for (int left = 2000; left > 0 && Runs(); --left) Pass(1);
    if (!Message()) throw std::logic_error("no message came up");
    return *Message();
  }
  void SetSound(TextView playWave, TextView path) {
    settings_.WriteSetting(u"MessageEntry", u"PlayWave", Text(playWave));
    settings_.WriteSetting(u"MessageEntry", u"WavePath", Text(path));
  }
  void PressEnterAndEscape() {
    for (const int code : {keys::kEnter, keys::kEscape}) {
      if (Message()) Message()->Label3.PersonKey(KeyEvent{code});
    }
  }
};

TEST_F(TimerMessageWindow, HasNoButtonForThreeSeconds) {
  frmMessage& message = Appear();
  Pass(2999);
  EXPECT_FALSE(message.Command1.GetVisible() || message.Command2.GetVisible());
  EXPECT_FALSE(message.Command1.GetEnabled() || message.Command2.GetEnabled());
  PressEnterAndEscape();
  ASSERT_EQ(Message(), &message);
  Pass(1);
  EXPECT_TRUE(message.Command1.IsReachable() && message.Command2.IsReachable());
  EXPECT_FALSE(message.Timer1.GetEnabled());
  message.Label3.PersonKey(KeyEvent{keys::kEscape});
  EXPECT_EQ(Message(), nullptr);
  Appear();
  Pass(3000);
  Message()->Label3.PersonKey(KeyEvent{keys::kEnter});
  EXPECT_EQ(Message(), nullptr);
  // Each appearance begins anew.
  EXPECT_FALSE(Appear().Command1.GetVisible());
}

TEST_F(TimerMessageWindow, CanBeClosedByThePersonAtAnyTime) {
  Appear().form.PersonClose();
  EXPECT_EQ(Message(), nullptr);
  PassSeconds(5);
  EXPECT_EQ(Message(), nullptr);
}

TEST_F(TimerMessageWindow, ComesUpInTheMiddleAboveAllWindows) {
  window_.GetOnTop().OnTopSet(form_);
  frmMessage& message = Appear();
  EXPECT_TRUE(message.form.GetVisible() && message.form.GetTopmost());
  EXPECT_FALSE(form_.GetTopmost());
  EXPECT_EQ(message.form.GetLeft(), (1024 * 15 - message.form.GetWidth()) / 2);
  EXPECT_EQ(message.form.GetTop(), (768 * 15 - message.form.GetHeight()) / 2);
  message.form.PersonClose();
  EXPECT_TRUE(form_.GetTopmost());
}

TEST_F(TimerMessageWindow, ExchangesTheTopmostStateOnlyIfTheSettingAsksForIt) {
  Set(u"AlwaysOnTop", u"2");
  form_.Hide();
  page_.ShowAgainInTwoMinutes();
  PassSeconds(121);
  ASSERT_NE(Message(), nullptr);
  EXPECT_TRUE(Message()->form.GetTopmost());
  EXPECT_FALSE(form_.GetVisible());
  // The setting is read again when the window closes.
  Set(u"AlwaysOnTop", u"1");
  Message()->form.PersonClose();
  EXPECT_TRUE(form_.GetVisible() && form_.GetTopmost());
}

TEST_F(TimerMessageWindow, PlaysTheChosenSoundOnceAnAppearance) {
  SetSound(u"1", u"/ring.wav");
  Appear();
  Appear();
  EXPECT_EQ(world_.sound.TakePlayed(), std::vector<Text>{u"/ring.wav"});
  Message()->form.PersonClose();
  Appear();
  EXPECT_EQ(world_.sound.TakePlayed(), std::vector<Text>{u"/ring.wav"});
  for (const auto& [playWave, path] :
       std::vector<std::pair<Text, Text>>{{u"1", u""}, {u"2", u"/ring.wav"}, {u"3", u"/ring.wav"}}) {
    Message()->form.PersonClose();
    SetSound(playWave, path);
    Appear();
  }
  EXPECT_TRUE(world_.sound.TakePlayed().empty());
}

TEST_F(TimerMessageWindow, ShowsAgainInTwoMinutes) {
  StartAlarm(u"0", u"0", u"2");
  PassSeconds(5);
  ASSERT_NE(Message(), nullptr);
  Message()->Command2.PersonClick();
  EXPECT_EQ(Message(), nullptr);
  EXPECT_EQ(ButtonCaption(), "Stop Countdown");
  EXPECT_EQ(Fields() + " " + StartingValues() + " " + Separators(), "0 2 0 0 2 0 h|m|s");
  PassSeconds(120);
  EXPECT_EQ(Message(), nullptr);
  PassSeconds(1);
  EXPECT_EQ(TakeMessage(), "2 minutes have passed!");
}

TEST_F(TimerMessageWindow, ShowAgainStopsACountdownThatWasStartedMeanwhileButReplacesAnAlarm) {
  Appear();
  Pass(3000);
  StartCountdown(u"0", u"30", u"0");
  Message()->Command2.PersonClick();
  EXPECT_FALSE(Runs());
  EXPECT_EQ(Fields() + " " + StartingValues(), "0 2 0 0 30 0");
  Appear();
  Pass(3000);
  StartAlarm(u"23", u"0", u"0");
  Message()->Command2.PersonClick();
  EXPECT_TRUE(Runs());
  EXPECT_EQ(Fields() + " " + Value("Text21"), "0 2 0 Countdown");
}

}  // namespace
}  // namespace quillbox
