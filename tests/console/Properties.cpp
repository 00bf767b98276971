#include "console/Properties.h"

#include <functional>
#include <map>

#include "console/ConsoleError.h"
#include "platform/forms/CheckBox.h"
#include "platform/forms/ComboBox.h"
#include "platform/forms/CommandButton.h"
#include "platform/forms/Label.h"
#include "platform/forms/ListBox.h"
#include "platform/forms/OptionButton.h"
#include "platform/forms/Picture.h"
#include "platform/forms/ScrollBar.h"
#include "platform/forms/TabControl.h"
#include "platform/forms/TextBox.h"
#include "platform/forms/Timer.h"

namespace quillbox {

namespace {

template <class Object>
using Reader = std::function<void(const Object&, Answer&)>;

// Readers of one kind of control.
template <class Object>
using Readers = std::map<std::string, Reader<Object>>;

template <class Object>
bool Read(const Control& control, const Readers<Object>& readers, const std::string& property,
          Answer& answer) {
  const auto* const object = dynamic_cast<const Object*>(&control);
  if (!object) return false;
  const auto reader = readers.find(property);
  if (reader == readers.end()) return false;
  reader->second(*object, answer);
  return true;
}

const char* ColorName(Color color) {
  switch (color) {
    case Color::Blue:
      return "blue";
    case Color::ButtonText:
      return "buttontext";
    case Color::Window:
      return "window";
    case Color::Menu:
      return "menu";
    case Color::Default:
      break;
  }
  return "default";
}

bool ReadField(const Control& control, const std::string& property, Answer& answer) {
  static const Readers<TextBox> kTextBox{
      {"Text", [](const TextBox& field, Answer& to) { to.Add(field.GetText()); }},
      {"SelStart",
       [](const TextBox& field, Answer& to) { to.Number(static_cast<long long>(field.GetSelStart())); }},
      {"BackColor", [](const TextBox& field, Answer& to) { to.Add(ColorName(field.GetBackColor())); }},
      {"Alignment",
       [](const TextBox& field, Answer& to) { to.Number(static_cast<int>(field.GetAlignment())); }},
  };
  static const Readers<Label> kLabel{
      {"Caption", [](const Label& label, Answer& to) { to.Add(label.GetCaption()); }},
      {"ForeColor", [](const Label& label, Answer& to) { to.Add(ColorName(label.GetForeColor())); }},
      {"Alignment",
       [](const Label& label, Answer& to) { to.Number(static_cast<int>(label.GetAlignment())); }},
  };
  return Read(control, kTextBox, property, answer) || Read(control, kLabel, property, answer);
}

bool ReadButton(const Control& control, const std::string& property, Answer& answer) {
  static const Readers<CommandButton> kCommandButton{
      {"Caption", [](const CommandButton& button, Answer& to) { to.Add(button.GetCaption()); }},
      {"Picture", [](const CommandButton& button, Answer& to) { to.Add(button.GetPicture()); }},
  };
  static const Readers<CheckBox> kCheckBox{
      {"Caption", [](const CheckBox& box, Answer& to) { to.Add(box.GetCaption()); }},
      {"Value", [](const CheckBox& box, Answer& to) { to.Flag(box.GetValue()); }},
  };
  static const Readers<OptionButton> kOptionButton{
      {"Caption", [](const OptionButton& option, Answer& to) { to.Add(option.GetCaption()); }},
      {"Value", [](const OptionButton& option, Answer& to) { to.Flag(option.GetValue()); }},
  };
  static const Readers<Picture> kPicture{
      {"Caption", [](const Picture& picture, Answer& to) { to.Add(picture.GetCaption()); }},
  };
  return Read(control, kCommandButton, property, answer) || Read(control, kCheckBox, property, answer) ||
         Read(control, kOptionButton, property, answer) || Read(control, kPicture, property, answer);
}

bool ReadChoice(const Control& control, const std::string& property, Answer& answer) {
  static const Readers<ListBox> kListBox{
      {"ListIndex", [](const ListBox& list, Answer& to) { to.Number(list.GetListIndex()); }},
      {"ListCount", [](const ListBox& list, Answer& to) { to.Number(list.GetListCount()); }},
      {"TopIndex", [](const ListBox& list, Answer& to) { to.Number(list.GetTopIndex()); }},
      {"List",
       [](const ListBox& list, Answer& to) {
         for (int row = 0; row < list.GetListCount(); ++row) to.Add(list.GetList(row).Get());
       }},
      {"Selected",
       [](const ListBox& list, Answer& to) {
         for (int row = 0; row < list.GetListCount(); ++row) to.Flag(list.GetSelected(row));
       }},
      {"Text",
       [](const ListBox& list, Answer& to) {
         const int row = list.GetListIndex();
         to.Add(row < 0 ? Text() : list.GetList(row).Get());
       }},
  };
  static const Readers<ComboBox> kComboBox{
      {"ListIndex", [](const ComboBox& box, Answer& to) { to.Number(box.GetListIndex()); }},
      {"ListCount",
       [](const ComboBox& box, Answer& to) { to.Number(static_cast<long long>(box.Items().size())); }},
      {"List",
       [](const ComboBox& box, Answer& to) {
         for (const Text& item : box.Items()) to.Add(item);
       }},
      {"Text", [](const ComboBox& box,
                  Answer& to) { to.Add(box.GetListIndex() < 0 ? Text() : box.Items()[box.GetListIndex()]); }},
  };
  static const Readers<ScrollBar> kScrollBar{
      {"Value", [](const ScrollBar& bar, Answer& to) { to.Number(bar.GetValue()); }},
      {"Min", [](const ScrollBar& bar, Answer& to) { to.Number(bar.GetMin()); }},
      {"Max", [](const ScrollBar& bar, Answer& to) { to.Number(bar.GetMax()); }},
  };
  static const Readers<TabControl> kTabControl{
      {"Tab", [](const TabControl& tabs, Answer& to) { to.Number(tabs.GetTab()); }},
      {"Caption", [](const TabControl& tabs, Answer& to) { to.Add(tabs.Captions()[tabs.GetTab()]); }},
  };
  return Read(control, kListBox, property, answer) || Read(control, kComboBox, property, answer) ||
         Read(control, kScrollBar, property, answer) || Read(control, kTabControl, property, answer);
}

bool ReadCommon(const Control& control, const std::string& property, Answer& answer) {
  static const Readers<Timer> kTimer{
      {"Interval", [](const Timer& timer, Answer& to) { to.Number(timer.GetInterval()); }},
      {"Enabled", [](const Timer& timer, Answer& to) { to.Flag(timer.GetEnabled()); }},
  };
  static const Readers<Control> kControl{
      {"Visible", [](const Control& any, Answer& to) { to.Flag(any.GetVisible()); }},
      {"Enabled", [](const Control& any, Answer& to) { to.Flag(any.GetEnabled()); }},
      {"ToolTipText", [](const Control& any, Answer& to) { to.Add(any.GetToolTipText()); }},
      // Of all controls whose colours nobody changes.
      {"ForeColor", [](const Control&, Answer& to) { to.Add(ColorName(Color::Default)); }},
      {"BackColor", [](const Control&, Answer& to) { to.Add(ColorName(Color::Default)); }},
  };
  if (dynamic_cast<const Timer*>(&control)) return Read(control, kTimer, property, answer);
  return Read(control, kControl, property, answer);
}

}  // namespace

void GetOfControl(const Control& control, const std::string& property, Answer& answer) {
  if (ReadField(control, property, answer) || ReadButton(control, property, answer)) return;
  if (ReadChoice(control, property, answer) || ReadCommon(control, property, answer)) return;
  throw ConsoleError("the control has no such property");
}

void GetOfMenuItem(const MenuItem& item, const std::string& property, Answer& answer) {
  if (property == "Caption") {
    answer.Add(item.GetCaption());
  } else if (property == "Visible") {
    answer.Flag(item.GetVisible());
  } else if (property == "Checked") {
    answer.Flag(item.GetChecked());
  } else {
    throw ConsoleError("the menu item has no such property");
  }
}

void GetOfForm(const Form* form, const std::string& property, Answer& answer) {
  if (property == "Loaded") {
    answer.Flag(form && form->GetLoaded());
  } else if (property == "Visible") {
    answer.Flag(form && form->GetVisible());
  } else if (!form) {
    throw ConsoleError("the form isn't loaded");
  } else if (property == "Topmost") {
    answer.Flag(form->GetTopmost());
  } else if (property == "WindowState") {
    answer.Number(static_cast<int>(form->GetWindowState()));
  } else if (property == "Left") {
    answer.Number(form->GetLeft());
  } else if (property == "Top") {
    answer.Number(form->GetTop());
  } else if (property == "Caption") {
    answer.Add(form->GetCaption());
  } else {
    throw ConsoleError("the form has no such property");
  }
}

}  // namespace quillbox
