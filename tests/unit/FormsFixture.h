#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>

#include "memory/VirtualTimers.h"
#include "platform/forms/CommandButton.h"
#include "platform/forms/Form.h"
#include "platform/forms/Label.h"
#include "platform/forms/ListBox.h"
#include "platform/forms/TextBox.h"

namespace quillbox {

// A shown form with controls, and what has happened to them since somebody last asked.
class Forms : public testing::Test {
 protected:
  Forms() {
    dispatcher.UseTimerHost(&timers);
    form.SetActivates(false);
    form.Show();
    for (Control* control : form.Controls()) Record(*control);
    for (const char16_t* text : {u"a", u"b", u"c", u"d", u"e", u"f"}) list.AddItem(text);
    list.Click = Count();
  }
  std::function<void()> Count() {
    return [this] { ++events; };
  }
  int Take() { return std::exchange(events, 0); }
  std::function<void()> Note(const std::string& what) {
    return [this, what] { log += (log.empty() ? "" : ", ") + what; };
  }
  std::string TakeLog() { return std::exchange(log, {}); }
  void Record(Control& control) {
    control.GotFocus = Note("to " + control.Name());
    control.LostFocus = Note("from " + control.Name());
  }
  // Gives an event that is noted another handler.
  static void Instead(Event<>& event, const std::function<void()>& handler) {
    event = nullptr;
    event = handler;
  }

  static void Type(TextBox& into, TextView characters) {
    for (const char16_t character : characters) into.PersonCharacter(character);
  }
  static void Press(Control& on, int code, bool ctrl = false) {
    KeyEvent key;
    key.code = code;
    key.ctrl = ctrl;
    on.PersonKey(key);
  }
  // The current row, then a digit a row, 1 for selected.
  std::string Rows() const {
    std::string rows = std::to_string(list.GetListIndex()) + " ";
    for (int row = 0; row < list.GetListCount(); ++row) rows += list.GetSelected(row) ? '1' : '0';
    return rows;
  }

  MemoryClock clock;
  VirtualTimers timers{clock};
  Dispatcher dispatcher;
  Form form{dispatcher, "form", u"Form"};
  int events = 0;
  std::string log;
  TextBox line{form, "line", TextBox::Lines::One};
  TextBox block{form, "block", TextBox::Lines::Many};
  CommandButton button{form, "button", u"Button"};
  Label label{form, "label"};
  ListBox list{form, "list", ListBox::Kind::ExtendedSelection, 3};
};

}  // namespace quillbox
