#pragma once

#include <functional>

#include "core/window/MainWindow.h"
#include "core/window/ShowKey.h"
#include "dialogs/SettingControls.h"
#include "platform/forms/Picture.h"
#include "storage/DataFileSetup.h"

namespace quillbox {

// The settings dialog. Its controls are the working copy: nothing is stored until OK. Each setting is one row
// below: its control with name and caption, the setting that it stands for, and its tip. The rows are loaded,
// stored and set to their defaults in this order.
class frmSettings {
 public:
  // `rebuildMenus` rebuilds both parts of the tray menu, and the tip.
  frmSettings(Dispatcher& dispatcher, MainWindow& window, Norvane& settings, DataFiles& files,
              DataFileSetup& setup, PadList& pad, ClipList& clip, ToDoList& toDo, MessageBoxes& messageBoxes,
              ShowKey& showKey, std::function<void()> rebuildMenus);

  Form form;
  TabControl SSTab1;

 private:
  enum Tab { General = 0, MaxNumbers = 1, Advanced = 2 };
  SettingRows rows_;

  Place On(Tab tab) { return {form, SSTab1, tab}; }
  RowPlace Row(Tab tab) { return {On(tab), rows_}; }

  static constexpr char16_t kDefaultNo[] = u"(Default = NO)";
  static constexpr char16_t kDefaultYes[] = u"(Default = YES)";

 public:
  Picture Frame3{On(General), "Frame3", true, u"Customize Quillbox"};
  Label Label5{
      On(General), "Label5",
      u"When copying a Clip entry to clipboard, should the old entry change places with the new one, "
      u"or should all entries slide down?"};
  OptionGroup insertOptions;
  OptionButton Option1{On(General), "Option1", u"Just exchange the entries", insertOptions};
  OptionButton Option2{On(General), "Option2", u"Let all entries slide down", insertOptions};
  SettingOptions Insert{rows_, Option1, Option2, setting::kInsert};
  SettingCheckBox Check3{Row(General),
                         "Check3",
                         u"Move Pad entry to top when copying it to clipboard",
                         setting::kLastSort,
                         u"The Pad entry you copy to clipboard will be moved to the top of the Pad-List "
                         u"(good if you want to have "
                         u"the most recently used entries on top)",
                         kDefaultYes};
  SettingCheckBox Check2{
      Row(General),
      "Check2",
      u"Minimize Quillbox when user changes the clipboard entry",
      setting::kMinimize,
      u"Quillbox will be minimized when you change the current clipboard entry, so you can "
      u"instantly continue with your work",
      kDefaultNo};
  SettingCheckBox Check1{
      Row(General),
      "Check1",
      u"Always display the 32-KB-warning",
      setting::kWarning,
      u"Quillbox will show a warning message whenever a clipboard entry is larger than 32 KB "
      u"(and therefore not stored completely to save disk space)",
      kDefaultNo};
  SettingCheckBox Check4{
      Row(General),
      "Check4",
      u"Automatically refresh ToDo-List when exiting Quillbox",
      setting::kAutoRefresh,
      u"All entries marked \"completed\" in the ToDo-List will be deleted automatically when "
      u"you exit Quillbox",
      kDefaultNo};
  // Enabled while Check4 is checked, whose row comes before.
  SettingCheckBox Check7{
      Row(General),
      "Check7",
      u"and when minimizing Quillbox",
      setting::kAutoRefresh2,
      u"All entries marked \"completed\" in the ToDo-List will be deleted automatically when "
      u"you actively minimize Quillbox",
      kDefaultNo};
  SettingCheckBox Check6{
      Row(General),
      "Check6",
      u"Ask before deleting list entries using the DEL key",
      setting::kAskDelKey,
      u"Quillbox will display a warning message whenever you attempt to delete an entry by "
      u"pressing the DEL key",
      kDefaultYes};
  SettingCheckBoxUnlessOff Check8{
      Row(Advanced),
      "Check8",
      u"Timer plays .WAV:",
      setting::kPlayWave,
      u"Determines if the timer plays the .WAV file (enter path in the text field "
      u"to the right) whenever the Timer Message appears",
      kDefaultNo};
  AutostartCheckBox Check5{Row(General), "Check5",
                           u"Always run Quillbox on system startup (affects all users)",
                           u"Quillbox will automatically be executed whenever the system is turned on "
                           u"(requires Superuser privileges on NT systems)",
                           kDefaultYes};
  Picture Frame1{On(Advanced), "Frame1", true, u"Advanced Adjustments"};
  Label Label12{On(Advanced), "Label12", u"Quillbox shows up on:"};
  OptionGroup clickOptions;
  OptionButton Option3{On(Advanced), "Option3", u"Single click", clickOptions};
  OptionButton Option4{On(Advanced), "Option4", u"Double click", clickOptions};
  ClicksOptions ClicksToShow{rows_, Option3, Option4};

  // Each number stands under the name of its field.
  Picture Frame2{On(MaxNumbers), "Frame2", true, u"Highest possible number of entries in the Lists"};
  SettingListMaximum Text1{Row(MaxNumbers),
                           {"Text1", "VScroll1", "Label7"},
                           u"Maximum number of entries in the Clip-List:",
                           setting::kClipEntriesMax,
                           u"Enter the number of entries you want to have in your Clip-List"};
  SettingListMaximum Text2{Row(MaxNumbers),
                           {"Text2", "VScroll2", "Label4"},
                           u"Maximum number of entries in the Pad-List:",
                           setting::kPermEntriesMax,
                           u"Enter the number of entries you want to have in your Pad-List"};
  SettingListMaximum Text3{Row(MaxNumbers),
                           {"Text3", "VScroll3", "Label3"},
                           u"Maximum number of entries in the ToDo-List:",
                           setting::kToDoEntriesMax,
                           u"Enter the number of entries you want to have in your ToDo-List"};
  Picture Frame4{On(MaxNumbers), "Frame4", true, u"Number of Clip entries in tray menu"};
  SettingNumber Text4{Row(MaxNumbers),
                      {"Text4", "VScroll4", "Label1"},
                      u"Maximum number of normal entries:",
                      setting::kMenuEntriesMax,
                      u"Enter the maximum number of Clip entries you want to display directly (as \"normal\" "
                      u"entries) in the traybar menu"};
  Picture Frame5{On(MaxNumbers), "Frame5", true, u"Number of Pad entries in tray menu"};
  SettingNumber Text5{Row(MaxNumbers),
                      {"Text5", "VScroll5", "Label10"},
                      u"Maximum number of normal entries:",
                      setting::kMenuEntriesMax2,
                      u"Enter the maximum number of Pad entries you want to display directly (as \"normal\" "
                      u"entries) in the traybar menu"};
  SettingNumber Text4a{Row(MaxNumbers),
                       {"Text4a", "VScroll4a", "Label2"},
                       u"Maximum number of collapsed entries:",
                       setting::kMenuEntriesSubMax,
                       u"Enter the maximum number of Clip entries you want to display in a subfolder (as "
                       u"\"collapsed\" entries) in the traybar menu"};
  SettingNumber Text5a{Row(MaxNumbers),
                       {"Text5a", "VScroll5a", "Label9"},
                       u"Maximum number of collapsed entries:",
                       setting::kMenuEntriesSubMax2,
                       u"Enter the maximum number of Pad entries you want to display in a subfolder (as "
                       u"\"collapsed\" entries) in the traybar menu"};

  Label Label11{On(Advanced), "Label11", u"Traybar tooltip:"};
  TrayTipModeBox Combo1{
      Row(Advanced),
      "Combo1",
      {u"Application Name only", u"Clipboard, Single Line", u"Clipboard, Multi-Line (2K/XP only)"},
      Label11,
      u"Select how you want the current clipboard entry to be displayed as tooltip when the mouse hovers "
      u"over the traybar icon",
      u"(Default = Multiple lines)"};
  SettingNumber Text7{Row(Advanced),
                      {"Text7", "VScroll7", "Label8"},
                      u"Characters per normal entry in tray menu:",
                      setting::kMenuEntriesLen,
                      u"Specify how many letters of a normal entry you want to display in the traybar menu"};
  SettingNumber Text6{
      Row(Advanced),
      {"Text6", "VScroll6", "Label6"},
      u"Characters per collapsed entry in tray menu:",
      setting::kMenuEntriesLen2,
      u"Specify how many letters of a collapsed entry you want to display in the traybar menu"};
  // Enabled while Check8 is checked.
  SettingText Text8{Row(Advanced), "Text8", setting::kWavePath};
  Label Label13{On(Advanced), "Label13", u"Key that opens Quillbox:"};
  SettingKey Text9{Row(Advanced), "Text9", setting::kShowKey,
                   u"Press the keys that open Quillbox whatever program you are in, and send it away again. "
                   u"Press DEL for none",
                   u"(Default = none)"};
  // What has become of the key, or why one can't be taken.
  Label Label14{On(Advanced), "Label14", u""};
  SettingCheckBox Check9{Row(Advanced),
                         "Check9",
                         u"Paste the picked entry at once",
                         setting::kPastePick,
                         u"An entry that you pick in the tray menu, or after the key, is copied and pasted "
                         u"into the program you are in",
                         kDefaultNo};

  CommandButton Command1;
  CommandButton Command2;
  CommandButton Command4;

 private:
  void Form_Load();
  void Check4_Click();
  void Check8_Click();
  void Command1_Click();
  void Command4_Click();
  // Saves the lists and reads them again, under the maxima of now. A list that can't be saved stays as it is.
  void ReloadLists();

  MainWindow& window_;
  Norvane& settings_;
  DataFiles& files_;
  DataFileSetup& setup_;
  PadList& pad_;
  ClipList& clip_;
  ToDoList& toDo_;
  MessageBoxes& messageBoxes_;
  ShowKey& showKey_;
  std::function<void()> rebuildMenus_;
};

}  // namespace quillbox
