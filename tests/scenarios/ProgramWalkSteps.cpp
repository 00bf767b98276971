#include "scenarios/ProgramWalk.h"

namespace quillbox {

namespace {

const std::string kClip = "frmTray.List2";
const std::string kPad = "frmTray.List1";
const std::string kToDo = "frmTray.List3";
const Values kDataFiles{"PadData.qbx", "ClipData.qbx", "ToDoData.qbx"};
const Values kArrows{"Home", "End", "Up", "Down", "Left", "Right", "PageUp", "PageDown"};
const std::string kNone = "(none)";  // a setting that isn't stored

}  // namespace

std::string ProgramWalk::AnyText() {
  static const Values kTexts{"one",
                             "two",
                             "three",
                             "a&b",
                             "line\r\nmore",
                             "größer",
                             "{SCRIPT}abc",
                             "{script}{",
                             "tab\tand",
                             " ",
                             "<r>tip",
                             "1,5e3",
                             "½½½½½ [CLIP ENTRY FILE END] ½½½½½",
                             "日本 \U0001F600"};
  if (Chance(1)) return std::string(Chance(50) ? 32001 : 300, 'x');
  return Chance(33) ? "text " + Number(40) : OneOf(kTexts);
}

std::size_t ProgramWalk::Limit(const std::string& key) {
  const std::string stored = Setting("Intern", key);
  return static_cast<std::size_t>(stored == kNone ? 49 : std::stoi(stored)) + 1;
}

// An entry that is put on the clipboard comes in like any other text: into a list that may be beyond its
// limit, and it may be cut.
ProgramWalk::MayLose ProgramWalk::OneComesIn() {
  const bool isBeyond = before_.clips.size() > Limit("ClipEntriesMax");
  const std::string cut = Setting("Intern", "CutURL");
  const bool isCut = cut != kNone && !cut.empty() && cut != "0";
  return {(isBeyond ? 1u : 0u) + (isCut ? 1u : 0u)};
}

ProgramWalk::MayLose ProgramWalk::Copies() {
  switch (Random(6)) {
    case 0:
      Do("clip.clear");
      break;
    case 1:
      Do("clip.picture");
      break;
    case 2:
      Do("clip.lock", Number(2));
      break;
    default:
      Do("clip.set", AnyText());
  }
  if (Chance(75)) Advance(Random(600));
  return {1};
}

ProgramWalk::MayLose ProgramWalk::Uses() {
  switch (Random(6)) {
    case 0:
      Do("pick", (Chance(50) ? "mnuClip" : "mnuClipSub") + std::to_string(1 + Random(10)));
      break;
    case 1:
      Do("pick", (Chance(50) ? "mnuPad" : "mnuPadSub") + std::to_string(1 + Random(10)));
      break;
    case 2:
      Try({"dblrow", kClip, Number(10)});
      break;
    case 3:
      Try({"dblrow", kPad, Number(10)});
      break;
    case 4:
      Try({"key", OneOf({kClip, kPad}), "Enter"});
      break;
    default:
      Try({"click", "frmTray.Command102"});
  }
  return OneComesIn();
}

ProgramWalk::MayLose ProgramWalk::Moves() {
  switch (Random(4)) {
    case 0:
      Try({"spin", OneOf({"frmTray.UpDown1", "frmTray.UpDown2"}), OneOf({"up", "down"})});
      return {};
    case 1:
      Try({"key", OneOf({kPad, kToDo}), OneOf(kArrows), "ctrl"});
      return {};
    case 2:
      Try({"key", OneOf({kClip, kPad, kToDo}), OneOf(kArrows)});
      return {};
    default:
      Try({"key", kClip, OneOf(kArrows), "ctrl"});
      return OneComesIn();
  }
}

ProgramWalk::MayLose ProgramWalk::Selects() {
  const std::string list = OneOf({kClip, kPad, kToDo});
  switch (Random(4)) {
    case 0:
      Try({"select", list, Number(10), Number(10)});
      break;
    case 1:
      Try({"select", list, Number(10), Number(10), Number(10)});
      break;
    case 2:
      Try({"select", list, Number(10)});
      break;
    default:
      Try({"drag", list});
  }
  return {};
}

ProgramWalk::MayLose ProgramWalk::EditsClip() {
  switch (Random(3)) {
    case 0:
      Try({"settext", "frmTray.Text0", OneOf({"one", "edited", "", "a\r\nb"})});
      break;
    case 1:
      Try({"type", "frmTray.Text0", OneOf({"a", "\r", "\b"})});
      break;
    default:
      Try({"dblclick", "frmTray.Label7"});
  }
  return {1};
}

ProgramWalk::MayLose ProgramWalk::EditsPad() {
  switch (Random(3)) {
    case 0:
      Try({"settext", "frmTray.Text3", OneOf({"", "name", "[No Name]"})});
      break;
    case 1:
      Try({"settext", "frmTray.Text101", OneOf({"", "one", "two", "fresh " + Number(20), "{SCRIPT}x"})});
      break;
    default:
      Try({"dblclick", "frmTray.Label13"});
  }
  return {};
}

ProgramWalk::MayLose ProgramWalk::Commands() {
  switch (Random(9)) {
    case 0:
    case 1:
      Try({"click", "frmTray.Command101"});
      return {0, 1};
    case 2:
      Try({"click", "frmTray.Command001"});
      return {0, 1};
    case 3:
      Try({"drop", kPad, OneOf({"dropped", "one", "two"})});
      return {0, 1};
    case 4:
      Try({"click", OneOf({"frmTray.Command103", "frmTray.Command104", "frmTray.Command6"})});
      // To the tray, which may drop the tasks that are done.
      return {0, 0, kAny};
    case 5:
      Try({Chance(50) ? "drop" : "dropother", kClip, "dropped"});
      return {};
    case 6:
      Do("pick", "mnuClear");
      return {1, 0, kAny};
    case 7:
      Try({"click", "frmTray.Command000"});
      return {1, 0, kAny};
    default:
      return Deletes();
  }
}

ProgramWalk::MayLose ProgramWalk::Deletes() {
  // Mostly a few rows, now and then all of them.
  Do("answer", Chance(20) ? "6" : "7");
  switch (Random(4)) {
    case 0:
      Try({"click", "frmTray.Command003"});
      return {kAny, 0, kAny};
    case 1:
      Try({"click", "frmTray.Command105"});
      return {0, kAny, 0};
    case 2:
      Try({"click", "frmTray.Command3"});
      return {0, 0, kAny};
    default:
      Do("answer", "7", "7");
      Try({"key", OneOf({kClip, kPad, kToDo}), "Delete"});
      return kAll;
  }
}

ProgramWalk::MayLose ProgramWalk::UsesToDo() {
  switch (Random(8)) {
    case 0:
    case 1:
    case 2:
      Try({"settext", "frmTray.Text1", OneOf({"", "True", "task " + Number(20), "größer"})});
      Try({"click", "frmTray.Command2"});
      // The text that was there before, and on Yes the oldest of a full list.
      return {0, 0, 2};
    case 3:
      Try({"drop", kToDo, "task " + Number(20)});
      return {0, 0, 1};
    case 4:
      Try({"click", OneOf({"frmTray.Command4", "frmTray.Command5"})});
      return {0, 0, kAny};
    case 5:
      Try({"key", OneOf({"frmTray.Text1", kToDo}), OneOf({"Enter", "Space"})});
      return {0, 0, 2};
    default:
      Try({"check", kToDo, Number(10), Number(2)});
      return {};
  }
}

ProgramWalk::MayLose ProgramWalk::Calculates() {
  if (Chance(30)) {
    Try({"type", "frmTray.Text7", OneOf({"1", "7.5", "+", "=", "x", "\r", " ", "-", "F"})});
  } else if (Chance(10)) {
    Try({"click", "frmTray.Label" + std::to_string(9 + Random(3))});
  } else if (Chance(10)) {
    Try({"click", "frmTray.Commandu" + std::to_string(1 + Random(6))});
  } else {
    // Digits, operators, functions, memory, and the way to and from the clipboard.
    const int key = Random(32);
    Try({"click", "frmTray.Command" + std::to_string(key < 3    ? 7 + key
                                                     : key == 3 ? 49
                                                     : key == 4 ? 50
                                                                : 15 + key)});
  }
  return OneComesIn();
}

ProgramWalk::MayLose ProgramWalk::SetsTheTimer() {
  switch (Random(7)) {
    case 0:
      Try({"settext", "frmTray.Text" + OneOf({"14", "16", "17"}), OneOf({"", "1", "59", "99", "x", "0"})});
      return {};
    case 1:
      Try({"click", OneOf({"frmTray.Option1", "frmTray.Option2"})});
      return {};
    case 2:
      Try({"settext", "frmTray.Text13", AnyText()});
      return {};
    case 3:
      Try({"click", "frmMessage.Command" + std::to_string(1 + Random(2))});
      return {};
    case 4:
      Try({"closebox", "frmMessage"});
      return {};
    case 5:
      Do("clock", OneOf({"2001-12-31 23:59:30", "2024-02-28 23:59:58", "2025-03-30 01:59:59"}));
      return {};
    default:
      Try({"click", "frmTray.Command" + OneOf({"1", "42", "43", "45", "46"})});
      return OneComesIn();
  }
}

ProgramWalk::MayLose ProgramWalk::LooksAround() {
  switch (Random(6)) {
    case 0:
      Do("closebox", "frmTray");
      return {0, 0, kAny};
    case 1:
      Do("tray.mouse", OneOf({"513", "515", "516"}));
      return {};
    case 2:
      Do("pick", OneOf({"mnuShow", "mnuOnTop", "mnuInfo", "mnuStartHelp"}));
      return {};
    case 3:
      Try({"click", OneOf({"frmAbout.Command1", "frmStartHelp.Command1"})});
      Try({"closebox", OneOf({"frmAbout", "frmStartHelp"})});
      return {};
    default:
      ShowWindow();
      Do("tab", "frmTray.SSTab1", Number(5));
      return {};
  }
}

ProgramWalk::MayLose ProgramWalk::ChangesSettings() {
  Try({"click", "frmTray.Command47"});
  for (int i = Random(5); i > 0; --i) {
    Try({"tab", "frmSettings.SSTab1", Number(3)});
    switch (Random(4)) {
      case 0:
        Try({"settext", "frmSettings.Text" + OneOf({"1", "2", "3"}),
             OneOf({"5", "8", "", "101", "x", "-4"})});
        break;
      case 1:
        Try({"settext", "frmSettings.Text" + OneOf({"4", "4a", "5", "5a", "6", "7", "8"}),
             OneOf({"0", "3", "10", "26", "1E400", ""})});
        break;
      case 2:
        Try({"scroll", "frmSettings.VScroll" + OneOf({"1", "2", "3", "4", "4a", "5", "5a", "6", "7"}),
             std::to_string(-Random(12))});
        break;
      default:
        Try({"click",
             "frmSettings." + OneOf({"Check1", "Check2", "Check3", "Check4", "Check5", "Check6", "Check7",
                                     "Check8", "Option1", "Option2", "Option3", "Option4", "Command4"})});
        Try({"choose", "frmSettings.Combo1", Number(3)});
    }
  }
  if (Chance(60)) {
    Try({"click", "frmSettings.Command1"});
    // Lists beyond their new maximum are cut; what isn't written yet lasts until the next save.
    for (const std::string& file : kDataFiles) behind_[file] = Writes(file);
    leftovers_ = true;
    return kAll;
  }
  Chance(50) ? Try({"click", "frmSettings.Command2"}) : Try({"closebox", "frmSettings"});
  return {};
}

// What no dialog would store, and what another version may have.
ProgramWalk::MayLose ProgramWalk::EditsSettingsByHand() {
  if (Chance(50)) {
    Set(OneOf({"Insert", "LastSort", "Minimize", "AskDelKey", "AlwaysOnTop", "AutoRefresh", "AutoRefresh2",
               "ClicksToShow", "Warning"}),
        OneOf({"1", "2"}));
  } else if (Chance(60)) {
    Set(OneOf({"ClipEntriesMax", "PermEntriesMax", "ToDoEntriesMax"}), std::to_string(3 + Random(8)));
  } else if (Chance(60)) {
    Set(OneOf({"MenuEntriesMax", "MenuEntriesSubMax", "MenuEntriesMax2", "MenuEntriesSubMax2",
               "MenuEntriesLen", "MenuEntriesLen2", "TrayTipMode", "CutURL", "ROT47"}),
        OneOf({"", "0", "2", "7", "-3", "abc", "1E400", "30"}));
  } else {
    Do("reg.bytes", "HKCU", Intern(), OneOf({"Insert", "Minimize", "MenuEntriesMax"}), OneOf({"1", "3", "4"}),
       OneOf({"00", "3100", "FFFE8081", "31323300"}));
  }
  return {};
}

void ProgramWalk::MendAll() {
  for (const std::string& file : obstructed_) {
    Clear(file);
    behind_[file] = Writes(file);
  }
  obstructed_.clear();
  for (const char* hive : {"HKCU", "HKLM"}) Do("reg.deny", hive, "0");
  Do("keys.fail", "0");
  Do("clip.lock", "0");
}

ProgramWalk::MayLose ProgramWalk::BreaksThings() {
  switch (Random(4)) {
    case 0:
      Do("reg.deny", OneOf({"HKCU", "HKLM"}), Number(2));
      break;
    case 1:
      Do("keys.fail", Number(2));
      break;
    case 2: {
      const std::string& file = OneOf(kDataFiles);
      if (obstructed_.count(file) > 0 || DataFile(file) == "(missing)") break;
      Obstruct(file);
      obstructed_.insert(file);
      break;
    }
    default:
      MendAll();
  }
  return {};
}

ProgramWalk::MayLose ProgramWalk::Restarts() {
  MendAll();
  const bool byTheSystem = Chance(50);
  if (Chance(30)) Do("reg.deny", OneOf({"HKCU", "HKLM"}), "1");
  const std::string refresh = Setting("Intern", "AutoRefresh");
  EXPECT_EQ(byTheSystem ? Do("shutdown") : Do("end"), Values{"0"});
  leftovers_ = false;
  Begin();
  Restarted(refresh == kNone || refresh == "1");
  return kAll;
}

ProgramWalk::MayLose ProgramWalk::LetsTimePass() {
  Advance(Chance(10) ? 90'000 : Random(3000));
  return {1};
}

ProgramWalk::MayLose ProgramWalk::Step() {
  if (Chance(10)) Do("answer", OneOf({"6", "7"}));
  struct Doing {
    int share;
    MayLose (ProgramWalk::*doing)();
  };
  static constexpr Doing kDoings[] = {{18, &ProgramWalk::Copies},
                                      {12, &ProgramWalk::Uses},
                                      {10, &ProgramWalk::Moves},
                                      {7, &ProgramWalk::Selects},
                                      {5, &ProgramWalk::EditsClip},
                                      {6, &ProgramWalk::EditsPad},
                                      {11, &ProgramWalk::Commands},
                                      {10, &ProgramWalk::UsesToDo},
                                      {5, &ProgramWalk::Calculates},
                                      {4, &ProgramWalk::SetsTheTimer},
                                      {15, &ProgramWalk::LooksAround},
                                      {3, &ProgramWalk::ChangesSettings},
                                      {2, &ProgramWalk::EditsSettingsByHand},
                                      {2, &ProgramWalk::BreaksThings},
                                      {1, &ProgramWalk::Restarts},
                                      {2, &ProgramWalk::LetsTimePass}};
  int all = 0;
  for (const Doing& doing : kDoings) all += doing.share;
  int left = Random(all);
  const Doing* doing = kDoings;
  while (left >= doing->share) left -= (doing++)->share;
  return (this->*doing->doing)();
}

}  // namespace quillbox
