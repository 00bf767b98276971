#pragma once

#include "console/QuillboxProgram.h"
#include "console/window/WindowPerson.h"
#include "platform/qt/ports/QtTips.h"
#include "platform/qt/ports/TrayMenuView.h"
#include "platform/qt/views/ProgramViews.h"

namespace quillbox {

// The program on the ports of a world, with its real windows on a screen that nobody sees.
class WindowProgram : public QuillboxProgram {
 public:
  explicit WindowProgram(MemoryWorld& world);
  ~WindowProgram() override;

  Person& GetPerson() override { return person_; }

 private:
  QtTips tips_;
  ProgramViews views_;
  TrayMenuView menu_;
  WindowPerson person_;
};

}  // namespace quillbox
