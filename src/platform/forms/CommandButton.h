#pragma once

#include "platform/forms/Control.h"

namespace quillbox {

class CommandButton : public Control {
 public:
  CommandButton(const Place& place, std::string_view name, const Text& caption, const Text& toolTipText = {},
                bool enabled = true)
      : Control(place, name), caption_(caption) {
    SetToolTipText(toolTipText);
    SetEnabled(enabled);
  }

  bool TakesFocus() const override { return true; }
  const Text& GetCaption() const { return caption_; }
  void SetCaption(const Text& caption) {
    if (caption_ == caption) return;
    caption_ = caption;
    Touch();
  }
  // The picture control whose image the button shows; empty for none.
  const std::string& GetPicture() const { return picture_; }
  void SetPicture(const std::string& holder) {
    picture_ = holder;
    Touch();
  }

 protected:
  bool UsesEnter() const override { return true; }
  void OwnKey(const KeyEvent& key, char16_t) override {
    if (key.code == keys::kEnter || key.code == keys::kSpace) Raise(Click);
  }

 private:
  Text caption_;
  std::string picture_;
};

}  // namespace quillbox
