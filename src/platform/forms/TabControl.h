#pragma once

#include <vector>

#include "base/RuntimeError.h"
#include "platform/forms/Control.h"
#include "platform/forms/Dispatcher.h"

namespace quillbox {

// Pages of which one is in front.
class TabControl : public Control {
 public:
  TabControl(const Place& place, std::string_view name, std::vector<Text> captions)
      : Control(place, name), captions_(std::move(captions)) {}

  bool TakesFocus() const override { return true; }
  const std::vector<Text>& Captions() const { return captions_; }
  int GetTab() const { return tab_; }
  void SetTab(int tab) {
    if (tab < 0 || tab >= static_cast<int>(captions_.size())) {
      throw RuntimeError(errors::kBadCall, "Invalid procedure call or argument");
    }
    if (tab_ == tab) return;
    tab_ = tab;
    Touch();
  }
  // A click on a tab, which moves the focus to the tabs.
  void PersonTab(int tab) {
    Dispatch().Dispatch([&] {
      PersonFocus();
      SetTab(tab);
    });
  }

 protected:
  void OwnClick() override {}

 private:
  std::vector<Text> captions_;
  int tab_ = 0;
};

}  // namespace quillbox
