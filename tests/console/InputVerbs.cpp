// Keys, mouse, and what can be done with one kind of control alone.
#include <map>
#include <optional>

#include "console/Reach.h"
#include "console/Verbs.h"
#include "platform/forms/ComboBox.h"
#include "platform/forms/Dispatcher.h"
#include "platform/forms/ScrollBar.h"
#include "platform/forms/TabControl.h"
#include "platform/forms/TextBox.h"
#include "platform/forms/UpDown.h"

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

// Characters go to whatever has the focus by then, as from a keyboard.
void Type(Session& session, TextBox& field, const Text& characters) {
  Dispatcher& dispatcher = session.Alive().GetDispatcher();
  field.PersonFocus();
  for (const char16_t character : characters) {
    Control* const focused = dispatcher.Focused();
    if (!session.Running() || !focused || !focused->IsReachable()) return;
    if (auto* const into = dynamic_cast<TextBox*>(focused)) {
      into->PersonCharacter(character);
    } else if (character == keys::kEnter || character == keys::kSpace || character == keys::kEscape) {
      focused->PersonKey(KeyEvent{character});
    }
  }
}

Control& Focusable(Session& session, std::string_view name) {
  Control& control = Reachable(session, name);
  if (!control.TakesFocus()) throw ConsoleError("the control doesn't take the focus");
  return control;
}

void AddKeyboard(VerbTable& table, Session& session) {
  table.Add("settext", 1, 2, [&](const Arguments& arguments, Answer&) {
    ReachableAs<TextBox>(session, arguments.Name(0)).PersonSetText(arguments[1]);
  });
  table.Add("type", 1, 2, [&](const Arguments& arguments, Answer&) {
    Type(session, ReachableAs<TextBox>(session, arguments.Name(0)), arguments[1]);
  });
  table.Add("key", 2, 5, [&](const Arguments& arguments, Answer&) {
    const KeyEvent key = ReadKey(arguments);
    Focusable(session, arguments.Name(0)).PersonKey(key);
  });
}

void AddMouse(VerbTable& table, Session& session) {
  table.Add("click", 1, [&](const Arguments& arguments, Answer&) {
    Reachable(session, arguments.Name(0)).PersonClick();
  });
  table.Add("dblclick", 1, [&](const Arguments& arguments, Answer&) {
    Reachable(session, arguments.Name(0)).PersonDoubleClick();
  });
  table.Add("focus", 1, [&](const Arguments& arguments, Answer&) {
    Focusable(session, arguments.Name(0)).PersonFocus();
  });
  table.Add("drop", 1, 2, [&](const Arguments& arguments, Answer&) {
    Reachable(session, arguments.Name(0)).PersonDrop(arguments[1]);
  });
  table.Add("dropother", 1, [&](const Arguments& arguments, Answer&) {
    Reachable(session, arguments.Name(0)).PersonDrop(std::nullopt);
  });
  table.Add("move", 3, [&](const Arguments& arguments, Answer&) {
    session.Alive();
    Form& form = session.LoadedForm(arguments.Name(0));
    const int left = arguments.Int(1);
    const int top = arguments.Int(2);
    if (!form.GetVisible()) throw ConsoleError("the form is hidden");
    form.PersonMove(left, top);
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
    ReachableAs<UpDown>(session, arguments.Name(0)).PersonSpin(up);
  });
  table.Add("scroll", 2, [&](const Arguments& arguments, Answer&) {
    const int value = arguments.Int(1);
    ReachableAs<ScrollBar>(session, arguments.Name(0)).PersonScroll(value);
  });
  table.Add("choose", 2, [&](const Arguments& arguments, Answer&) {
    auto& box = ReachableAs<ComboBox>(session, arguments.Name(0));
    box.PersonChoose(Index(arguments, box.Items().size()));
  });
  table.Add("tab", 2, [&](const Arguments& arguments, Answer&) {
    auto& tabs = ReachableAs<TabControl>(session, arguments.Name(0));
    tabs.PersonTab(Index(arguments, tabs.Captions().size()));
  });
}

}  // namespace quillbox
