#pragma once

#include <xkbcommon/xkbcommon.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "platform/x11/keys/XKeyConnection.h"

namespace quillbox::test {

struct KeyPress {
  xkb_keysym_t keysym = 0;
  std::uint8_t modifiers = 0;  // the real modifiers of the event
  std::string text;            // UTF-8; may be a control character
};

// A window of another program, on a connection and a thread of its own. Like a toolkit it learns of a changed
// keyboard map by an event, and reads the map when it next has to look up a key, however late that is.
class KeyReceiver {
 public:
  struct Options {
    bool answersPings = false;
    bool answersAsQt = false;     // to another audience than the others do
    int microsecondsPerKey = 0;   // how slow it is
    int millisecondsToStart = 0;  // how long it sleeps over the first key
    bool saysOurProcess = false;  // bears the process id of this very process
  };

  explicit KeyReceiver(Options options);
  ~KeyReceiver();
  KeyReceiver(const KeyReceiver&) = delete;
  KeyReceiver& operator=(const KeyReceiver&) = delete;

  xcb_window_t Window() const { return window_; }
  // Gives the window the focus and returns when it has it.
  void TakeFocus();
  // Focus on no window: on none at all, or "wherever the pointer is", with the pointer over this window.
  void GiveFocusToNobody();
  void GiveFocusToPointer();

  std::vector<KeyPress> Presses() const;
  // The text of all presses so far, line breaks as line feeds.
  std::string Text() const;
  // How often a key was pressed that had been pressed already, or released that had not.
  int Unpaired() const { return unpaired_; }
  // How often a key of a modifier was pressed; Presses leaves these out.
  int ModifierPresses() const { return modifierPresses_; }
  void Clear();
  // Waits until so many presses have come in and a little longer for more; false after 20 s.
  bool WaitFor(std::size_t presses) const;

 private:
  struct Free {
    void operator()(xkb_context* context) const { xkb_context_unref(context); }
    void operator()(xkb_keymap* keymap) const { xkb_keymap_unref(keymap); }
    void operator()(xkb_state* state) const { xkb_state_unref(state); }
  };

  void SetFocus(xcb_window_t window);
  void Run();
  void Handle(const xcb_generic_event_t& event);
  void HandleKey(const xcb_key_press_event_t& event, bool press);
  void AnswerPing(xcb_client_message_event_t message);
  void ReadMap();
  Options options_;
  XKeyConnection server_{nullptr};
  xcb_window_t window_ = 0;
  xcb_atom_t protocols_ = 0, ping_ = 0, end_ = 0;
  std::uint8_t xkbEvent_ = 0;
  std::unique_ptr<xkb_context, Free> context_;
  std::unique_ptr<xkb_keymap, Free> keymap_;
  std::unique_ptr<xkb_state, Free> state_;
  bool mapIsOld_ = true;
  bool down_[256] = {};
  bool ended_ = false;

  mutable std::mutex mutex_;  // guards what follows
  std::vector<KeyPress> presses_;
  std::atomic<int> unpaired_ = 0;
  std::atomic<int> modifierPresses_ = 0;

  std::thread thread_;
};

}  // namespace quillbox::test
