#include <algorithm>
#include <functional>
#include <utility>

#include "console/Verbs.h"
#include "platform/forms/CheckBox.h"
#include "platform/forms/CommandButton.h"
#include "platform/forms/Label.h"
#include "platform/forms/OptionButton.h"
#include "platform/forms/Picture.h"

namespace quillbox {

namespace {

// How a property is read; false if the object has none of that name.
template <class Object>
struct Property {
  std::string name;
  std::function<bool(const Object&, Out)> read;
};

// Of objects of these kinds.
template <class... Kinds, class Reader>
Property<Control> Of(const char* name, Reader reader) {
  return {name, [=](const Control& control, Out out) {
            const auto readAs = [&](const auto* object) {
              if (object) out.Add(std::invoke(reader, *object));
              return object != nullptr;
            };
            return (readAs(dynamic_cast<const Kinds*>(&control)) || ...);
          }};
}

// Of all objects, but for timers, which have nothing of what all controls have.
template <class Object = Control, class Reader>
Property<Object> OfAll(const char* name, Reader reader) {
  return {name, [=](const Object& object, Out out) {
            if constexpr (std::is_same_v<Object, Control>) {
              if (dynamic_cast<const Timer*>(&object)) return false;
            }
            out.Add(std::invoke(reader, object));
            return true;
          }};
}

// One value a row.
template <class Value>
Property<Control> OfRows(const char* name, Value (*of)(const ListBox&, int)) {
  return Of<ListBox>(name, [of](const ListBox& list) {
    std::vector<Value> values;
    for (int row = 0; row < list.GetListCount(); ++row) values.push_back(of(list, row));
    return values;
  });
}

Text CurrentRow(const ListBox& list) { return list.GetList(list.GetListIndex()).Get(); }
Text CurrentRow(const ComboBox& box) { return box.Items()[box.GetListIndex()]; }

// The first that an object has counts.
const std::vector<Property<Control>> kOfControls{
    Of<TextBox, KeyBox>("Text", [](const auto& field) { return field.GetText(); }),
    Of<TextBox>("SelStart", &TextBox::GetSelStart), Of<TextBox>("BackColor", &TextBox::GetBackColor),
    Of<TextBox, Label>("Alignment", [](const auto& text) { return text.GetAlignment(); }),
    Of<Label, CommandButton, CheckBox, OptionButton, Picture>(
        "Caption", [](const auto& named) { return named.GetCaption(); }),
    Of<Label>("ForeColor", &Label::GetForeColor), Of<CommandButton>("Picture", &CommandButton::GetPicture),
    Of<CheckBox, OptionButton, ScrollBar>("Value", [](const auto& set) { return set.GetValue(); }),
    Of<ListBox, ComboBox>("ListIndex", [](const auto& list) { return list.GetListIndex(); }),
    Of<ListBox>("ListCount", &ListBox::GetListCount), Of<ListBox>("TopIndex", &ListBox::GetTopIndex),
    OfRows<Text>("List", [](const ListBox& list, int row) { return Text(list.GetList(row).Get()); }),
    OfRows<int>("Selected", [](const ListBox& list, int row) { return int{list.GetSelected(row)}; }),
    OfRows<int>("Shown", [](const ListBox& list, int row) { return int{list.IsRowShown(row)}; }),
    Of<ComboBox>("ListCount", [](const ComboBox& box) { return box.Items().size(); }),
    Of<ComboBox>("List", &ComboBox::Items),
    Of<ListBox, ComboBox>(
        "Text", [](const auto& list) { return list.GetListIndex() < 0 ? Text() : CurrentRow(list); }),
    Of<ScrollBar>("Min", &ScrollBar::GetMin), Of<ScrollBar>("Max", &ScrollBar::GetMax),
    Of<TabControl>("Tab", &TabControl::GetTab),
    Of<TabControl>("Caption", [](const TabControl& tabs) { return tabs.Captions()[tabs.GetTab()]; }),
    Of<Timer>("Interval", &Timer::GetInterval), Of<Timer>("Enabled", &Timer::GetEnabled),
    OfAll("Visible", &Control::GetVisible), OfAll("Enabled", &Control::GetEnabled),
    OfAll("ToolTipText", &Control::GetToolTipText),
    // Of all controls whose colours nobody changes.
    OfAll("ForeColor", [](const Control&) { return Color::Default; }),
    OfAll("BackColor", [](const Control&) { return Color::Default; })};

const std::vector<Property<MenuItem>> kOfMenuItems{OfAll<MenuItem>("Caption", &MenuItem::GetCaption),
                                                   OfAll<MenuItem>("Visible", &MenuItem::GetVisible),
                                                   OfAll<MenuItem>("Checked", &MenuItem::GetChecked)};

const std::vector<Property<Form>> kOfForms{
    OfAll<Form>("Loaded", &Form::GetLoaded),   OfAll<Form>("Visible", &Form::GetVisible),
    OfAll<Form>("Topmost", &Form::GetTopmost), OfAll<Form>("WindowState", &Form::GetWindowState),
    OfAll<Form>("Left", &Form::GetLeft),       OfAll<Form>("Top", &Form::GetTop),
    OfAll<Form>("Caption", &Form::GetCaption)};

template <class Object>
bool Read(const std::vector<Property<Object>>& properties, const Object& object, const std::string& name,
          Out out) {
  return std::any_of(properties.begin(), properties.end(),
                     [&](const auto& each) { return each.name == name && each.read(object, out); });
}

void Get(const Session& session, const std::string& name, const std::string& property, Out out) {
  // An item of the menu goes by its bare name too, as the menu lists it.
  if (const MenuItem* const item = session.FindMenuItem(name)) {
    if (!Read(kOfMenuItems, *item, property, out)) throw ConsoleError("the menu item has no such property");
  } else if (name.find('.') != std::string::npos) {
    if (!ReadProperty(session.GetControl(name), property, out))
      throw ConsoleError("the control has no such property");
  } else if (const Form* const form = session.FindForm(name)) {
    if (!Read(kOfForms, *form, property, out)) throw ConsoleError("the form has no such property");
  } else if (property == "Loaded" || property == "Visible") {
    out.Add(false);
  } else {
    throw ConsoleError("the form isn't loaded");
  }
}

// What the program has shown, sent, played and written so far, and the answers to its boxes.
void AddRecords(VerbTable& table, MemoryWorld& world) {
  table.Add("answer", 1, VerbTable::kAnyNumber, [&](In in, Out) {
    std::vector<BoxAnswer> buttons;
    for (std::size_t i = 0; i < in.Count(); ++i) buttons.push_back(static_cast<BoxAnswer>(in.Int(i)));
    world.messageBoxes.answers.insert(world.messageBoxes.answers.end(), buttons.begin(), buttons.end());
  });
  table.Add("boxes", 0, 0, [&](In, Out out) {
    for (const auto& [text, code, title] : std::exchange(world.messageBoxes.shown, {}))
      out.Add(code, title, text);
  });
  table.Add("keys", [&] { return std::exchange(world.keySender.sent, {}); });
  table.Add("keys.fail", [&](bool failing) { world.keySender.failing = failing; });
  table.Add("keys.class", [&](const Last& name) { world.keySender.windowClass = ToUtf8(name); });
  table.Add("sounds", [&] { return std::exchange(world.sound.played, {}); });
  table.Add("writes", [&](const Text& file) { return world.files.writes[file]; });
}

void AddTips(VerbTable& table, Session& session) {
  table.Add("settip", [&](QuillboxProgram& program, const std::string& name, const Last& text) {
    Control& control = session.GetControl(name);
    program.dispatcher.Dispatch([&] { control.SetToolTipText(text); });
  });
  table.Add("tip", 2, 2, [&](In in, Out out) {
    const frmTray& tray = *session.Alive().tray;
    const Control& control = session.GetControl(ToUtf8(in[0]));
    const TipLayout tip = tray.toolTips.Layout(control.GetToolTipText(), in.Int(1),
                                               session.world.windows.ScreenSize().width, session.world.tips);
    Text text;
    for (const TipLine& line : tip.lines) (text += &line == &tip.lines.front() ? u"" : u"\n") += line.text;
    out.Add(tip.left, tip.width, tip.height, tip.alignment, text);
  });
}

}  // namespace

bool ReadProperty(const Control& control, const std::string& name, Answer& answer) {
  return Read(kOfControls, control, name, answer);
}

void AddStateVerbs(VerbTable& table, Session& session) {
  AddRecords(table, session.world);
  AddTips(table, session);
  table.Add("get", 2, 2, [&](In in, Out out) { Get(session, ToUtf8(in[0]), ToUtf8(in[1]), out); });
  table.Add("slots", 1, 1, [&](In in, Out out) {
    const frmTray& tray = *session.Started().tray;
    if (in[0] != u"ClipEntries" && in[0] != u"PadEntries") throw ConsoleError("no such array");
    const EntrySlots& slots = in[0] == u"ClipEntries" ? tray.clip.ClipEntries : tray.pad.PadEntries;
    for (int i = 0; i < EntrySlots::kCount; ++i) out.Add(slots(i).Get());
  });
  table.Add("tray", 0, 0, [&](In, Out out) {
    const auto& icon = session.world.trayIcon.icon;
    const auto& [image, tip] = icon.value_or(MemoryTrayIcon::Icon());
    out.Add(icon.has_value(), image == TrayImage::Window ? "window" : "Picture1", tip);
  });
  table.Add("menu", 0, 0, [&](In, Out out) {
    const MenuItem* const open = session.world.windows.OpenMenu();
    if (session.Running() && open) session.Alive().person->Look(*open, out);
  });
}

}  // namespace quillbox
