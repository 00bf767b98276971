#pragma once

#include "platform/forms/Control.h"
#include "platform/ports/KeyCombination.h"

namespace quillbox {

// A field that shows the combination of keys which was pressed in it, as text; empty for none.
class KeyBox : public Control {
 public:
  using Control::Control;

  bool TakesFocus() const override { return true; }
  const Text& GetText() const { return text_; }
  void SetText(const Text& text) {
    if (text_ == text) return;
    text_ = text;
    Touch();
    Raise(Change);
  }

  Event<> Change;
  // A combination was pressed that can't be taken: it has no name, or every program needs it.
  Event<> Refuse;

  // The person's input: one dispatch, which moves the focus here first. Delete or Backspace alone empties the
  // field.
  void PersonPress(const KeyCombination& key);

 private:
  Text text_;
};

}  // namespace quillbox
