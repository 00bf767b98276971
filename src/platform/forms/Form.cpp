#include "platform/forms/Form.h"

#include <algorithm>
#include <cassert>

#include "platform/forms/CommandButton.h"
#include "platform/forms/Dispatcher.h"

namespace quillbox {

Form::Form(Dispatcher& dispatcher, std::string_view name, const Text& caption)
    : dispatcher_(dispatcher), name_(name), caption_(caption) {
  dispatcher_.Join(*this);
}

Form::~Form() {
  assert(controls_.empty() && "a form outlives its controls");
  dispatcher_.Leave(*this);
}

void Form::SetCaption(const Text& caption) {
  caption_ = caption;
  Touch();
}

void Form::Load() {
  if (loaded_) return;
  loaded_ = true;
  Touch();
  Raise(LoadHandler);
}

void Form::Show() {
  Load();
  SetVisible(true);
  ++shows_;
  if (activates_) dispatcher_.Activate(*this);
}

void Form::Hide() { SetVisible(false); }

void Form::SetVisible(bool visible) {
  if (visible_ == visible) return;
  visible_ = visible;
  Touch();
}

void Form::SetWindowState(WindowState state) {
  if (windowState_ == state) return;
  windowState_ = state;
  Touch();
  Raise(Resize);
}

void Form::SetTopmost(bool topmost) {
  topmost_ = topmost;
  Touch();
}

void Form::Move(int left, int top) {
  if (left_ == left && top_ == top) return;
  left_ = left;
  top_ = top;
  Touch();
}

void Form::SetSize(int width, int height) {
  if (width_ == width && height_ == height) return;
  width_ = width;
  height_ = height;
  Touch();
  Raise(Resize);
}

void Form::PersonMove(int left, int top) {
  left_ = left;
  top_ = top;
}

void Form::PersonFind() {
  dispatcher_.Dispatch([this] { Raise(FindWanted); });
}

bool Form::Close(CloseReason reason) {
  bool cancel = false;
  Raise(QueryUnload, cancel, reason);
  if (cancel) return false;
  Unload();
  return true;
}

void Form::PersonClose() {
  dispatcher_.Dispatch([this] { Close(CloseReason::Person); });
}

void Form::Unload() {
  if (!loaded_) return;
  // A failure in the handler keeps the form from nothing: it is going away.
  IgnoreFailure([this] { Raise(UnloadHandler); });
  loaded_ = false;
  SetVisible(false);
  Touch();
  dispatcher_.DropFocus(*this);
  Raise(Unloaded);
}

Control* Form::Find(std::string_view name) const {
  const auto found = byName_.find(name);
  return found == byName_.end() ? nullptr : found->second;
}

void Form::AddControl(Control& control) {
  controls_.push_back(&control);
  const bool isNew = byName_.emplace(control.Name(), &control).second;
  assert(isNew && "two controls of one form have the same name");
  static_cast<void>(isNew);
  Touch();
}

void Form::RemoveControl(Control& control) {
  dispatcher_.Forget(control);
  if (lastFocus_ == &control) lastFocus_ = nullptr;
  controls_.erase(std::remove(controls_.begin(), controls_.end(), &control), controls_.end());
  byName_.erase(control.Name());
}

Control* Form::FocusChoice() const {
  if (lastFocus_ && lastFocus_->IsReachable()) return lastFocus_;
  for (Control* control : controls_) {
    if (control->TakesFocus() && control->IsReachable()) return control;
  }
  return nullptr;
}

}  // namespace quillbox
