#include "platform/forms/Dispatcher.h"

#include <algorithm>
#include <cassert>

#include "platform/forms/Form.h"

namespace quillbox {

Dispatcher::Pause::Pause(Dispatcher& dispatcher)
    : dispatcher_(dispatcher), outer_(dispatcher.paused_), depth_(dispatcher.depth_) {
  dispatcher.paused_ = this;
  dispatcher.depth_ = 0;
  changes_.swap(dispatcher.changes_);
  posts_.swap(dispatcher.posts_);
}

Dispatcher::Pause::~Pause() {
  assert(dispatcher_.paused_ == this && "pauses lie within one another");
  dispatcher_.paused_ = outer_;
  dispatcher_.depth_ = depth_;
  changes_.swap(dispatcher_.changes_);
  posts_.swap(dispatcher_.posts_);
}

void Dispatcher::Pause::Forget(const Form& form) {
  Erase(changes_, form);
  if (outer_) outer_->Forget(form);
}

Dispatcher::~Dispatcher() {
  // A form that was let go leaves this dispatcher only now.
  released_.clear();
  assert(forms_.empty() && "the dispatcher outlives its forms");
}

void Dispatcher::Erase(std::deque<FocusChange>& changes, const Form& form) {
  std::erase_if(changes, [&](const FocusChange& change) { return change.form == &form; });
}

void Dispatcher::End() {
  if (depth_ > 1) {
    --depth_;
    return;
  }
  // What the delivered handlers ask for comes after them.
  while (!changes_.empty() || !posts_.empty()) {
    try {
      if (!changes_.empty()) {
        const FocusChange change = changes_.front();
        changes_.pop_front();
        Deliver(change);
      } else {
        const std::function<void()> post = std::move(posts_.front());
        posts_.pop_front();
        post();
      }
    } catch (const RuntimeError& error) {
      Swallow(error);
    }
  }
  --depth_;
  if (!paused_ && !released_.empty()) std::exchange(released_, {}).clear();
  Refresh();
}

void Dispatcher::Post(std::function<void()> action) {
  if (Busy()) {
    posts_.push_back(std::move(action));
  } else {
    Dispatch(action);
  }
}

Control* Dispatcher::FocusToCome() const {
  if (changes_.empty()) return focused_;
  const FocusChange& last = changes_.back();
  return last.control ? last.control : last.form->FocusChoice();
}

bool Dispatcher::SetFocus(Control& control) {
  if (!control.TakesFocus() || FocusToCome() == &control) return false;
  changes_.push_back({&control.Owner(), &control});
  if (!Busy()) Dispatch([] {});
  return true;
}

void Dispatcher::Activate(Form& form) {
  if (focused_ && &focused_->Owner() == &form && changes_.empty()) return;
  changes_.push_back({&form, nullptr});
  if (!Busy()) Dispatch([] {});
}

void Dispatcher::MoveFocus(Control& control) {
  if (control.TakesFocus()) GiveFocus(&control);
}

void Dispatcher::Deliver(const FocusChange& change) {
  GiveFocus(change.control ? change.control : change.form->FocusChoice());
}

void Dispatcher::GiveFocus(Control* control) {
  if (focused_ == control) return;
  Control* const old = focused_;
  focused_ = control;
  if (control) control->Owner().RememberFocus(control);
  // Each of the two runs, whatever becomes of the other.
  if (old) IgnoreFailure([&] { Raise(old->LostFocus); });
  if (control && focused_ == control) Raise(control->GotFocus);
}

void Dispatcher::Forget(const Control& control) {
  if (focused_ == &control) focused_ = nullptr;
  std::erase_if(changes_, [&](const FocusChange& change) { return change.control == &control; });
}

void Dispatcher::DropFocus(const Form& form) {
  if (focused_ && &focused_->Owner() == &form) focused_ = nullptr;
  Erase(changes_, form);
  if (paused_) paused_->Forget(form);
}

void Dispatcher::Leave(Form& form) {
  OnLeave(form);
  DropFocus(form);
  forms_.erase(std::remove(forms_.begin(), forms_.end(), &form), forms_.end());
}

}  // namespace quillbox
