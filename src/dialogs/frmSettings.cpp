#include "dialogs/frmSettings.h"

namespace quillbox {

namespace {

constexpr int kWidth = 460 * kTwipsPerPixel;
constexpr int kHeight = 380 * kTwipsPerPixel;

}  // namespace

frmSettings::frmSettings(Dispatcher& dispatcher, MainWindow& window, Norvane& settings, DataFiles& files,
                         DataFileSetup& setup, PadList& pad, ClipList& clip, ToDoList& toDo,
                         MessageBoxes& messageBoxes, ShowKey& showKey, std::function<void()> rebuildMenus)
    : form(dispatcher, "frmSettings", u"Quillbox Settings"),
      SSTab1(form, "SSTab1", {u"General", u"MaxNumbers", u"Advanced"}),
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
      showKey_(showKey),
      rebuildMenus_(std::move(rebuildMenus)) {
  form.SetSize(kWidth, kHeight);
  form.SetCancelButton(&Command2);
  form.LoadHandler = [this] { Form_Load(); };
  form.UnloadHandler = [this] { window_.ExchangeTopmost(true); };
  Check7.SetEnabled(false);
  Option1.SetToolTipText(kDefaultNo);
  Option2.SetToolTipText(kDefaultYes);
  Option3.SetToolTipText(
      SettingTip(u"Activate Quillbox when you single-click on its icon in the traybar", u"(Default=YES)"));
  Option4.SetToolTipText(
      SettingTip(u"Activate Quillbox when you double-click on its icon in the traybar", u"(Default=NO)"));
  Check4.Click = [this] { Check4_Click(); };
  Check8.Click = [this] { Check8_Click(); };
  Text9.Change = [this] { Label14.SetCaption({}); };
  Text9.Refuse = [this] { Label14.SetCaption(u"It needs Ctrl, Alt or Meta."); };
  Command1.Click = [this] { Command1_Click(); };
  Command2.Click = [this] { form.Unload(); };
  Command4.Click = [this] { Command4_Click(); };
  CoupleListAndMenu(Text1, Text4);
  CoupleListAndMenu(Text2, Text5);
}

void frmSettings::Form_Load() {
  window_.ExchangeTopmost(false);
  window_.GetOnTop().Center(form);
  for (SettingRow* row : rows_) row->Load(settings_);
  Label14.SetCaption(showKey_.Fault());
  // A box that was loaded as it had been created has told nobody.
  Check8_Click();
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
  for (const SettingRow* row : rows_) row->Store(settings_);
  ReloadLists();
  if (rebuildMenus_) rebuildMenus_();
  form.Unload();
  showKey_.Follow();
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
  if (answer != BoxAnswer::Yes) return;
  for (SettingRow* row : rows_) row->SetDefault(settings_);
}

}  // namespace quillbox
