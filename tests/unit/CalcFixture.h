#pragma once

#include <gtest/gtest.h>

#include <sstream>

#include "calc/CalcPage.h"
#include "memory/MemoryWorld.h"
#include "platform/Utf8.h"
#include "platform/forms/Dispatcher.h"
#include "platform/forms/Form.h"

namespace quillbox {

// The Calc page on a form of its own, worked like a person works it.
class CalcFixture : public testing::Test {
 protected:
  Control& Named(const std::string& name) {
    Control* const control = form_.Find(name);
    if (control == nullptr) throw std::invalid_argument("no control " + name);
    return *control;
  }
  TextBox& Field(const std::string& name) { return dynamic_cast<TextBox&>(Named(name)); }
  std::string Value(const std::string& name) { return ToUtf8(Field(name).GetText()); }
  std::string Shown() { return Value("Text7"); }
  // Pending operator, left operand, entry state.
  std::string State() { return Value("Text8") + "|" + Value("Text9") + "|" + Value("Text10"); }

  CommandButton& Button(const std::string& caption) {
    for (Control* const control : form_.Controls()) {
      auto* const button = dynamic_cast<CommandButton*>(control);
      if (button != nullptr && ToUtf8(button->GetCaption()) == caption) return *button;
    }
    throw std::invalid_argument("no button " + caption);
  }

  // Clicks buttons by their captions, blanks between them; a number is clicked digit by digit, "<" is
  // backspace. Gives what is shown then.
  std::string Press(const std::string& captions) {
    std::istringstream words(captions);
    for (std::string word; words >> word;) {
      if (word == "<") {
        Named("Command22").PersonClick();
      } else if (word.find_first_not_of("0123456789,") == std::string::npos) {
        for (const char key : word) Button(std::string(1, key)).PersonClick();
      } else {
        Button(word).PersonClick();
      }
    }
    return Shown();
  }
  // Types into the display, which gets the focus first if it hasn't got it.
  std::string Type(const Text& keys) {
    for (const char16_t key : keys) Field("Text7").PersonCharacter(key);
    return Shown();
  }
  void FocusDisplay() { Named("Text7").PersonFocus(); }
  void LeaveDisplay() { Named("SSTab1").PersonFocus(); }
  // Another number on display, finished as after a computation.
  void Put(const std::string& text) {
    Field("Text7").SetText(FromUtf8(text));
    Field("Text10").SetText(u"k");
  }
  bool Enabled(const std::string& name) { return Named(name).GetEnabled(); }

  // A program's main window with its Calc page in front.
  struct Program {
    explicit Program(MemoryWorld& world)
        : settings(world.registry, world.system),
          window(form, settings, world.platform),
          page(window, settings, world.clipboard, world.system) {
      dispatcher.UseTimerHost(&world.timers);
      window.SSTab1.SetTab(static_cast<int>(Page::Calc));
      form.Show();
    }

    Dispatcher dispatcher;
    Form form{dispatcher, "frmTray", u"Quillbox"};
    Norvane settings;
    MainWindow window;
    CalcPage page;
  };

  MemoryWorld world_;
  Program program_{world_};
  Form& form_ = program_.form;
  Norvane& settings_ = program_.settings;
  CalcPage& page_ = program_.page;
  MemoryClipboard& clipboard_ = world_.clipboard;
  MemorySystem& system_ = world_.system;
};

}  // namespace quillbox
