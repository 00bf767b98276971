#pragma once

#include <functional>
#include <memory>

#include "console/Person.h"
#include "core/app/frmTray.h"
#include "memory/MemoryWorld.h"

namespace quillbox {

// The program on the ports of a world, without a screen. Destroying it ends it without any stop step.
class QuillboxProgram {
 public:
  explicit QuillboxProgram(MemoryWorld& world) : world_(world) {
    dispatcher_.UseTimerHost(&world.timers);
    tray = std::make_unique<frmTray>(dispatcher_, world.platform);
  }
  virtual ~QuillboxProgram() = default;

  // Runs the start steps, once. Requests can come in meanwhile.
  void Start() {
    dispatcher_.Dispatch([this] { tray->form.Load(); });
  }
  Dispatcher& GetDispatcher() { return dispatcher_; }
  virtual Person& GetPerson() { return person_; }

 protected:
  MemoryWorld& world_;
  Dispatcher dispatcher_;

 public:
  std::unique_ptr<frmTray> tray;

 private:
  Person person_{dispatcher_};
};

// Makes the program in a world.
using ProgramFactory = std::function<std::unique_ptr<QuillboxProgram>(MemoryWorld&)>;

}  // namespace quillbox
