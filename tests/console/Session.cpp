#include "console/Session.h"

#include <algorithm>
#include <iterator>

namespace quillbox {

void Session::Start() {
  if (Running()) throw ConsoleError("the program runs already");
  program_.reset();
  world.ForgetProgram();
  program_ = std::make_unique<QuillboxProgram>(world, makePerson_);
  // Requests can come in meanwhile.
  program_->dispatcher.Dispatch([this] { program_->tray->form.Load(); });
}

QuillboxProgram& Session::Started() const {
  if (!program_) throw ConsoleError("the program has not been started");
  return *program_;
}

QuillboxProgram& Session::Alive() const {
  QuillboxProgram& program = Started();
  if (!Running()) throw ConsoleError("the program has ended");
  return program;
}

void Session::Settle() {
  if (program_ && !Running()) world.timers.StopAll();
}

std::vector<Difference> Session::Rest() {
  return program_ ? program_->person->Rest() : std::vector<Difference>();
}

Form* Session::FindForm(std::string_view name) const {
  static constexpr std::string_view kDialogs[] = {"frmSettings", "frmAbout", "frmStartHelp", "frmMessage"};
  QuillboxProgram& program = Started();
  if (program.tray->form.Name() == name) return &program.tray->form;
  bool known = std::find(std::begin(kDialogs), std::end(kDialogs), name) != std::end(kDialogs);
  for (Form* form : program.dispatcher.Forms()) {
    if (form->Name() != name) continue;
    if (form->GetLoaded()) return form;
    known = true;
  }
  if (!known) throw ConsoleError("no such form");
  return nullptr;
}

Form& Session::LoadedForm(std::string_view name) const {
  Form* const form = FindForm(name);
  if (!form) throw ConsoleError("the form isn't loaded");
  return *form;
}

Control& Session::GetControl(std::string_view name) const {
  const std::size_t dot = name.find('.');
  if (dot == std::string_view::npos) throw ConsoleError("not the name of a control");
  Control* const control = LoadedForm(name.substr(0, dot)).Find(name.substr(dot + 1));
  if (!control) throw ConsoleError("no such control");
  return *control;
}

Control& Session::Reachable(std::string_view name) const {
  Alive();
  Control& control = GetControl(name);
  if (dynamic_cast<Timer*>(&control)) throw ConsoleError("a timer can't be touched");
  if (!control.IsShown()) throw ConsoleError("the control is hidden");
  if (!control.GetEnabled()) throw ConsoleError("the control is disabled");
  return control;
}

MenuItem* Session::FindMenuItem(std::string_view name) const {
  const frmTray& tray = *Started().tray;
  const std::size_t dot = name.find('.');
  if (dot != std::string_view::npos) {
    if (name.substr(0, dot) != tray.form.Name()) return nullptr;
    name.remove_prefix(dot + 1);
  }
  return Started().tray->menu.mnuBase.Find(name);
}

}  // namespace quillbox
