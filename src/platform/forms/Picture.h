#pragma once

#include "platform/forms/Control.h"

namespace quillbox {

// Something that is only looked at, or clicked: an image, a line, a shape, a frame around other controls.
class Picture : public Control {
 public:
  Picture(const Place& place, std::string_view name, bool visible = true, const Text& caption = {})
      : Control(place, name), caption_(caption) {
    SetVisible(visible);
  }
  const Text& GetCaption() const { return caption_; }  // of a frame

 private:
  Text caption_;
};

}  // namespace quillbox
