// The Timer page and its message window within the whole program.
#include "scenarios/RecordScenario.h"

namespace quillbox {
namespace {

class TimerScenario : public RecordScenario {
 protected:
  TimerScenario() {
    Do("clock", "2024-05-17 10:00:00");
    Do("start");
    Show();
    OpenPage(3);
    Advance(1000);
  }
  void EnterTime(const std::string& hours, const std::string& minutes, const std::string& seconds) {
    Enter("Text16", hours);
    Enter("Text17", minutes);
    Enter("Text14", seconds);
  }
  std::string Fields() {
    return Of("Text16", "Text") + " " + Of("Text17", "Text") + " " + Of("Text14", "Text");
  }
  bool MessageIsOpen() { return console.Answer("get\tfrmMessage\tLoaded") == "ok\t1"; }
  std::string Message() { return Get("frmMessage.Label3", "Caption"); }
  std::string StoredMessage() { return Setting("MessageEntry", "MessageEntry"); }
};

TEST_F(TimerScenario, StartState) {
  EXPECT_EQ(Of("Option1", "Value") + Of("Option2", "Value"), "10");
  EXPECT_EQ(Fields(), "0 0 0");
  EXPECT_EQ(Of("Text14", "Alignment") + Of("Text16", "Alignment") + Of("Text17", "Alignment"), "111");
  EXPECT_EQ(Of("Text13", "Alignment"), "2");
  EXPECT_EQ(Of("Text15", "Text") + "|" + Of("Text21", "Text") + "|" + Of("Text18", "Text"), "|Countdown|");
  EXPECT_EQ(Of("Label3", "Caption") + Of("Label4", "Caption") + Of("Label6", "Caption"), "hms");
  EXPECT_EQ(Of("Frame1", "Caption") + "|" + Of("Frame2", "Caption") + "|" + Of("Frame3", "Caption"),
            "Current date and time|Timer settings|Message");
  EXPECT_EQ(Of("Timer2", "Interval") + " " + Of("Timer2", "Enabled"), "250 1");
  EXPECT_EQ(Of("Label8", "Caption") + " " + Of("Label5", "Caption"), "2024-05-17 10:00:01");
  for (const std::string hidden : {"Text15", "Text18", "Text19", "Text20", "Text21"}) {
    EXPECT_FALSE(Is("frmTray." + hidden, "Visible")) << hidden;
  }
}

TEST_F(TimerScenario, ACountdownEndsAlsoInTheTray) {
  EnterTime("0", "0", "5");
  Click("Command45");
  EXPECT_EQ(Of("Command45", "Caption"), "Stop Countdown");
  EXPECT_EQ(Of("Command45", "ToolTipText"), "Deactivate the Countdown");
  Click("Command6");
  EXPECT_TRUE(Hidden());
  Advance(5999);
  EXPECT_FALSE(MessageIsOpen());
  Advance(1);
  ASSERT_TRUE(MessageIsOpen());
  EXPECT_EQ(Get("frmMessage", "Caption"), "Quillbox Timer Message");
  EXPECT_EQ(Message(), "5 seconds have passed!");
  EXPECT_EQ(Get("frmMessage.Label4", "Caption"), "10:00:07");
  EXPECT_EQ(Get("frmMessage.Label1", "Caption") + Get("frmMessage.Label2", "Caption"), "QuillboxNorvane's");
  EXPECT_EQ(Get("frmMessage", "Topmost") + Get("frmTray", "Topmost"), "10");
  EXPECT_EQ(Fields(), "0 0 5");
  const std::vector<Values> buttons{
      {"Command1", "OK", "Click here to close the Timer Message Form"},
      {"Command2", "    Show again         in 2 minutes", "Close the form, but pop up again in 2 minutes"}};
  Advance(2999);
  for (const Values& button : buttons) {
    const std::string name = "frmMessage." + button[0];
    EXPECT_EQ((Values{button[0], Get(name, "Caption"), Get(name, "ToolTipText")}), button);
    EXPECT_TRUE(Fails("click", name)) << "not before three seconds";
  }
  Advance(1);
  Do("click", "frmMessage.Command1");
  EXPECT_FALSE(MessageIsOpen());
  EXPECT_TRUE(Is("frmTray", "Topmost"));
}

TEST_F(TimerScenario, ShowsAgainAfterAnAlarmWithoutATouchOfTheMainWindow) {
  Click("Option2");
  EXPECT_EQ(Fields(), "10 15 00");
  EnterTime("10", "0", "3");
  Click("Command45");
  Click("Command6");
  Advance(2000);
  ASSERT_TRUE(MessageIsOpen());
  EXPECT_EQ(Message(), "The requested time has been reached!");
  Advance(3000);
  Do("click", "frmMessage.Command2");
  EXPECT_FALSE(MessageIsOpen());
  EXPECT_EQ(Fields() + " " + Of("Text15", "Text") + " " + Of("Text21", "Text"), "0 2 0 run Countdown");
  Advance(121000);
  ASSERT_TRUE(MessageIsOpen());
  EXPECT_EQ(Message(), "2 minutes have passed!");
}

TEST_F(TimerScenario, AFieldThatTheFocusEntersStopsTheTimer) {
  EnterTime("0", "1", "75");
  Click("Command45");
  EXPECT_EQ(Fields(), "0 1 59");
  Advance(2000);
  Do("type", "frmTray.Text14", "9");
  EXPECT_EQ(Of("Command45", "Caption"), "Activate Countdown");
  EXPECT_EQ(Fields(), "0 1 57");
  Do("type", "frmTray.Text14", "\b\b8x\u0663");
  EXPECT_EQ(Fields(), "0 1 8");
}

TEST_F(TimerScenario, TheMessageTextOutlivesTheProgram) {
  Do("type", "frmTray.Text13", "Tea\rtime");
  EXPECT_EQ(StoredMessage(), "Tea\ntime");
  Enter("Text13", std::string(1000000, 'x'));
  EXPECT_EQ(StoredMessage(), std::string(512, 'x'));
  Restart();
  EXPECT_EQ(Of("Text13", "Text"), std::string(512, 'x'));
  EXPECT_EQ(Of("Text15", "Text"), "");
  Show();
  OpenPage(3);
  Click("Command1");
  EXPECT_EQ(StoredMessage(), "");
}

TEST_F(TimerScenario, AMessageOfAnyScriptComesBackOneBeyondWhatAValueHoldsDoesNot) {
  const auto afterRestart = [this](const std::string& character, int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += character;
    Do("clip.set", text);
    Show();
    OpenPage(3);
    Click("Command42");
    EXPECT_EQ(Of("Text13", "Text"), text);
    Restart();
    return Of("Text13", "Text") == text;
  };
  EXPECT_TRUE(afterRestart("a", 1024));
  EXPECT_FALSE(afterRestart("a", 1025));
  EXPECT_TRUE(afterRestart("\u0416", 512));
  EXPECT_TRUE(afterRestart("\u8336", 512));
  EXPECT_FALSE(afterRestart("\u8336", 1030));
}

TEST_F(TimerScenario, TextsGoToTheClipListLikeAnyCopiedText) {
  Enter("Text13", "my message");
  Click("Command43");
  Tick();
  EXPECT_EQ(Rows("List2").at(0), "my message");
  Click("Label5");
  Tick();
  EXPECT_EQ(Of("SSTab1", "Tab"), "0");
  EXPECT_EQ(Rows("List2").at(0), "2024-05-17 10:00:01");
  EXPECT_EQ(Of("Text0", "Text"), "2024-05-17 10:00:01");
  OpenPage(3);
  Click("Label8");
  EXPECT_EQ(Clipboard(), "2024-05-17");
}

TEST_F(TimerScenario, TheEndOfTheProgramClosesTheMessage) {
  Click("Command45");
  Advance(1000);
  ASSERT_TRUE(MessageIsOpen());
  EXPECT_EQ(Do("end"), Values{"0"});
  EXPECT_FALSE(MessageIsOpen());
  Advance(10000);
  EXPECT_FALSE(MessageIsOpen());
}

}  // namespace
}  // namespace quillbox
