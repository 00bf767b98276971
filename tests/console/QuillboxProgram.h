#pragma once

#include "console/Program.h"
#include "console/forms/FormsPerson.h"
#include "core/app/frmTray.h"
#include "platform/forms/Dispatcher.h"

namespace quillbox {

// The program itself, on the ports of a world and without a screen.
class QuillboxProgram : public Program {
 public:
  explicit QuillboxProgram(MemoryWorld& world);
  void Start() override;

  Dispatcher& GetDispatcher() override { return dispatcher_; }
  Person& GetPerson() override { return person_; }
  Form& MainForm() override { return tray_->form; }
  MenuItem& Menu() override { return tray_->menu.mnuBase; }
  bool Running() override { return tray_->Running(); }
  std::optional<std::vector<Text>> Slots(TextView array) override;
  DrawnTip Tip(const Control& control, int x) override;

 protected:
  MemoryWorld& world_;
  Dispatcher dispatcher_;
  std::unique_ptr<frmTray> tray_;

 private:
  FormsPerson person_{dispatcher_};
};

std::unique_ptr<Program> MakeQuillbox(MemoryWorld& world);

}  // namespace quillbox
