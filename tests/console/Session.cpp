#include "console/Session.h"

#include <algorithm>
#include <iterator>

#include "console/ConsoleError.h"
#include "platform/forms/Dispatcher.h"

namespace quillbox {

namespace {

constexpr std::string_view kDialogs[] = {"frmSettings", "frmAbout", "frmStartHelp", "frmMessage"};

}  // namespace

void Session::Start() {
  if (Running()) throw ConsoleError("the program runs already");
  program_.reset();
  world.ForgetProgram();
  program_ = factory_(world);
  program_->Start();
}

Program& Session::Started() const {
  if (!program_) throw ConsoleError("the program has not been started");
  return *program_;
}

Program& Session::Alive() const {
  Program& program = Started();
  if (!program.Running()) throw ConsoleError("the program has ended");
  return program;
}

void Session::Settle() {
  if (program_ && !program_->Running()) world.timers.StopAll();
}

std::vector<Difference> Session::Rest() {
  return program_ ? program_->GetPerson().Rest() : std::vector<Difference>();
}

Form* Session::FindForm(std::string_view name) const {
  Program& program = Started();
  if (program.MainForm().Name() == name) return &program.MainForm();
  bool known = std::find(std::begin(kDialogs), std::end(kDialogs), name) != std::end(kDialogs);
  for (Form* form : program.GetDispatcher().Forms()) {
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

Control* Session::FindControl(std::string_view name) const {
  const std::size_t dot = name.find('.');
  if (dot == std::string_view::npos) throw ConsoleError("not the name of a control");
  return LoadedForm(name.substr(0, dot)).Find(name.substr(dot + 1));
}

Control& Session::GetControl(std::string_view name) const {
  Control* const control = FindControl(name);
  if (!control) throw ConsoleError("no such control");
  return *control;
}

MenuItem* Session::FindMenuItem(std::string_view name) const {
  const std::size_t dot = name.find('.');
  if (dot != std::string_view::npos) {
    if (name.substr(0, dot) != Started().MainForm().Name()) return nullptr;
    name.remove_prefix(dot + 1);
  }
  return Started().Menu().Find(name);
}

}  // namespace quillbox
