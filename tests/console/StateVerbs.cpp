#include <algorithm>
#include <functional>

#include "console/Verbs.h"
#include "platform/forms/CheckBox.h"
#include "platform/forms/CommandButton.h"
#include "platform/forms/Label.h"
#include "platform/forms/OptionButton.h"
#include "platform/forms/Picture.h"

namespace quillbox {

namespace {

// How a property is read; false if the object has none of that name.
struct Property {
  const char* name;
  std::function<bool(const Control&, Out)> read;
};

// Of controls of these kinds.
template <class... Kinds, class Reader>
Property Of(const char* name, Reader reader) {
  return {name, [=](const Control& control, Out out) {
            const auto readAs = [&](const auto* object) {
              if (object) out.Add(std::invoke(reader, *object));
              return object != nullptr;
            };
            return (readAs(dynamic_cast<const Kinds*>(&control)) || ...);
          }};
}

// A timer has nothing of what all controls have.
template <class Reader>
Property OfAll(const char* name, Reader reader) {
  return {name, [=](const Control& control, Out out) {
            const bool has = !dynamic_cast<const Timer*>(&control);
            if (has) out.Add(std::invoke(reader, control));
            return has;
          }};
}

// One value a row.
template <class Value>
Property OfRows(const char* name, Value (*of)(const ListBox&, int)) {
  return Of<ListBox>(name, [of](const ListBox& list) {
    std::vector<Value> values;
    for (int row = 0; row < list.GetListCount(); ++row) values.push_back(of(list, row));
    return values;
  });
}

// The first that an object has counts.
const std::vector<Property>& Properties() {
  static const std::vector<Property> kProperties{
      Of<TextBox, KeyBox>("Text", [](const auto& field) { return field.GetText(); }),
      Of<TextBox>("SelStart", &TextBox::GetSelStart),
      Of<TextBox>("BackColor", &TextBox::GetBackColor),
      Of<TextBox, Label>("Alignment", [](const auto& text) { return text.GetAlignment(); }),
      Of<Label, CommandButton, CheckBox, OptionButton, Picture>(
          "Caption", [](const auto& named) { return named.GetCaption(); }),
      Of<Label>("ForeColor", &Label::GetForeColor),
      Of<CommandButton>("Picture", &CommandButton::GetPicture),
      Of<CheckBox, OptionButton, ScrollBar>("Value", [](const auto& set) { return set.GetValue(); }),
      Of<ListBox, ComboBox>("ListIndex", [](const auto& list) { return list.GetListIndex(); }),
      Of<ListBox>("ListCount", &ListBox::GetListCount),
      Of<ListBox>("TopIndex", &ListBox::GetTopIndex),
      OfRows<Text>("List", [](const ListBox& list, int row) { return Text(list.GetList(row).Get()); }),
      OfRows<int>("Selected", [](const ListBox& list, int row) { return int{list.GetSelected(row)}; }),
      OfRows<int>("Shown", [](const ListBox& list, int row) { return int{list.IsRowShown(row)}; }),
      Of<ListBox>("Text",
                  [](const ListBox& list) {
                    return list.GetListIndex() < 0 ? Text() : list.GetList(list.GetListIndex()).Get();
                  }),
      Of<ComboBox>("ListCount", [](const ComboBox& box) { return box.Items().size(); }),
      Of<ComboBox>("List", &ComboBox::Items),
      Of<ComboBox>("Text",
                   [](const ComboBox& box) {
                     return box.GetListIndex() < 0 ? Text() : box.Items()[box.GetListIndex()];
                   }),
      Of<ScrollBar>("Min", &ScrollBar::GetMin),
      Of<ScrollBar>("Max", &ScrollBar::GetMax),
      Of<TabControl>("Tab", &TabControl::GetTab),
      Of<TabControl>("Caption", [](const TabControl& tabs) { return tabs.Captions()[tabs.GetTab()]; }),
      Of<Timer>("Interval", &Timer::GetInterval),
      Of<Timer>("Enabled", &Timer::GetEnabled),
      OfAll("Visible", &Control::GetVisible),
      OfAll("Enabled", &Control::GetEnabled),
      OfAll("ToolTipText", &Control::GetToolTipText),
      // Of all controls whose colours nobody changes.
      OfAll("ForeColor", [](const Control&) { return Color::Default; }),
      OfAll("BackColor", [](const Control&) { return Color::Default; }),
  };
  return kProperties;
}

void GetOfControl(const Control& control, const std::string& name, Out out) {
  if (std::none_of(Properties().begin(), Properties().end(),
                   [&](const Property& each) { return each.name == name && each.read(control, out); }))
    throw ConsoleError("the control has no such property");
}

// `value` of the property, if it is the one of that name.
template <class Value>
bool Is(const std::string& property, const char* name, const Value& value, Out out) {
  if (property == name) out.Add(value);
  return property == name;
}

void GetOfMenuItem(const MenuItem& item, const std::string& property, Out out) {
  if (!Is(property, "Caption", item.GetCaption(), out) && !Is(property, "Visible", item.GetVisible(), out) &&
      !Is(property, "Checked", item.GetChecked(), out))
    throw ConsoleError("the menu item has no such property");
}

// Of a form that isn't loaded little is left to ask.
void GetOfForm(const Form* form, const std::string& property, Out out) {
  if (Is(property, "Loaded", form && form->GetLoaded(), out) ||
      Is(property, "Visible", form && form->GetVisible(), out))
    return;
  if (!form) throw ConsoleError("the form isn't loaded");
  if (!Is(property, "Topmost", form->GetTopmost(), out) &&
      !Is(property, "WindowState", form->GetWindowState(), out) &&
      !Is(property, "Left", form->GetLeft(), out) && !Is(property, "Top", form->GetTop(), out) &&
      !Is(property, "Caption", form->GetCaption(), out))
    throw ConsoleError("the form has no such property");
}

// What the program has shown, sent, played and written so far, and the answers to its boxes.
void AddRecords(VerbTable& table, MemoryWorld& world) {
  table.Add("answer", 1, VerbTable::kAnyNumber, [&](In in, Out) {
    std::vector<int> buttons;
    for (std::size_t i = 0; i < in.Count(); ++i) buttons.push_back(in.Int(i));
    for (const int button : buttons) world.messageBoxes.Answer(button);
  });
  table.Add("boxes", 0, [&](In, Out out) {
    for (const MemoryMessageBoxes::Box& box : world.messageBoxes.TakeShown()) {
      out.Add(box.code);
      out.Add(box.title);
      out.Add(box.text);
    }
  });
  table.Add("keys", 0, [&](In, Out out) { out.Add(world.keySender.TakeSent()); });
  table.Add("keys.fail", 1, [&](In in, Out) { world.keySender.SetFailing(in.Flag(0)); });
  table.Add("keys.class", 0, 1, [&](In in, Out) { world.keySender.windowClass = in.Name(0); });
  table.Add("sounds", 0, [&](In, Out out) { out.Add(world.sound.TakePlayed()); });
  table.Add("writes", 1, [&](In in, Out out) { out.Add(world.files.Writes(in[0])); });
}

void AddTips(VerbTable& table, Session& session) {
  table.Add("settip", 1, 2, [&](In in, Out) {
    Dispatcher& dispatcher = session.Alive().dispatcher;
    Control& control = session.GetControl(in.Name(0));
    dispatcher.Dispatch([&] { control.SetToolTipText(in[1]); });
  });
  table.Add("tip", 2, [&](In in, Out out) {
    const frmTray& tray = *session.Alive().tray;
    const Control& control = session.GetControl(in.Name(0));
    const TipLayout tip = tray.toolTips.Layout(control.GetToolTipText(), in.Int(1),
                                               session.world.windows.ScreenSize().width, session.world.tips);
    Text text;
    for (const TipLine& line : tip.lines) (text += &line == &tip.lines.front() ? u"" : u"\n") += line.text;
    for (const int number : {tip.left, tip.width, tip.height, tip.alignment}) out.Add(number);
    out.Add(text);
  });
}

}  // namespace

void AddStateVerbs(VerbTable& table, Session& session) {
  AddRecords(table, session.world);
  AddTips(table, session);
  table.Add("get", 2, [&](In in, Out out) {
    const std::string name = in.Name(0);
    const std::string property = in.Name(1);
    // An item of the menu goes by its bare name too, as the menu lists it.
    if (const MenuItem* const item = session.FindMenuItem(name)) {
      GetOfMenuItem(*item, property, out);
    } else if (name.find('.') == std::string::npos) {
      GetOfForm(session.FindForm(name), property, out);
    } else {
      GetOfControl(session.GetControl(name), property, out);
    }
  });
  table.Add("slots", 1, [&](In in, Out out) {
    const frmTray& tray = *session.Started().tray;
    if (in[0] != u"ClipEntries" && in[0] != u"PadEntries") throw ConsoleError("no such array");
    const EntrySlots& slots = in[0] == u"ClipEntries" ? tray.clip.ClipEntries : tray.pad.PadEntries;
    for (int i = 0; i < EntrySlots::kCount; ++i) out.Add(slots(i).Get());
  });
  table.Add("tray", 0, [&](In, Out out) {
    const MemoryTrayIcon& icon = session.world.trayIcon;
    out.Add(icon.IsThere());
    out.Add(std::string_view(icon.Image() == TrayImage::Window ? "window" : "Picture1"));
    out.Add(icon.Tip());
  });
  table.Add("menu", 0, [&](In, Out out) {
    MenuItem* const open = session.world.windows.OpenMenu();
    if (!session.Running() || !open) return;
    for (const ShownItem& item : session.Alive().person->Look(*open)) {
      out.Add(item.name);
      out.Add(item.caption);
      out.Add(item.checked);
    }
  });
}

}  // namespace quillbox
