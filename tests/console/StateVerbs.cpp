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

// What is read of an object of that kind: any control, or a form or a menu item as such.
template <class Kind>
using Root = std::conditional_t<std::is_base_of_v<Control, Kind>, Control, Kind>;

// Of objects of these kinds.
template <class Kind, class... Others, class Reader>
Property<Root<Kind>> Of(const char* name, Reader reader) {
  return {name, [=](const Root<Kind>& whole, Out out) {
            const auto readAs = [&](const auto* object) {
              if (object) out.Add(std::invoke(reader, *object));
              return object != nullptr;
            };
            return (readAs(dynamic_cast<const Kind*>(&whole)) || ... ||
                    readAs(dynamic_cast<const Others*>(&whole)));
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
    Of<Control>("Visible", &Control::GetVisible), Of<Control>("Enabled", &Control::GetEnabled),
    Of<Control>("ToolTipText", &Control::GetToolTipText),
    // Of all controls whose colours nobody changes.
    Of<Control>("ForeColor", [](const Control&) { return Color::Default; }),
    Of<Control>("BackColor", [](const Control&) { return Color::Default; })};

// A timer has nothing of what all other controls have.
const std::vector<Property<Control>> kOfTimers{Of<Timer>("Interval", &Timer::GetInterval),
                                               Of<Timer>("Enabled", &Timer::GetEnabled)};

const std::vector<Property<MenuItem>> kOfMenuItems{Of<MenuItem>("Caption", &MenuItem::GetCaption),
                                                   Of<MenuItem>("Visible", &MenuItem::GetVisible),
                                                   Of<MenuItem>("Checked", &MenuItem::GetChecked)};

const std::vector<Property<Form>> kOfForms{
    Of<Form>("Loaded", &Form::GetLoaded),   Of<Form>("Visible", &Form::GetVisible),
    Of<Form>("Topmost", &Form::GetTopmost), Of<Form>("WindowState", &Form::GetWindowState),
    Of<Form>("Left", &Form::GetLeft),       Of<Form>("Top", &Form::GetTop),
    Of<Form>("Caption", &Form::GetCaption)};

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
  table.Add("answer", [&](int first, const Rest<>& others) {
    std::vector<BoxAnswer> buttons{static_cast<BoxAnswer>(first)};
    for (const Argument& each : others) buttons.push_back(static_cast<BoxAnswer>(each.Int()));
    world.messageBoxes.answers.insert(world.messageBoxes.answers.end(), buttons.begin(), buttons.end());
  });
  table.Add("boxes", [&](Out out) {
    for (const auto& [text, code, title] : std::exchange(world.messageBoxes.shown, {}))
      out.Add(code, title, text);
  });
  table.Add("keys", [&] { return std::exchange(world.keySender.sent, {}); });
  table.Add("keys.fail", [&](bool failing) { world.keySender.failing = failing; });
  table.Add("keys.class", [&](const Last& name) { world.keySender.windowClass = ToUtf8(name); });
  table.Add("sounds", [&] { return std::exchange(world.sound.played, {}); });
  table.Add("writes", [&](const Text& file) { return world.files.writes[file]; });
}

}  // namespace

bool ReadProperty(const Control& control, const std::string& name, Answer& answer) {
  const bool isTimer = dynamic_cast<const Timer*>(&control) != nullptr;
  return Read(isTimer ? kOfTimers : kOfControls, control, name, answer);
}

void AddStateVerbs(VerbTable& table, Session& session) {
  AddRecords(table, session.world);
  table.Add("get", [&](const std::string& name, const std::string& property, Out out) {
    Get(session, name, property, out);
  });
  table.Add("slots", [&](const Text& array) {
    const frmTray& tray = *session.Started().tray;
    if (array != u"ClipEntries" && array != u"PadEntries") throw ConsoleError("no such array");
    const EntrySlots& slots = array == u"ClipEntries" ? tray.clip.ClipEntries : tray.pad.PadEntries;
    std::vector<Text> texts;
    for (int i = 0; i < EntrySlots::kCount; ++i) texts.emplace_back(slots(i).Get());
    return texts;
  });
  table.Add("tray", [&](Out out) {
    const auto& icon = session.world.trayIcon.icon;
    const auto& [image, tip] = icon.value_or(MemoryTrayIcon::Icon());
    out.Add(icon.has_value(), image == TrayImage::Window ? "window" : "Picture1", tip);
  });
  table.Add("menu", [&](Out out) {
    const MenuItem* const open = session.world.windows.OpenMenu();
    if (session.Running() && open) session.Alive().person->Look(*open, out);
  });
  table.Add("settip", [&](QuillboxProgram& program, const std::string& name, const Last& text) {
    Control& control = session.GetControl(name);
    program.dispatcher.Dispatch([&] { control.SetToolTipText(text); });
  });
  table.Add("tip", [&](QuillboxProgram& program, const std::string& name, const Argument& x, Out out) {
    const Text& tipText = session.GetControl(name).GetToolTipText();
    const TipLayout tip = program.tray->toolTips.Layout(
        tipText, x.Int(), session.world.windows.ScreenSize().width, session.world.tips);
    Text text;
    for (const TipLine& line : tip.lines) (text += &line == &tip.lines.front() ? u"" : u"\n") += line.text;
    out.Add(tip.left, tip.width, tip.height, tip.alignment, text);
  });
}

}  // namespace quillbox
