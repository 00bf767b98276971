#pragma once

#include <algorithm>
#include <cassert>
#include <vector>

#include "platform/forms/Control.h"

namespace quillbox {

class OptionButton;

// Option buttons of which one at most is selected.
class OptionGroup {
 public:
  void Add(OptionButton& option);
  const std::vector<OptionButton*>& Options() const { return options_; }

 private:
  std::vector<OptionButton*> options_;
};

// Click comes when the option becomes selected, whoever selects it.
class OptionButton : public Control {
 public:
  OptionButton(const Place& place, std::string_view name, const Text& caption, OptionGroup& group,
               bool value = false)
      : Control(place, name), caption_(caption), group_(group), value_(value) {
    group.Add(*this);
  }

  bool TakesFocus() const override { return true; }
  const Text& GetCaption() const { return caption_; }
  bool GetValue() const { return value_; }
  void SetValue(bool value) {
    if (value_ == value) return;
    value_ = value;
    Touch();
    if (!value) return;
    for (OptionButton* other : group_.Options()) {
      if (other != this) other->SetValue(false);
    }
    Raise(Click);
  }

 protected:
  void OwnClick() override { SetValue(true); }
  void OwnKey(const KeyEvent& key, char16_t) override {
    if (key.code == keys::kSpace) OwnClick();
  }

 private:
  Text caption_;
  OptionGroup& group_;
  bool value_;
};

inline void OptionGroup::Add(OptionButton& option) {
  assert((!option.GetValue() || std::none_of(options_.begin(), options_.end(),
                                             [](const OptionButton* other) { return other->GetValue(); })) &&
         "two options of a group begin as selected");
  options_.push_back(&option);
}

}  // namespace quillbox
