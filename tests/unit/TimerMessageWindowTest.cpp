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
  // Whether the window stands after a key.
  bool StandsAfter(int key) {
    Message()->Label3.PersonKey(KeyEvent{key});
    return Message() != nullptr;
  }
  void SetOnTop(const Text& value) { settings_.WriteSetting(u"Intern", u"AlwaysOnTop", value); }
};

TEST_F(TimerMessageWindow, HasNoButtonForThreeSeconds) {
  for (const int key : {keys::kEnter, keys::kEscape}) {
    frmMessage& message = Appear();
    Pass(2999);
    EXPECT_FALSE(message.Command1.GetVisible() || message.Command2.GetVisible());
    EXPECT_FALSE(message.Command1.GetEnabled() || message.Command2.GetEnabled());
    ASSERT_TRUE(StandsAfter(key));
    Pass(1);
    EXPECT_TRUE(message.Command1.IsReachable() && message.Command2.IsReachable());
    EXPECT_FALSE(message.Timer1.GetEnabled());
    EXPECT_FALSE(StandsAfter(key));
  }
  // The person can close it before.
  Appear().form.PersonClose();
  EXPECT_EQ(Message(), nullptr);
  PassSeconds(5);
  EXPECT_EQ(Message(), nullptr);
}

TEST_F(TimerMessageWindow, ComesUpInTheMiddleAndTopmostWhateverTheSettingIs) {
  SetOnTop(u"2");
  form_.Hide();
  page_.ShowAgainInTwoMinutes();
  PassSeconds(121);
  ASSERT_NE(Message(), nullptr);
  const Form& message = Message()->form;
  EXPECT_TRUE(message.GetTopmost());
  EXPECT_EQ(message.GetLeft(), (1024 * 15 - message.GetWidth()) / 2);
  EXPECT_EQ(message.GetTop(), (768 * 15 - message.GetHeight()) / 2);
  EXPECT_FALSE(form_.GetVisible());
  // The setting, read again when the window closes, is for the main window.
  SetOnTop(u"1");
  Message()->form.PersonClose();
  EXPECT_TRUE(form_.GetVisible() && form_.GetTopmost());
}

TEST_F(TimerMessageWindow, PlaysASoundIfOneIsChosen) {
  const struct {
    Text playWave, path;
    std::vector<Text> played;
  } cases[] = {{u"1", u"/ring.wav", {u"/ring.wav"}},
               {u"1", u"", {}},
               {u"2", u"/ring.wav", {}},
               {u"3", u"/ring.wav", {}}};
  for (const auto& [playWave, path, played] : cases) {
    settings_.WriteSetting(u"MessageEntry", u"PlayWave", playWave);
    settings_.WriteSetting(u"MessageEntry", u"WavePath", path);
    Appear();
    EXPECT_EQ(world_.sound.TakePlayed(), played) << ToUtf8(playWave + path);
    TakeMessage();
  }
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
  EXPECT_EQ(Fields() + " " + StartingValues() + " " + Separators(), "0 2 0 0 2 0 h|m|s");
  EXPECT_EQ(Value("Text21"), "Countdown");
  EXPECT_EQ(ButtonCaption(), "Stop Countdown");
}

}  // namespace
}  // namespace quillbox
