#include <optional>

#include "console/Verbs.h"

namespace quillbox {

namespace {

// What is done to a control of that kind, which can be reached now, with the request's other arguments.
template <class Kind>
using Deed = std::function<void(Kind&, Person&, In, Out)>;

template <class Kind>
Kind& ReachableAs(Session& session, In in) {
  auto* const control = dynamic_cast<Kind*>(&session.Reachable(in.Name(0)));
  if (!control) throw ConsoleError("not that kind of control");
  return *control;
}

struct Deeds {
  VerbTable& table;
  Session& session;

  template <class Kind = Control>
  void Add(const char* verb, std::size_t least, std::size_t most, std::type_identity_t<Deed<Kind>> deed) {
    table.Add(verb, least, most, [&of = session, deed = std::move(deed)](In in, Out out) {
      Kind& control = ReachableAs<Kind>(of, in);
      deed(control, *of.Alive().person, in, out);
    });
  }
};

KeyEvent ReadKey(In in) {
  static const std::map<Text, int> kCodes{
      {u"Delete", keys::kDelete},     {u"Enter", keys::kEnter}, {u"Home", keys::kHome},
      {u"End", keys::kEnd},           {u"Up", keys::kUp},       {u"Down", keys::kDown},
      {u"Left", keys::kLeft},         {u"Right", keys::kRight}, {u"PageUp", keys::kPageUp},
      {u"PageDown", keys::kPageDown}, {u"Space", keys::kSpace}, {u"Escape", keys::kEscape},
  };
  const auto code = kCodes.find(in[1]);
  if (code == kCodes.end()) throw ConsoleError("no such key");
  KeyEvent key;
  key.code = code->second;
  for (std::size_t i = 2; i < in.Count(); ++i) {
    if (in[i].empty() && i + 1 == in.Count()) break;
    bool& modifier = in[i] == u"ctrl"    ? key.ctrl
                     : in[i] == u"shift" ? key.shift
                     : in[i] == u"alt"   ? key.alt
                                         : throw ConsoleError("no such modifier");
    modifier = true;
  }
  return key;
}

Control& Focusable(Control& control) {
  if (!control.TakesFocus()) throw ConsoleError("the control doesn't take the focus");
  return control;
}

// The argument as an index of one of `count` things.
int Index(In in, std::size_t i, std::size_t count) {
  return static_cast<int>(in.Number(i, 0, static_cast<long long>(count) - 1));
}

int Row(const ListBox& list, In in, std::size_t i) {
  const int row = Index(in, i, static_cast<std::size_t>(list.GetListCount()));
  if (!list.IsRowShown(row)) throw ConsoleError("the row is hidden");
  return row;
}

void AddLists(Deeds deeds) {
  deeds.Add<ListBox>("select", 1, VerbTable::kAnyNumber, [](auto& list, auto& person, In in, Out) {
    std::vector<int> rows;
    const bool none = in.Count() == 2 && in[1].empty();
    for (std::size_t i = 1; i < in.Count() && !none; ++i) rows.push_back(Row(list, in, i));
    person.Select(list, rows);
  });
  deeds.Add<ListBox>("dblrow", 2, 2, [](auto& list, auto& person, In in, Out) {
    person.DoubleClickRow(list, Row(list, in, 1));
  });
  deeds.Add<ListBox>("check", 3, 3, [](auto& list, auto& person, In in, Out) {
    if (!list.HasCheckBoxes()) throw ConsoleError("the list has no check boxes");
    const bool checked = in.Flag(2);
    person.Check(list, Row(list, in, 1), checked);
  });
  deeds.Add<ListBox>("drag", 1, 1, [](auto& list, auto& person, In, Out out) { out.Add(person.Drag(list)); });
}

void AddTray(VerbTable& table, Session& session) {
  MemoryWindows& windows = session.world.windows;
  table.Add("tray.mouse", 1, [&](In in, Out) {
    QuillboxProgram& program = session.Alive();
    const int message = in.Int(0);
    if (!session.world.trayIcon.IsThere()) throw ConsoleError("there is no icon");
    windows.CloseMenu();
    program.dispatcher.Dispatch([&] { session.world.trayIcon.Press(message); });
  });
  table.Add("pick", 1, [&](In in, Out) {
    QuillboxProgram& program = session.Alive();
    MenuItem* const item = session.FindMenuItem(in.Name(0));
    if (!item) throw ConsoleError("no such menu item");
    windows.CloseMenu();
    program.person->Pick(*item);
  });
  table.Add("find", 1, [&](In in, Out) {
    Person& person = *session.Alive().person;
    Form& form = session.LoadedForm(in.Name(0));
    if (!form.GetVisible()) throw ConsoleError("the form is hidden");
    person.Find(form);
  });
  // To another program's window.
  table.Add("leave", 0, [&](In, Out) { windows.Leave(session.Alive().tray->form); });
  table.Add("globalkey.press", 0, [&](In, Out) {
    session.Alive();
    if (!session.world.globalKey.Works()) throw ConsoleError("no key is bound");
    session.world.globalKey.Press();
  });
  table.Add("move", 3, [&](In in, Out) {
    Person& person = *session.Alive().person;
    Form& form = session.LoadedForm(in.Name(0));
    const int left = in.Int(1);
    const int top = in.Int(2);
    if (!form.GetVisible()) throw ConsoleError("the form is hidden");
    person.Move(form, left, top);
  });
}

}  // namespace

void AddPersonVerbs(VerbTable& table, Session& session) {
  Deeds deeds{table, session};
  deeds.Add<TextBox>("settext", 1, 2,
                     [](auto& field, auto& person, In in, Out) { person.SetText(field, in[1]); });
  deeds.Add("type", 1, 2, [](auto& control, auto& person, In in, Out) {
    if (!TakesCharacters(control)) throw ConsoleError("nothing can be typed there");
    person.Type(control, in[1]);
  });
  deeds.Add<KeyBox>("combination", 2, 2, [](auto& box, auto& person, In in, Out) {
    const auto key = ParseCombination(in[1]);
    if (!key) throw ConsoleError("no such key");
    person.Press(box, *key);
  });
  deeds.Add("click", 1, 1, [](auto& control, auto& person, In, Out) { person.Click(control); });
  deeds.Add("dblclick", 1, 1, [](auto& control, auto& person, In, Out) { person.DoubleClick(control); });
  deeds.Add("focus", 1, 1, [](auto& control, auto& person, In, Out) { person.Focus(Focusable(control)); });
  deeds.Add("drop", 1, 2, [](auto& control, auto& person, In in, Out) { person.Drop(control, in[1]); });
  deeds.Add("dropother", 1, 1,
            [](auto& control, auto& person, In, Out) { person.Drop(control, std::nullopt); });
  deeds.Add<ComboBox>("choose", 2, 2, [](auto& box, auto& person, In in, Out) {
    person.Choose(box, Index(in, 1, box.Items().size()));
  });
  deeds.Add<TabControl>("tab", 2, 2, [](auto& tabs, auto& person, In in, Out) {
    person.Tab(tabs, Index(in, 1, tabs.Captions().size()));
  });
  AddLists(deeds);
  AddTray(table, session);
  // Of these the other arguments are read first.
  table.Add("key", 2, 5, [&](In in, Out) {
    const KeyEvent key = ReadKey(in);
    Control& control = Focusable(session.Reachable(in.Name(0)));
    session.Alive().person->Key(control, key);
  });
  table.Add("spin", 2, [&](In in, Out) {
    const bool up = in[1] == u"up";
    if (!up && in[1] != u"down") throw ConsoleError("neither up nor down");
    auto& upDown = ReachableAs<UpDown>(session, in);
    session.Alive().person->Spin(upDown, up);
  });
  table.Add("scroll", 2, [&](In in, Out) {
    const int value = in.Int(1);
    auto& bar = ReachableAs<ScrollBar>(session, in);
    session.Alive().person->Scroll(bar, value);
  });
}

}  // namespace quillbox
