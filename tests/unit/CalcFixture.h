#pragma once

#include <sstream>

#include "calc/CalcPage.h"
#include "unit/PageFixture.h"

namespace quillbox {

class CalcFixture : public PageFixture {
 protected:
  CalcFixture() { ShowWith(Page::Calc); }

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
        Click("Command22");
      } else if (word.find_first_not_of("0123456789,") == std::string::npos) {
        for (const char key : word) Button(std::string(1, key)).PersonClick();
      } else {
        Button(word).PersonClick();
      }
    }
    return Shown();
  }
  // Another number on display, finished as after a computation.
  void Put(const std::string& text) {
    Field("Text7").SetText(FromUtf8(text));
    Field("Text10").SetText(u"k");
  }

  MemoryClipboard& clipboard_ = world_.clipboard;
  MemorySystem& system_ = world_.system;
  CalcPage page_{window_, settings_, clipboard_, system_};
};

}  // namespace quillbox
