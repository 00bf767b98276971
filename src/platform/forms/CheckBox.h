#pragma once

#include "platform/forms/Control.h"

namespace quillbox {

// Click comes with each change of the value, whoever makes it.
class CheckBox : public Control {
 public:
  CheckBox(const Place& place, std::string_view name, const Text& caption, bool value = false,
           bool enabled = true)
      : Control(place, name), caption_(caption), value_(value) {
    SetEnabled(enabled);
  }

  bool TakesFocus() const override { return true; }
  const Text& GetCaption() const { return caption_; }
  bool GetValue() const { return value_; }
  void SetValue(bool value) {
    if (value_ == value) return;
    value_ = value;
    Touch();
    Raise(Click);
  }

 protected:
  void OwnClick() override { SetValue(!value_); }
  void OwnKey(const KeyEvent& key, char16_t) override {
    if (key.code == keys::kSpace) OwnClick();
  }

 private:
  Text caption_;
  bool value_;
};

}  // namespace quillbox
