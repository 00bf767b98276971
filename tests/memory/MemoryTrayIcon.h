#pragma once

#include <utility>

#include "platform/ports/TrayIcon.h"

namespace quillbox {

// The icon as the shell would show it.
class MemoryTrayIcon : public TrayIcon {
 public:
  void Add(TrayImage image, const Text& tip) override {
    there_ = true;
    Change(image, tip);
  }
  // A shell changes only an icon that it has.
  void Change(TrayImage image, const Text& tip) override {
    if (!there_) return;
    image_ = image;
    tip_ = tip;
  }
  void Delete() override {
    there_ = false;
    image_ = TrayImage::Window;
    tip_.clear();
  }

  bool IsThere() const { return there_; }
  TrayImage Image() const { return image_; }
  const Text& Tip() const { return tip_; }
  // A mouse message on the icon; nothing reaches the program while there is none.
  void Press(int message) {
    if (there_) Tell(message);
  }

 private:
  bool there_ = false;
  TrayImage image_ = TrayImage::Window;
  Text tip_;
};

}  // namespace quillbox
