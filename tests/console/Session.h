#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "console/Person.h"
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

// The world and the program in it, which may not have been started yet, or may have ended. What isn't there
// is a ConsoleError.
class Session {
 public:
  explicit Session(const PersonFactory& makePerson) : makePerson_(makePerson) {}

  MemoryWorld world;

  // From the start to the end of the stop steps.
  bool Running() const { return program_ && program_->tray->Running(); }
  // A start after an end is a restart in the same world.
  void Start() {
    if (Running()) throw ConsoleError("the program runs already");
    program_.reset();
    world.ForgetProgram();
    program_ = std::make_unique<QuillboxProgram>(world, makePerson_);
    // Requests can come in meanwhile.
    program_->dispatcher.Dispatch([this] { program_->tray->form.Load(); });
  }
  // The program, running or not, from the first start.
  QuillboxProgram& Started() const {
    return program_ ? *program_ : throw ConsoleError("the program has not been started");
  }
  QuillboxProgram& Alive() const {
    return Started().tray->Running() ? *program_ : throw ConsoleError("the program has ended");
  }
  // After each request: an ended program's timers tick no more.
  void Settle() {
    if (program_ && !Running()) world.timers.StopAll();
  }
  // The screen comes to rest: see Person.
  std::string Rest() { return program_ ? program_->person->Rest() : std::string(); }

  // Null for a form that isn't loaded; the main window's is always there.
  Form* FindForm(std::string_view name) const {
    static constexpr std::string_view kForms[] = {"frmTray", "frmSettings", "frmAbout", "frmStartHelp",
                                                  "frmMessage"};
    const QuillboxProgram& program = Started();
    if (std::find(std::begin(kForms), std::end(kForms), name) == std::end(kForms))
      throw ConsoleError("no such form");
    for (Form* form : program.dispatcher.Forms()) {
      if (form->Name() == name && (form->GetLoaded() || form == &program.tray->form)) return form;
    }
    return nullptr;
  }
  Form& LoadedForm(std::string_view name) const {
    Form* const form = FindForm(name);
    return form ? *form : throw ConsoleError("the form isn't loaded");
  }
  // `frmTray.List2`.
  Control& GetControl(std::string_view name) const {
    const std::size_t dot = name.find('.');
    if (dot == std::string_view::npos) throw ConsoleError("not the name of a control");
    Control* const control = LoadedForm(name.substr(0, dot)).Find(name.substr(dot + 1));
    return control ? *control : throw ConsoleError("no such control");
  }
  // A control of that kind, with which a person can work now.
  template <class Kind = Control>
  Kind& Reachable(std::string_view name) const {
    Alive();
    Control& control = GetControl(name);
    if (dynamic_cast<Timer*>(&control)) throw ConsoleError("a timer can't be touched");
    if (!control.IsShown()) throw ConsoleError("the control is hidden");
    if (!control.GetEnabled()) throw ConsoleError("the control is disabled");
    auto* const one = dynamic_cast<Kind*>(&control);
    return one ? *one : throw ConsoleError("not that kind of control");
  }
  // `frmTray.mnuEnd`, or `mnuEnd`; null if there is no such item.
  MenuItem* FindMenuItem(std::string_view name) const {
    frmTray& tray = *Started().tray;
    const std::size_t dot = name.find('.');
    if (dot != std::string_view::npos) {
      if (name.substr(0, dot) != tray.form.Name()) return nullptr;
      name.remove_prefix(dot + 1);
    }
    return tray.menu.mnuBase.Find(name);
  }

 private:
  const PersonFactory makePerson_;
  std::unique_ptr<QuillboxProgram> program_;
};

}  // namespace quillbox
