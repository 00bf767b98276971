#pragma once

#include <gtest/gtest.h>

#include <stdexcept>

#include "base/Utf8.h"
#include "core/window/MainWindow.h"
#include "memory/MemoryWorld.h"
#include "platform/forms/Dispatcher.h"
#include "platform/forms/Form.h"

namespace quillbox {

// The main window around one page, worked like a person works it. The page is a member of the fixture on top.
class PageFixture : public testing::Test {
 protected:
  // When the page is made.
  void ShowWith(Page page) {
    settings_.PrepareRegistry();
    form_.Load();
    form_.SetVisible(true);
    window_.SSTab1.SetTab(static_cast<int>(page));
  }

  template <class Kind = Control>
  Kind& Named(const std::string& name) {
    auto* const control = dynamic_cast<Kind*>(form_.Find(name));
    if (control == nullptr) throw std::invalid_argument("no control " + name);
    return *control;
  }
  TextBox& Field(const std::string& name) { return Named<TextBox>(name); }
  std::string Value(const std::string& name) { return ToUtf8(Field(name).GetText()); }
  std::string Caption(const std::string& name) { return ToUtf8(Named<Label>(name).GetCaption()); }
  bool Enabled(const std::string& name) { return Named(name).GetEnabled(); }
  void Click(const std::string& name) { Named(name).PersonClick(); }
  void Type(const std::string& field, const Text& keys) {
    for (const char16_t key : keys) Field(field).PersonCharacter(key);
  }
  // To something that isn't on the page.
  void MoveFocusAway() { window_.SSTab1.PersonFocus(); }

  // Tells the timers, before any is made, who lets their time pass.
  struct TimedDispatcher : Dispatcher {
    explicit TimedDispatcher(TimerHost& host) { UseTimerHost(&host); }
  };

  MemoryWorld world_;
  TimedDispatcher dispatcher_{world_.timers};
  Form form_{dispatcher_, "frmTray", u"Quillbox"};
  Norvane settings_{world_.registry, world_.system};
  MainWindow window_{form_, settings_, world_.platform};
};

}  // namespace quillbox
