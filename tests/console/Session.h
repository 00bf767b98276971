#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "console/Person.h"
#include "console/Protocol.h"
#include "core/app/frmTray.h"
#include "memory/MemoryWorld.h"
#include "platform/forms/Timer.h"

namespace quillbox {

// Makes the person in front of a program that has not been started yet.
using PersonFactory = std::function<std::unique_ptr<Person>(MemoryWorld&, Dispatcher&, frmTray&)>;

// The program on the ports of a world. Destroying it ends it without any stop step.
struct QuillboxProgram {
  QuillboxProgram(MemoryWorld& world, const PersonFactory& makePerson) {
    dispatcher.UseTimerHost(&world.timers);
    tray = std::make_unique<frmTray>(dispatcher, world.platform);
    person = makePerson(world, dispatcher, *tray);
  }

  Dispatcher dispatcher;
  std::unique_ptr<frmTray> tray;
  std::unique_ptr<Person> person;
};

// The world and the program in it, which may not have been started yet, or may have ended.
class Session {
 public:
  explicit Session(const PersonFactory& makePerson) : makePerson_(makePerson) {}

  MemoryWorld world;

  // From the start to the end of the stop steps.
  bool Running() const { return program_ && program_->tray->Running(); }
  // ConsoleError while the program runs. A start after an end is a restart in the same world.
  void Start();
  // The program, running or not; ConsoleError before the first start.
  QuillboxProgram& Started() const;
  // ConsoleError if the program doesn't run.
  QuillboxProgram& Alive() const;
  // After each request: an ended program's timers tick no more.
  void Settle();
  // The screen comes to rest. What it shows otherwise than it should.
  std::vector<Difference> Rest();

  // `frmTray`; null for a form that isn't loaded. ConsoleError for a name that no form has.
  Form* FindForm(std::string_view name) const;
  // The same; ConsoleError for a form that isn't loaded.
  Form& LoadedForm(std::string_view name) const;
  // `frmTray.List2`. ConsoleError if there is none, or its form isn't loaded.
  Control& GetControl(std::string_view name) const;
  // The control, with which a person can work now; else ConsoleError.
  Control& Reachable(std::string_view name) const;
  // `frmTray.mnuEnd`, or `mnuEnd`; null if there is no such item.
  MenuItem* FindMenuItem(std::string_view name) const;

 private:
  const PersonFactory makePerson_;
  std::unique_ptr<QuillboxProgram> program_;
};

}  // namespace quillbox
