#pragma once

#include <functional>

#include "core/window/MainWindow.h"
#include "dialogs/NumberField.h"
#include "platform/forms/CheckBox.h"
#include "platform/forms/ComboBox.h"
#include "platform/forms/OptionButton.h"
#include "storage/DataFileSetup.h"

namespace quillbox {

// The settings dialog. Its controls are the working copy: nothing is stored until OK.
class frmSettings {
 public:
  // `rebuildMenus` rebuilds both parts of the tray menu, and the tip.
  frmSettings(Dispatcher& dispatcher, MainWindow& window, Norvane& settings, DataFiles& files,
              DataFileSetup& setup, PadList& pad, ClipList& clip, ToDoList& toDo, MessageBoxes& messageBoxes,
              std::function<void()> rebuildMenus);

  Form form;
  TabControl SSTab1;

  // General
  Picture Frame3;
  CheckBox Check1;
  CheckBox Check2;
  CheckBox Check3;
  CheckBox Check6;
  CheckBox Check4;
  CheckBox Check7;
  CheckBox Check5;
  Label Label5;
  OptionGroup insertOptions;
  OptionButton Option1;
  OptionButton Option2;

  // MaxNumbers. Each number stands under the name of its field.
  Picture Frame2;
  NumberField Text1;  // with VScroll1, Label7
  NumberField Text2;  // with VScroll2, Label4
  NumberField Text3;  // with VScroll3, Label3
  Picture Frame4;
  NumberField Text4;   // with VScroll4, Label1
  NumberField Text4a;  // with VScroll4a, Label2
  Picture Frame5;
  NumberField Text5;   // with VScroll5, Label10
  NumberField Text5a;  // with VScroll5a, Label9

  // Advanced
  Picture Frame1;
  NumberField Text7;  // with VScroll7, Label8
  NumberField Text6;  // with VScroll6, Label6
  Label Label11;
  ComboBox Combo1;
  Label Label12;
  OptionGroup clickOptions;
  OptionButton Option3;
  OptionButton Option4;
  CheckBox Check8;
  TextBox Text8;

  CommandButton Command1;
  CommandButton Command2;
  CommandButton Command4;

 private:
  void SetToolTips();
  void Form_Load();
  void Check4_Click();
  void Check8_Click();
  void Command1_Click();
  void Command4_Click();
  void SetDefaults();

  // Between the controls and the settings.
  void LoadSwitches();
  void LoadNumbers();
  int StoredTipMode();
  int DefaultTipMode() const;
  void StoreSwitches();
  void StoreNumbers();
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
  std::function<void()> rebuildMenus_;
};

}  // namespace quillbox
