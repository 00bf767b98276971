#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <functional>
#include <string>

namespace quillbox {

class XKeyConnection;

// The window that has the input focus, and whether its program has caught up with its input.
class XFocus {
 public:
  using IsOurs = std::function<bool(xcb_window_t)>;

  // `isOurs` tells of a window with the focus whether it belongs to this program; without it, that is found
  // out by the process id that top-level windows bear.
  XFocus(XKeyConnection& connection, IsOurs isOurs);

  // Where keys may go: a program's window that isn't ours. The bare desktop is none, nor is "wherever the
  // pointer is".
  bool IsTarget(xcb_window_t window);

  // The class of the program's window that a window belongs to; empty if it has none.
  std::string ClassOf(xcb_window_t window);

  // Asks the program of the window with the focus to answer once it has come to this point of its input.
  // False if it knows no such question.
  bool AskCaughtUp();
  // True when the answer to the last question has come.
  bool CaughtUp();
  // No answer is waited for any more.
  void StopAsking();

 private:
  bool ManagerRuns();
  bool HasOurProcess(xcb_window_t window);
  xcb_window_t Parent(xcb_window_t window);

  XKeyConnection& connection_;
  IsOurs isOurs_;
  xcb_atom_t processId_ = 0, managerCheck_ = 0, windowState_ = 0, protocols_ = 0, ping_ = 0;
  std::uint32_t question_ = 0;  // numbers the questions
  xcb_window_t asked_ = XCB_NONE;
  bool answered_ = false;
};

}  // namespace quillbox
