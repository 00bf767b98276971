// Keys, mouse, and what can be done with one kind of control alone.
#include <map>
#include <optional>

#include "console/Reach.h"
#include "console/Verbs.h"

namespace quillbox {

namespace {

int KeyCode(const Text& name) {
  static const std::map<Text, int> kCodes{
      {u"Delete", keys::kDelete},     {u"Enter", keys::kEnter}, {u"Home", keys::kHome},
      {u"End", keys::kEnd},           {u"Up", keys::kUp},       {u"Down", keys::kDown},
      {u"Left", keys::kLeft},         {u"Right", keys::kRight}, {u"PageUp", keys::kPageUp},
      {u"PageDown", keys::kPageDown}, {u"Space", keys::kSpace}, {u"Escape", keys::kEscape},
  };
  const auto code = kCodes.find(name);
  if (code == kCodes.end()) throw ConsoleError("no such key");
  return code->second;
}

KeyEvent ReadKey(const Arguments& arguments) {
  KeyEvent key;
  key.code = KeyCode(arguments[1]);
  for (std::size_t i = 2; i < arguments.Count(); ++i) {
    if (arguments[i].empty() && i + 1 == arguments.Count()) break;
    bool& modifier = arguments[i] == u"ctrl"    ? key.ctrl
                     : arguments[i] == u"shift" ? key.shift
                     : arguments[i] == u"alt"   ? key.alt
                                                : throw ConsoleError("no such modifier");
    modifier = true;
  }
  return key;
}

Control& Focusable(Session& session, std::string_view name) {
  Control& control = Reachable(session, name);
  if (!control.TakesFocus()) throw ConsoleError("the control doesn't take the focus");
  return control;
}

void AddKeyboard(VerbTable& table, Session& session) {
  table.Add("settext", 1, 2, [&](const Arguments& arguments, Answer&) {
    auto& field = ReachableAs<TextBox>(session, arguments.Name(0));
    session.Alive().GetPerson().SetText(field, arguments[1]);
  });
  table.Add("type", 1, 2, [&](const Arguments& arguments, Answer&) {
    auto& field = ReachableAs<TextBox>(session, arguments.Name(0));
    session.Alive().GetPerson().Type(field, arguments[1]);
  });
  table.Add("key", 2, 5, [&](const Arguments& arguments, Answer&) {
    const KeyEvent key = ReadKey(arguments);
    Control& control = Focusable(session, arguments.Name(0));
    session.Alive().GetPerson().Key(control, key);
  });
}

void AddMouse(VerbTable& table, Session& session) {
  table.Add("click", 1, [&](const Arguments& arguments, Answer&) {
    Control& control = Reachable(session, arguments.Name(0));
    session.Alive().GetPerson().Click(control);
  });
  table.Add("dblclick", 1, [&](const Arguments& arguments, Answer&) {
    Control& control = Reachable(session, arguments.Name(0));
    session.Alive().GetPerson().DoubleClick(control);
  });
  table.Add("focus", 1, [&](const Arguments& arguments, Answer&) {
    Control& control = Focusable(session, arguments.Name(0));
    session.Alive().GetPerson().Focus(control);
  });
  table.Add("drop", 1, 2, [&](const Arguments& arguments, Answer&) {
    Control& control = Reachable(session, arguments.Name(0));
    session.Alive().GetPerson().Drop(control, arguments[1]);
  });
  table.Add("dropother", 1, [&](const Arguments& arguments, Answer&) {
    Control& control = Reachable(session, arguments.Name(0));
    session.Alive().GetPerson().Drop(control, std::nullopt);
  });
  table.Add("move", 3, [&](const Arguments& arguments, Answer&) {
    Person& person = session.Alive().GetPerson();
    Form& form = session.LoadedForm(arguments.Name(0));
    const int left = arguments.Int(1);
    const int top = arguments.Int(2);
    if (!form.GetVisible()) throw ConsoleError("the form is hidden");
    person.Move(form, left, top);
  });
}

// An index of one of `count` things.
int Index(const Arguments& arguments, std::size_t count) {
  return static_cast<int>(arguments.Number(1, 0, static_cast<long long>(count) - 1));
}

}  // namespace

void AddInputVerbs(VerbTable& table, Session& session) {
  AddKeyboard(table, session);
  AddMouse(table, session);
  table.Add("spin", 2, [&](const Arguments& arguments, Answer&) {
    const bool up = arguments[1] == u"up";
    if (!up && arguments[1] != u"down") throw ConsoleError("neither up nor down");
    auto& upDown = ReachableAs<UpDown>(session, arguments.Name(0));
    session.Alive().GetPerson().Spin(upDown, up);
  });
  table.Add("scroll", 2, [&](const Arguments& arguments, Answer&) {
    const int value = arguments.Int(1);
    auto& bar = ReachableAs<ScrollBar>(session, arguments.Name(0));
    session.Alive().GetPerson().Scroll(bar, value);
  });
  table.Add("choose", 2, [&](const Arguments& arguments, Answer&) {
    auto& box = ReachableAs<ComboBox>(session, arguments.Name(0));
    const int index = Index(arguments, box.Items().size());
    session.Alive().GetPerson().Choose(box, index);
  });
  table.Add("tab", 2, [&](const Arguments& arguments, Answer&) {
    auto& tabs = ReachableAs<TabControl>(session, arguments.Name(0));
    const int index = Index(arguments, tabs.Captions().size());
    session.Alive().GetPerson().Tab(tabs, index);
  });
}

}  // namespace quillbox
