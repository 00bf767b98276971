#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "base/Event.h"
#include "base/RuntimeError.h"

namespace quillbox {

class Control;
class Form;
class Timer;

// Runs the timers' periods: the event loop, or a clock in a test's hand.
class TimerHost {
 public:
  virtual ~TimerHost() = default;
  virtual void Started(Timer& timer) = 0;  // begin a whole period
  virtual void Stopped(Timer& timer) = 0;
  virtual void Gone(Timer& timer) { Stopped(timer); }  // it is being destroyed
  // The timer's ticks were slept through and may make a difference again; `atOnce`: tick without delay.
  virtual void Woken(Timer& timer, bool atOnce) = 0;
};

// Takes the person's inputs and the timers' ticks one at a time, delivers the focus changes that handlers
// have asked for when the outermost one has ended, and then lets the views draw. One a program, which
// outlives its forms.
class Dispatcher {
 public:
  Dispatcher() = default;
  ~Dispatcher();
  Dispatcher(const Dispatcher&) = delete;
  Dispatcher& operator=(const Dispatcher&) = delete;

  // Runs `handler` as one input. No failure leaves a handler: one that nobody trapped ends it.
  template <class Handler>
  void Dispatch(Handler&& handler) {
    ++depth_;
    try {
      handler();
    } catch (const RuntimeError& error) {
      Swallow(error);
    }
    End();
  }
  bool Busy() const { return depth_ > 0; }

  // Runs `wait`, in which other inputs come (a message box, a popup, keys being sent): the views show the
  // state of now, and each input within is an outermost one.
  template <class Wait>
  auto WhileWaiting(Wait&& wait) {
    Refresh();
    Pause pause(*this);
    return wait();
  }

  // Runs `action` after the outermost handler and its focus changes, or at once outside of handlers.
  void Post(std::function<void()> action);
  // Lets go of an object when no handler runs or waits any more: one of them may be the object's own.
  void Release(std::shared_ptr<void> object) { released_.push_back(std::move(object)); }

  Control* Focused() const { return focused_; }
  // From a handler: queues the change. False, and nothing happens, if the control has the focus or will have
  // it.
  bool SetFocus(Control& control);
  // By the person, within an input: at once, with the events of both controls. Nothing for a control that
  // can't take the focus.
  void MoveFocus(Control& control);
  // Another form of the program comes to the front: queued like SetFocus.
  void Activate(Form& form);

  // Lets the views draw what has changed.
  void Refresh() { OnRefresh(); }
  Event<> OnRefresh;
  // A form is going away: what shows it must let go of its controls.
  Event<const Form&> OnLeave;

  void UseTimerHost(TimerHost* host) { timerHost_ = host; }
  TimerHost* Timers() const { return timerHost_; }

  const std::vector<Form*>& Forms() const { return forms_; }
  // A form's coming and going, told by the form itself.
  void Join(Form& form) { forms_.push_back(&form); }
  void Leave(Form& form);
  // The control is going away: it has no focus any more and won't get it, without an event.
  void Forget(const Control& control);
  // The form is hidden for good or unloaded: its controls have no focus any more, without an event.
  void DropFocus(const Form& form);

 private:
  struct FocusChange {
    Form* form;
    Control* control;  // null: the form's own choice
  };
  class Pause {
   public:
    explicit Pause(Dispatcher& dispatcher);
    ~Pause();
    Pause(const Pause&) = delete;
    Pause& operator=(const Pause&) = delete;
    // The form goes away while its changes wait.
    void Forget(const Form& form);

   private:
    Dispatcher& dispatcher_;
    Pause* outer_;
    int depth_;
    std::deque<FocusChange> changes_;
    std::deque<std::function<void()>> posts_;
  };

  static void Erase(std::deque<FocusChange>& changes, const Form& form);
  void End();
  void Deliver(const FocusChange& change);
  void GiveFocus(Control* control);
  Control* FocusToCome() const;

  int depth_ = 0;
  Control* focused_ = nullptr;
  std::deque<FocusChange> changes_;
  std::deque<std::function<void()>> posts_;
  std::vector<Form*> forms_;
  TimerHost* timerHost_ = nullptr;
  Pause* paused_ = nullptr;  // the innermost
  std::vector<std::shared_ptr<void>> released_;
};

}  // namespace quillbox
