#pragma once

#include "platform/forms/Control.h"

namespace quillbox {

// A text that the program writes. Never takes the focus.
class Label : public Control {
 public:
  Label(const Place& place, std::string_view name, const Text& caption = {})
      : Control(place, name), caption_(caption) {}

  const Text& GetCaption() const { return caption_; }
  void SetCaption(const Text& caption) {
    if (caption_ == caption) return;
    caption_ = caption;
    Touch();
    Raise(Change);
  }
  Color GetForeColor() const { return foreColor_; }
  void SetForeColor(Color color) {
    foreColor_ = color;
    Touch();
  }
  Alignment GetAlignment() const { return alignment_; }
  void SetAlignment(Alignment alignment) {
    alignment_ = alignment;
    Touch();
  }

  Event<> Change;

 private:
  Text caption_;
  Color foreColor_ = Color::Default;
  Alignment alignment_ = Alignment::Left;
};

}  // namespace quillbox
