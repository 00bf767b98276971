#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/RuntimeError.h"
#include "platform/forms/CommandButton.h"
#include "platform/forms/Dispatcher.h"
#include "platform/forms/Form.h"
#include "platform/forms/Label.h"
#include "platform/forms/TextBox.h"

namespace quillbox {

// A shown form that takes its controls from the test, and a count of events.
class FormsFixture : public testing::Test {
 protected:
  FormsFixture() {
    form.SetActivates(false);
    form.Show();
  }
  auto Count() {
    return [this] { ++events; };
  }
  // How many there were since the last call.
  int Take() { return std::exchange(events, 0); }

  static void Type(TextBox& into, TextView characters) {
    for (const char16_t character : characters) into.PersonCharacter(character);
  }
  static void Press(Control& on, int code, bool ctrl = false, bool shift = false) {
    KeyEvent key;
    key.code = code;
    key.ctrl = ctrl;
    key.shift = shift;
    on.PersonKey(key);
  }

  Dispatcher dispatcher;
  Form form{dispatcher, "form", u"Form"};
  int events = 0;
};

}  // namespace quillbox
