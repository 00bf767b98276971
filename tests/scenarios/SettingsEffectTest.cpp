// Every setting of the dialog: what it changes, at once and after a restart.
#include <algorithm>
#include <ostream>

#include "base/Utf8.h"
#include "scenarios/SettingsScenario.h"

namespace quillbox {
namespace {

class SettingsEffectProbes : public SettingsScenario {
 public:
  std::string BoxesOfALongText() {
    Copy(std::string(32001, nextLetter_++));
    return std::to_string(Boxes().size());
  }
  std::string WindowAfterAPick() {
    Show();
    CopyAll({"new", "old"});
    Do("dblrow", "frmTray.List2", "1");
    return Hidden() ? "hidden" : "shown";
  }
  std::string OrderAfterAPick() {
    Show();
    CopyAll({"a", "b", "c"});
    Do("dblrow", "frmTray.List2", "2");
    return Rows("List2")[0] + Rows("List2")[1] + Rows("List2")[2];
  }
  std::string UsedPadEntry() {
    Show();
    FillLists(2);
    OpenPage(1);
    const std::string second = Rows("List1")[1];
    Do("dblrow", "frmTray.List1", "1");
    return Rows("List1")[0] == second ? "moves" : "stays";
  }
  std::string BoxesOfTheDeleteKey() {
    Show();
    Copy("x");
    OpenPage(0);
    Do("select", "frmTray.List2", "0");
    Do("key", "frmTray.List2", "Delete");
    return std::to_string(Boxes().size());
  }
  std::string DoneTaskAfterAnExit() {
    AddDoneTask();
    Restart();
    return DoneTask();
  }
  std::string DoneTaskAfterMinimizing() {
    AddDoneTask();
    Do("click", "frmTray.Command6");
    return DoneTask();
  }
  std::string Autostart() { return MachineValue(kRunPath, "Quillbox"); }
  std::string Clips() { return CountAfterFilling("List2"); }
  std::string Pads() { return CountAfterFilling("List1"); }
  std::string Tasks() { return CountAfterFilling("List3"); }
  std::string ClipItems() { return ItemsAfterFilling("mnuClip", 10); }
  std::string ClipSubItems() { return ItemsAfterFilling("mnuClipSub", 25); }
  std::string PadItems() { return ItemsAfterFilling("mnuPad", 10); }
  std::string PadSubItems() { return ItemsAfterFilling("mnuPadSub", 25); }
  std::string ClipItem() {
    Copy("a text of more than thirty characters");
    return Of("mnuClip1", "Caption");
  }
  std::string PadSubItem() {
    Show();
    AddPad("a name of more than thirty characters", "text");
    return Of("mnuPadSub1", "Caption");
  }
  std::string TrayTip() {
    Copy("ab");
    return Do("tray").at(2);
  }
  std::string WindowAfterAClick() {
    if (Is("frmTray", "Visible")) Do("closebox", "frmTray");
    Show();
    return Hidden() ? "hidden" : "shown";
  }
  // The names of the person's values that are others than before, in capitals.
  std::string ChangedSince(const Stored& before) {
    std::string names;
    for (const auto& value : Everything().user) {
      if (std::find(before.user.begin(), before.user.end(), value) != before.user.end()) continue;
      names += (names.empty() ? "" : "_") + ToUtf8(std::get<1>(value));
    }
    return names;
  }
  std::string Sound() {
    Show();
    OpenPage(3);
    Do("click", "frmTray.Command45");
    Advance(1000);
    Do("closebox", "frmMessage");
    const Values sounds = Do("sounds");
    return sounds.empty() ? "none" : sounds[0];
  }

 private:
  void AddDoneTask() {
    Show();
    AddToDo("done");
    Do("check", "frmTray.List3", std::to_string(Rows("List3").size() - 1), "1");
  }
  std::string DoneTask() { return Rows("List3").empty() ? "gone" : "kept"; }
  std::string CountAfterFilling(const std::string& list) {
    Show();
    FillLists(6);
    return std::to_string(Rows(list).size());
  }
  std::string ItemsAfterFilling(const std::string& items, int last) {
    Show();
    FillLists(6);
    int shown = 0;
    for (int k = 1; k <= last; ++k) shown += Is("frmTray." + items + std::to_string(k), "Visible") ? 1 : 0;
    return std::to_string(shown);
  }

  char nextLetter_ = 'a';
};

struct Effect {
  std::string name;  // of the values that it changes
  int page;
  std::string changes;  // requests; the controls are the dialog's
  std::string (SettingsEffectProbes::*probe)();
  std::string before;
  std::string after;
};

void PrintTo(const Effect& effect, std::ostream* to) { *to << effect.name; }

class SettingsEffectTest : public SettingsEffectProbes, public ::testing::WithParamInterface<Effect> {};

using Probes = SettingsEffectProbes;
const std::string kLongClip = "&1:  a text of more than thirty cha...";
const std::string kLongPad = "  1:  a name of more than thirty cha...";
const std::string kTwoLines = "Quillbox (L:2)\nab";

INSTANTIATE_TEST_SUITE_P(
    Settings, SettingsEffectTest,
    ::testing::Values(
        Effect{"Warning", 0, "click Check1", &Probes::BoxesOfALongText, "0", "1"},
        Effect{"Minimize", 0, "click Check2", &Probes::WindowAfterAPick, "shown", "hidden"},
        Effect{"LastSort", 0, "click Check3", &Probes::UsedPadEntry, "stays", "moves"},
        Effect{"AskDelKey", 0, "click Check6", &Probes::BoxesOfTheDeleteKey, "1", "0"},
        Effect{"AutoRefresh", 0, "click Check4", &Probes::DoneTaskAfterAnExit, "kept", "gone"},
        Effect{"AutoRefresh_AutoRefresh2", 0, "click Check4; click Check7", &Probes::DoneTaskAfterMinimizing,
               "kept", "gone"},
        Effect{"Insert", 0, "click Option1", &Probes::OrderAfterAPick, "cab", "cba"},
        Effect{"ClipEntriesMax", 1, "settext Text1 5", &Probes::Clips, "6", "5"},
        Effect{"PermEntriesMax", 1, "settext Text2 4", &Probes::Pads, "6", "4"},
        Effect{"ToDoEntriesMax", 1, "settext Text3 4", &Probes::Tasks, "6", "4"},
        Effect{"MenuEntriesMax", 1, "settext Text4 3", &Probes::ClipItems, "5", "3"},
        Effect{"MenuEntriesSubMax", 1, "settext Text4a 3", &Probes::ClipSubItems, "0", "3"},
        Effect{"MenuEntriesMax2", 1, "settext Text5 3", &Probes::PadItems, "0", "3"},
        Effect{"MenuEntriesSubMax2", 1, "settext Text5a 3", &Probes::PadSubItems, "6", "3"},
        Effect{"MenuEntriesLen", 2, "settext Text7 6", &Probes::ClipItem, kLongClip, "&1:  a text..."},
        Effect{"MenuEntriesLen2", 2, "settext Text6 6", &Probes::PadSubItem, kLongPad, "  1:  a name..."},
        Effect{"TrayTipMode", 2, "choose Combo1 1", &Probes::TrayTip, kTwoLines, "Quillbox - ab"},
        Effect{"ClicksToShow", 2, "click Option4", &Probes::WindowAfterAClick, "shown", "hidden"},
        Effect{"PlayWave_WavePath", 2, "click Check8; settext Text8 /gong.wav", &Probes::Sound, "none",
               "/gong.wav"}),
    [](const auto& effect) { return effect.param.name; });

TEST_P(SettingsEffectTest, ShowsAtOnceAndAfterARestart) {
  const Effect& effect = GetParam();
  const auto probe = [&] { return (this->*effect.probe)(); };
  EXPECT_EQ(probe(), effect.before);
  Show();
  Open();
  Ok();
  const Stored before = Everything();
  Open(effect.page);
  for (Values change : Requests(effect.changes)) {
    change[1] = "frmSettings." + change[1];
    Do(change);
  }
  Ok();
  EXPECT_EQ(ChangedSince(before), ToUtf8(AsciiUpper(FromUtf8(effect.name))));
  EXPECT_EQ(probe(), effect.after) << "at once";
  Restart();
  EXPECT_EQ(probe(), effect.after) << "after a restart";
}

TEST_F(SettingsEffectProbes, AutostartIsEnteredAndTakenOutAndStaysOut) {
  Do("reg.set", "HKLM", kRunPath, "Quillbox", "elsewhere");
  Open();
  Ok();
  EXPECT_EQ(Autostart(), Folder() + "/quillbox");
  EXPECT_EQ(MachineValue(kProgramPath, "AutoRun"), "Yes");
  Open();
  Click("Check5");
  Ok();
  EXPECT_EQ(Autostart(), "(missing)");
  EXPECT_EQ(MachineValue(kProgramPath, "AutoRun"), "No");
  Restart();
  EXPECT_EQ(Autostart(), "(missing)");
  Show();
  Open();
  EXPECT_FALSE(Checked("Check5"));
}

}  // namespace
}  // namespace quillbox
