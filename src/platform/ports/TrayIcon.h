#pragma once

#include <utility>

#include "base/Event.h"
#include "base/Text.h"

namespace quillbox {

// The two images of the icon: the window's own, and the one that Picture1 holds.
enum class TrayImage { Window, Picture1 };

namespace mouse {
inline constexpr int kLeftDown = 513;
inline constexpr int kLeftDouble = 515;
inline constexpr int kRightDown = 516;
}  // namespace mouse

// The icon in the notification area. Failures aren't reported: the program runs on without an icon.
class TrayIcon {
 public:
  virtual ~TrayIcon() = default;
  virtual void Add(TrayImage image, const Text& tip) = 0;
  virtual void Change(TrayImage image, const Text& tip) = 0;
  virtual void Delete() = 0;
  // `message` is called with one of the numbers of `mouse` for each press on the icon, as long as the hook
  // stays.
  Hook OnMouse(Event<int>::Handler message) { return mouse_.Listen(std::move(message)); }

 protected:
  void Tell(int message) const { mouse_(message); }

 private:
  Event<int> mouse_;
};

}  // namespace quillbox
