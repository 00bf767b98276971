#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/Text.h"
#include "platform/forms/Control.h"

namespace quillbox {

class CommandButton;
class Dispatcher;

inline constexpr int kTwipsPerPixel = 15;

enum class WindowState { Normal = 0, Minimized = 1, Maximized = 2 };

// Why a form is being closed. 0 is the person's close command.
enum class CloseReason { Person = 0, Code = 1, System = 2 };

// A window of the program: its state and its controls, whether something draws it or not. It outlives its
// controls, no two of which have the same name.
class Form {
 public:
  Form(Dispatcher& dispatcher, std::string_view name, const Text& caption);
  virtual ~Form();
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  const std::string& Name() const { return name_; }
  Dispatcher& GetDispatcher() const { return dispatcher_; }
  const Text& GetCaption() const { return caption_; }
  void SetCaption(const Text& caption);

  bool GetLoaded() const { return loaded_; }
  // Runs LoadHandler once; a loaded form stays as it is.
  void Load();
  // Loads the form if need be and makes it visible; it takes the focus if it activates.
  void Show();
  // The person wants to find something in what is in front (Ctrl+F).
  void PersonFind();
  Event<> FindWanted;
  // How often Show was called: also for a visible window it means that somebody wants to see it.
  unsigned Shows() const { return shows_; }
  void Hide();
  bool GetVisible() const { return visible_; }
  // Shown or hidden by the topmost calls, which don't activate.
  void SetVisible(bool visible);
  WindowState GetWindowState() const { return windowState_; }
  void SetWindowState(WindowState state);
  bool GetTopmost() const { return topmost_; }
  void SetTopmost(bool topmost);

  // In twips. A move raises nothing; a size raises Resize.
  int GetLeft() const { return left_; }
  int GetTop() const { return top_; }
  int GetWidth() const { return width_; }
  int GetHeight() const { return height_; }
  void Move(int left, int top);
  void SetSize(int width, int height);
  // Where the person or the window manager has put the window.
  void PersonMove(int left, int top);

  // Asks QueryUnload and then unloads. False if the close was cancelled.
  bool Close(CloseReason reason);
  void PersonClose();
  // Unloads without asking. Nothing for a form that isn't loaded.
  void Unload();

  Event<> LoadHandler;
  Event<> Resize;
  Event<bool&, CloseReason> QueryUnload;
  Event<> UnloadHandler;
  // After UnloadHandler: the owner may let the form go.
  Event<> Unloaded;

  // The button that Enter, and that Escape clicks; may be none.
  CommandButton* DefaultButton() const { return defaultButton_; }
  CommandButton* CancelButton() const { return cancelButton_; }
  void SetDefaultButton(CommandButton* button) { defaultButton_ = button; }
  void SetCancelButton(CommandButton* button) { cancelButton_ = button; }
  // Whether the form takes the focus when it is shown.
  void SetActivates(bool activates) { activates_ = activates; }

  // The control of that name, or null.
  Control* Find(std::string_view name) const;
  const std::vector<Control*>& Controls() const { return controls_; }
  void AddControl(Control& control);
  void RemoveControl(Control& control);

  // The control that gets the focus when the form comes to the front: the last one, else the first that can.
  Control* FocusChoice() const;
  void RememberFocus(Control* control) { lastFocus_ = control; }

  void Touch() { ++revision_; }
  // Grows with each change of the form or of one of its controls.
  unsigned long Revision() const { return revision_; }

 private:
  Dispatcher& dispatcher_;
  std::string name_;
  Text caption_;
  bool loaded_ = false;
  bool visible_ = false;
  unsigned shows_ = 0;
  bool topmost_ = false;
  bool activates_ = true;
  WindowState windowState_ = WindowState::Normal;
  int left_ = 0;
  int top_ = 0;
  int width_ = 0;
  int height_ = 0;
  CommandButton* defaultButton_ = nullptr;
  CommandButton* cancelButton_ = nullptr;
  Control* lastFocus_ = nullptr;
  std::vector<Control*> controls_;
  std::map<std::string, Control*, std::less<>> byName_;
  unsigned long revision_ = 1;
};

}  // namespace quillbox
