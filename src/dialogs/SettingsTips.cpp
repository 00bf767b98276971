// The tips of the settings dialog: a description, an empty line, and what holds without any setting.
#include "dialogs/frmSettings.h"

namespace quillbox {

namespace {

constexpr char16_t kNo[] = u"(Default = NO)";
constexpr char16_t kYes[] = u"(Default = YES)";
constexpr char16_t kListRange[] = u"(Range: 3 to 100, Default = 50)";
constexpr char16_t kLengthRange[] = u"(Range: 3 to 100, Default = 30)";

void Tip(Control& control, const Text& description, TextView closingLine) {
  Text tip = description;
  control.SetToolTipText(tip.append(u"\r\n\r\n").append(closingLine));
}

}  // namespace

void frmSettings::SetToolTips() {
  Tip(Check1,
      u"Quillbox will show a warning message whenever a clipboard entry is larger than 32 KB (and therefore "
      u"not stored completely to save disk space)",
      kNo);
  Tip(Check2,
      u"Quillbox will be minimized when you change the current clipboard entry, so you can instantly "
      u"continue with your work",
      kNo);
  Tip(Check3,
      u"The Pad entry you copy to clipboard will be moved to the top of the Pad-List (good if you want to "
      u"have the most recently used entries on top)",
      kYes);
  Tip(Check4,
      u"All entries marked \"completed\" in the ToDo-List will be deleted automatically when you exit "
      u"Quillbox",
      kNo);
  Tip(Check5,
      u"Quillbox will automatically be executed whenever the system is turned on (requires Superuser "
      u"privileges on NT systems)",
      kYes);
  Tip(Check6,
      u"Quillbox will display a warning message whenever you attempt to delete an entry by pressing the DEL "
      u"key",
      kYes);
  Tip(Check7,
      u"All entries marked \"completed\" in the ToDo-List will be deleted automatically when you actively "
      u"minimize Quillbox",
      kNo);
  Tip(Check8,
      u"Determines if the timer plays the .WAV file (enter path in the text field to the right) whenever the "
      u"Timer Message appears",
      kNo);
  Tip(Option3, u"Activate Quillbox when you single-click on its icon in the traybar", u"(Default=YES)");
  Tip(Option4, u"Activate Quillbox when you double-click on its icon in the traybar", u"(Default=NO)");
  Option1.SetToolTipText(kNo);
  Option2.SetToolTipText(kYes);
  Tip(Text1.label, u"Enter the number of entries you want to have in your Clip-List", kListRange);
  Tip(Text2.label, u"Enter the number of entries you want to have in your Pad-List", kListRange);
  Tip(Text3.label, u"Enter the number of entries you want to have in your ToDo-List", kListRange);
  Tip(Text4.label,
      u"Enter the maximum number of Clip entries you want to display directly (as \"normal\" entries) in the "
      u"traybar menu",
      u"(Range: 0 to 10, Default = 5)");
  Tip(Text4a.label,
      u"Enter the maximum number of Clip entries you want to display in a subfolder (as \"collapsed\" "
      u"entries) in the traybar menu",
      u"(Range: 0 to 25, Default = 0)");
  Tip(Text5.label,
      u"Enter the maximum number of Pad entries you want to display directly (as \"normal\" entries) in the "
      u"traybar menu",
      u"(Range: 0 to 10, Default = 0)");
  Tip(Text5a.label,
      u"Enter the maximum number of Pad entries you want to display in a subfolder (as \"collapsed\" "
      u"entries) in the traybar menu",
      u"(Range: 0 to 25, Default = 10)");
  Tip(Text7.label, u"Specify how many letters of a normal entry you want to display in the traybar menu",
      kLengthRange);
  Tip(Text6.label, u"Specify how many letters of a collapsed entry you want to display in the traybar menu",
      kLengthRange);
  Tip(Label11,
      u"Select how you want the current clipboard entry to be displayed as tooltip when the mouse hovers "
      u"over the traybar icon",
      u"(Default = Multiple lines)");
}

}  // namespace quillbox
