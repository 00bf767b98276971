#include "core/window/OnTop.h"

#include "platform/forms/Form.h"

namespace quillbox {

void OnTop::Set(Form& form, bool topmost) {
  const PixelRect place{form.GetLeft() / kTwipsPerPixel, form.GetTop() / kTwipsPerPixel,
                        form.GetWidth() / kTwipsPerPixel, form.GetHeight() / kTwipsPerPixel};
  form.SetTopmost(topmost);
  form.SetVisible(true);
  windows_.SetTopmost(form, topmost, place);
}

PixelSize OnTop::ScreenTwips() {
  const PixelSize pixels = windows_.ScreenSize();
  return {pixels.width * kTwipsPerPixel, pixels.height * kTwipsPerPixel};
}

void OnTop::Center(Form& form) {
  const PixelSize screen = ScreenTwips();
  form.Move((screen.width - form.GetWidth()) / 2, (screen.height - form.GetHeight()) / 2);
}

}  // namespace quillbox
