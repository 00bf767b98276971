#include "console/Verbs.h"

namespace quillbox {

namespace {

KeyEvent ReadKey(const Text& name, const std::vector<Argument>& modifiers) {
  static const std::map<Text, int> kCodes{
      {u"Delete", keys::kDelete},     {u"Enter", keys::kEnter}, {u"Home", keys::kHome},
      {u"End", keys::kEnd},           {u"Up", keys::kUp},       {u"Down", keys::kDown},
      {u"Left", keys::kLeft},         {u"Right", keys::kRight}, {u"PageUp", keys::kPageUp},
      {u"PageDown", keys::kPageDown}, {u"Space", keys::kSpace}, {u"Escape", keys::kEscape}};
  const auto code = kCodes.find(name);
  if (code == kCodes.end()) throw ConsoleError("no such key");
  KeyEvent key{code->second};
  for (const auto& [held, number] : modifiers) {
    if (held.empty() && &held == &modifiers.back().text) break;
    bool& modifier = held == u"ctrl"    ? key.ctrl
                     : held == u"shift" ? key.shift
                     : held == u"alt"   ? key.alt
                                        : throw ConsoleError("no such modifier");
    modifier = true;
  }
  return key;
}

Control& Focusable(Control& control) {
  return control.TakesFocus() ? control : throw ConsoleError("the control doesn't take the focus");
}

Form& Visible(Form& form) { return form.GetVisible() ? form : throw ConsoleError("the form is hidden"); }

int Row(const ListBox& list, const Argument& argument) {
  const int row = argument.Index(static_cast<std::size_t>(list.GetListCount()));
  return list.IsRowShown(row) ? row : throw ConsoleError("the row is hidden");
}

void AddControls(VerbTable& table, const Session& session) {
  table.Add("click", [](Person& person, Control& control) { person.Click(control); });
  table.Add("dblclick", [](Person& person, Control& control) { person.DoubleClick(control); });
  table.Add("focus", [](Person& person, Control& control) { person.Focus(Focusable(control)); });
  table.Add("drop", [](Person& person, Control& control, const Last& text) { person.Drop(control, text); });
  table.Add("dropother", [](Person& person, Control& control) { person.Drop(control, std::nullopt); });
  table.Add("settext", [](Person& person, TextBox& field, const Last& text) { person.SetText(field, text); });
  table.Add("type", [](Person& person, Control& control, const Last& text) {
    if (!TakesCharacters(control)) throw ConsoleError("nothing can be typed there");
    person.Type(control, text);
  });
  table.Add("key", [&](const std::string& name, const Text& key, const Rest<3>& modifiers) {
    const KeyEvent event = ReadKey(key, modifiers);
    Control& control = Focusable(session.Reachable(name));
    session.Alive().person->Key(control, event);
  });
  table.Add("combination", [](Person& person, KeyBox& box, const Text& text) {
    const auto key = ParseCombination(text);
    person.Press(box, key ? *key : throw ConsoleError("no such key"));
  });
  table.Add("choose", [](Person& person, ComboBox& box, Argument index) {
    person.Choose(box, index.Index(box.Items().size()));
  });
  table.Add("tab", [](Person& person, TabControl& tabs, Argument page) {
    person.Tab(tabs, page.Index(tabs.Captions().size()));
  });
  table.Add("spin", [&](const std::string& upDown, const Text& where) {
    const bool up = where == u"up";
    if (!up && where != u"down") throw ConsoleError("neither up nor down");
    auto& arrows = session.Reachable<UpDown>(upDown);
    session.Alive().person->Spin(arrows, up);
  });
  table.Add("scroll", [&](const std::string& bar, int value) {
    auto& moved = session.Reachable<ScrollBar>(bar);
    session.Alive().person->Scroll(moved, value);
  });
  table.Add("select", [](Person& person, ListBox& list, const Rest<>& numbers) {
    std::vector<int> rows;
    const bool none = numbers.size() == 1 && numbers[0].text.empty();
    for (const Argument& number : numbers) {
      if (!none) rows.push_back(Row(list, number));
    }
    person.Select(list, rows);
  });
  table.Add("dblrow",
            [](Person& person, ListBox& list, Argument row) { person.DoubleClickRow(list, Row(list, row)); });
  table.Add("check", [](Person& person, ListBox& list, Argument row, Argument mark) {
    if (!list.HasCheckBoxes()) throw ConsoleError("the list has no check boxes");
    const bool checked = mark.Index(2) == 1;
    person.Check(list, Row(list, row), checked);
  });
  table.Add("drag", [](Person& person, ListBox& list) { return person.Drag(list); });
}

}  // namespace

void AddPersonVerbs(VerbTable& table, Session& session) {
  AddControls(table, session);
  MemoryWorld& world = session.world;
  table.Add("tray.mouse", [&](QuillboxProgram& program, int message) {
    if (!world.trayIcon.icon) throw ConsoleError("there is no icon");
    world.windows.CloseMenu();
    program.dispatcher.Dispatch([&] { world.trayIcon.Press(message); });
  });
  table.Add("pick", [&](Person& person, const std::string& name) {
    MenuItem* const item = session.FindMenuItem(name);
    if (!item) throw ConsoleError("no such menu item");
    world.windows.CloseMenu();
    person.Pick(*item);
  });
  table.Add("find", [](Person& person, Form& form) { person.Find(Visible(form)); });
  table.Add("move",
            [](Person& person, Form& form, int left, int top) { person.Move(Visible(form), left, top); });
  // To another program's window.
  table.Add("leave", [&](QuillboxProgram& program) { world.windows.Leave(program.tray->form); });
  table.Add("globalkey.press", [&](QuillboxProgram&) {
    if (!world.globalKey.Works()) throw ConsoleError("no key is bound");
    world.globalKey.Press();
  });
}

}  // namespace quillbox
