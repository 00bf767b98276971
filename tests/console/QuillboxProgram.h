#pragma once

#include "console/Program.h"
#include "core/app/frmTray.h"
#include "platform/forms/Dispatcher.h"

namespace quillbox {

// The program itself, on the ports of a world.
class QuillboxProgram : public Program {
 public:
  explicit QuillboxProgram(MemoryWorld& world);
  void Start() override;

  Dispatcher& GetDispatcher() override { return dispatcher_; }
  Form& MainForm() override { return tray_->form; }
  MenuItem& Menu() override { return tray_->menu.mnuBase; }
  bool Running() override { return tray_->Running(); }
  std::optional<std::vector<Text>> Slots(TextView array) override;
  DrawnTip Tip(const Control& control, int x) override;

 private:
  MemoryWorld& world_;
  Dispatcher dispatcher_;
  std::unique_ptr<frmTray> tray_;
};

std::unique_ptr<Program> MakeQuillbox(MemoryWorld& world);

}  // namespace quillbox
