#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/Event.h"
#include "base/Text.h"
#include "platform/forms/Keys.h"

namespace quillbox {

class Dispatcher;
class Form;
class TabControl;

// Text that is dragged: nothing if the data has no plain text.
using DragData = std::optional<Text>;

// Colours that the logic reads and writes.
enum class Color { Default, Blue, ButtonText, Window, Menu };
enum class Alignment { Left = 0, Right = 1, Center = 2 };

// Where a control stands: on a form, and there perhaps on a page of its tabs, which are numbered from 0.
struct Place {
  Place(Form& on) : form(&on) {}
  Place(Form& on, TabControl& of, int number) : form(&on), tabs(&of), page(number) {}
  Form* form;
  TabControl* tabs = nullptr;
  int page = -1;
};

// What all controls of a form have in common. A control is known to its form by its name.
class Control {
 public:
  Control(const Place& place, std::string_view name);
  virtual ~Control();
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  const std::string& Name() const { return name_; }
  Form& Owner() const { return *place_.form; }
  const Place& Where() const { return place_; }

  bool GetVisible() const { return visible_; }
  void SetVisible(bool visible);
  bool GetEnabled() const { return enabled_; }
  virtual void SetEnabled(bool enabled);
  const Text& GetToolTipText() const { return toolTipText_; }
  void SetToolTipText(const Text& text);

  // Visible itself, on the page in front, on a visible form.
  bool IsShown() const;
  // Whether a person can work with it now.
  bool IsReachable() const { return IsShown() && enabled_; }
  virtual bool TakesFocus() const { return false; }
  bool HasFocus() const;
  // Queues a focus change to this control; false if it has the focus or will have it already.
  bool SetFocus();

  Event<> GotFocus;
  Event<> LostFocus;
  Event<> Click;
  Event<> DblClick;
  Event<KeyEvent&> KeyDown;
  Event<char16_t&> KeyPress;
  Event<KeyEvent&> KeyUp;
  Event<const DragData&> OLEDragDrop;

  // The person's inputs. Each is one dispatch; the caller has checked that the control is reachable.
  void PersonFocus();
  void PersonClick();
  void PersonDoubleClick();
  void PersonKey(KeyEvent key);
  void PersonDrop(const DragData& data);

  // Changes since the view looked last; the view takes it away.
  bool TakeDirty();

 protected:
  // Marks the control and its form as to be drawn anew.
  void Touch();
  Dispatcher& Dispatch() const;
  // What the control itself does with an input, after the handlers.
  virtual void OwnClick();
  virtual void OwnFocus() {}
  virtual void OwnKey(const KeyEvent& key, char16_t character);
  virtual void OwnDrop(const DragData&) {}
  virtual bool UsesEnter() const { return false; }

 private:
  Place place_;
  std::string name_;
  bool visible_ = true;
  bool enabled_ = true;
  bool dirty_ = true;
  Text toolTipText_;
};

}  // namespace quillbox
