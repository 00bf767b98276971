// The settings dialog: its controls and what its buttons do.
#include "dialogs/frmSettings.h"

namespace quillbox {

namespace {

constexpr int kWidth = 460 * kTwipsPerPixel;
constexpr int kHeight = 380 * kTwipsPerPixel;
constexpr char16_t kNormalEntries[] = u"Maximum number of normal entries:";
constexpr char16_t kCollapsedEntries[] = u"Maximum number of collapsed entries:";
constexpr NumberField::Bounds kListEntries{3, 100};
constexpr NumberField::Bounds kMenuEntries{0, 10};
constexpr NumberField::Bounds kSubMenuEntries{0, 25};
constexpr NumberField::Bounds kCharacters{3, 100};

enum SettingsPage { General = 0, MaxNumbers = 1, Advanced = 2 };

}  // namespace

frmSettings::frmSettings(Dispatcher& dispatcher, MainWindow& window, Norvane& settings, DataFiles& files,
                         DataFileSetup& setup, PadList& pad, ClipList& clip, ToDoList& toDo,
                         MessageBoxes& messageBoxes, std::function<void()> rebuildMenus)
    : form(dispatcher, "frmSettings", u"Quillbox Settings"),
      SSTab1(form, "SSTab1", {u"General", u"MaxNumbers", u"Advanced"}),
      Frame3({form, SSTab1, General}, "Frame3", true, u"Customize Quillbox"),
      Check1({form, SSTab1, General}, "Check1", u"Always display the 32-KB-warning"),
      Check2({form, SSTab1, General}, "Check2", u"Minimize Quillbox when user changes the clipboard entry"),
      Check3({form, SSTab1, General}, "Check3", u"Move Pad entry to top when copying it to clipboard"),
      Check6({form, SSTab1, General}, "Check6", u"Ask before deleting list entries using the DEL key"),
      Check4({form, SSTab1, General}, "Check4", u"Automatically refresh ToDo-List when exiting Quillbox"),
      Check7({form, SSTab1, General}, "Check7", u"and when minimizing Quillbox", false, false),
      Check5({form, SSTab1, General}, "Check5", u"Always run Quillbox on system startup (affects all users)"),
      Label5({form, SSTab1, General}, "Label5",
             u"When copying a Clip entry to clipboard, should the old entry change places with the new one, "
             u"or should all entries slide down?"),
      Option1({form, SSTab1, General}, "Option1", u"Just exchange the entries", insertOptions),
      Option2({form, SSTab1, General}, "Option2", u"Let all entries slide down", insertOptions),
      Frame2({form, SSTab1, MaxNumbers}, "Frame2", true, u"Highest possible number of entries in the Lists"),
      Text1({form, SSTab1, MaxNumbers}, {"Text1", "VScroll1", "Label7"},
            u"Maximum number of entries in the Clip-List:", kListEntries),
      Text2({form, SSTab1, MaxNumbers}, {"Text2", "VScroll2", "Label4"},
            u"Maximum number of entries in the Pad-List:", kListEntries),
      Text3({form, SSTab1, MaxNumbers}, {"Text3", "VScroll3", "Label3"},
            u"Maximum number of entries in the ToDo-List:", kListEntries),
      Frame4({form, SSTab1, MaxNumbers}, "Frame4", true, u"Number of Clip entries in tray menu"),
      Text4({form, SSTab1, MaxNumbers}, {"Text4", "VScroll4", "Label1"}, kNormalEntries, kMenuEntries),
      Text4a({form, SSTab1, MaxNumbers}, {"Text4a", "VScroll4a", "Label2"}, kCollapsedEntries,
             kSubMenuEntries),
      Frame5({form, SSTab1, MaxNumbers}, "Frame5", true, u"Number of Pad entries in tray menu"),
      Text5({form, SSTab1, MaxNumbers}, {"Text5", "VScroll5", "Label10"}, kNormalEntries, kMenuEntries),
      Text5a({form, SSTab1, MaxNumbers}, {"Text5a", "VScroll5a", "Label9"}, kCollapsedEntries,
             kSubMenuEntries),
      Frame1({form, SSTab1, Advanced}, "Frame1", true, u"Advanced Adjustments"),
      Text7({form, SSTab1, Advanced}, {"Text7", "VScroll7", "Label8"},
            u"Characters per normal entry in tray menu:", kCharacters),
      Text6({form, SSTab1, Advanced}, {"Text6", "VScroll6", "Label6"},
            u"Characters per collapsed entry in tray menu:", kCharacters),
      Label11({form, SSTab1, Advanced}, "Label11", u"Traybar tooltip:"),
      Combo1({form, SSTab1, Advanced}, "Combo1",
             {u"Application Name only", u"Clipboard, Single Line", u"Clipboard, Multi-Line (2K/XP only)"}),
      Label12({form, SSTab1, Advanced}, "Label12", u"Quillbox shows up on:"),
      Option3({form, SSTab1, Advanced}, "Option3", u"Single click", clickOptions),
      Option4({form, SSTab1, Advanced}, "Option4", u"Double click", clickOptions),
      Check8({form, SSTab1, Advanced}, "Check8", u"Timer plays .WAV:"),
      Text8({form, SSTab1, Advanced}, "Text8", TextBox::Lines::One),
      Command1(form, "Command1", u"OK", u"Accept and save settings"),
      Command2(form, "Command2", u"Cancel", u"Cancel without saving settings"),
      Command4(form, "Command4", u"Default", u"Reset all settings to default values"),
      window_(window),
      settings_(settings),
      files_(files),
      setup_(setup),
      pad_(pad),
      clip_(clip),
      toDo_(toDo),
      messageBoxes_(messageBoxes),
      rebuildMenus_(std::move(rebuildMenus)) {
  form.SetSize(kWidth, kHeight);
  form.SetCancelButton(&Command2);
  form.LoadHandler = [this] { Form_Load(); };
  form.UnloadHandler = [this] { window_.ExchangeTopmost(true); };
  Check4.Click = [this] { Check4_Click(); };
  Check8.Click = [this] { Check8_Click(); };
  Command1.Click = [this] { Command1_Click(); };
  Command2.Click = [this] { form.Unload(); };
  Command4.Click = [this] { Command4_Click(); };
  CoupleListAndMenu(Text1, Text4);
  CoupleListAndMenu(Text2, Text5);
}

void frmSettings::Form_Load() {
  SetToolTips();
  window_.ExchangeTopmost(false);
  window_.GetOnTop().Center(form);
  LoadSwitches();
  LoadNumbers();
  Combo1.SetListIndex(StoredTipMode());
}

void frmSettings::Check4_Click() {
  Check7.SetEnabled(Check4.GetValue());
  if (!Check4.GetValue()) Check7.SetValue(false);
}

void frmSettings::Check8_Click() {
  Text8.SetBackColor(Check8.GetValue() ? Color::Window : Color::Menu);
  Text8.SetEnabled(Check8.GetValue());
}

void frmSettings::Command1_Click() {
  StoreSwitches();
  settings_.SetAutostart(Check5.GetValue());
  StoreNumbers();
  ReloadLists();
  if (rebuildMenus_) rebuildMenus_();
  form.Unload();
}

void frmSettings::ReloadLists() {
  files_.AktualisiereCle1();
  files_.AktualisiereCle2();
  files_.AktualisiereCle3();
  if (files_.IsSaved(u"PadData.qbx")) pad_.List1.Clear();
  if (files_.IsSaved(u"ClipData.qbx")) clip_.List2.Clear();
  if (files_.IsSaved(u"ToDoData.qbx")) toDo_.List3.Clear();
  setup_.GetClesAndLists();
}

void frmSettings::Command4_Click() {
  const BoxAnswer answer = form.GetDispatcher().WhileWaiting([this] {
    return messageBoxes_.Show(
        u"This will reset all settings to their default values.\r\nDo you want to continue?",
        BoxCode::Question, u"Reset everything to default values?");
  });
  if (answer == BoxAnswer::Yes) SetDefaults();
}

void frmSettings::SetDefaults() {
  Option2.SetValue(true);
  Check7.SetValue(false);
  Check3.SetValue(false);
  Check2.SetValue(false);
  Check1.SetValue(false);
  Check4.SetValue(false);
  Check5.SetValue(true);
  Check6.SetValue(true);
  Option3.SetValue(true);
  Text1.SetNumber(50);
  Text2.SetNumber(50);
  Text3.SetNumber(50);
  Text4.SetNumber(5);
  Text4a.SetNumber(0);
  Text5.SetNumber(0);
  Text5a.SetNumber(10);
  Text6.SetNumber(30);
  Text7.SetNumber(30);
  Check8.SetValue(false);
  Combo1.SetListIndex(DefaultTipMode());
}

}  // namespace quillbox
