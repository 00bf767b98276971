#include "platform/forms/Control.h"

#include <cassert>

#include "platform/forms/CommandButton.h"
#include "platform/forms/Dispatcher.h"
#include "platform/forms/Form.h"
#include "platform/forms/TabControl.h"

namespace quillbox {

Control::Control(const Place& place, std::string_view name) : place_(place), name_(name) {
  assert(!place.tabs || (place.page >= 0 && place.page < static_cast<int>(place.tabs->Captions().size())));
  Owner().AddControl(*this);
}

Control::~Control() { Owner().RemoveControl(*this); }

Dispatcher& Control::Dispatch() const { return Owner().GetDispatcher(); }

void Control::Touch() {
  dirty_ = true;
  Owner().Touch();
}

bool Control::TakeDirty() { return std::exchange(dirty_, false); }

void Control::SetVisible(bool visible) {
  if (visible_ == visible) return;
  visible_ = visible;
  Touch();
}

void Control::SetEnabled(bool enabled) {
  if (enabled_ == enabled) return;
  enabled_ = enabled;
  Touch();
}

void Control::SetToolTipText(const Text& text) {
  if (toolTipText_ == text) return;
  toolTipText_ = text;
  Touch();
}

bool Control::IsShown() const {
  if (!visible_ || !Owner().GetVisible()) return false;
  return !place_.tabs || (place_.tabs->GetTab() == place_.page && place_.tabs->IsShown());
}

bool Control::HasFocus() const { return Dispatch().Focused() == this; }

bool Control::SetFocus() { return Dispatch().SetFocus(*this); }

void Control::PersonFocus() {
  Dispatch().Dispatch([this] {
    if (HasFocus()) return;
    OwnFocus();
    Dispatch().MoveFocus(*this);
  });
}

void Control::OwnClick() { Raise(Click); }

void Control::PersonClick() {
  Dispatch().Dispatch([this] {
    PersonFocus();
    OwnClick();
  });
}

void Control::PersonDoubleClick() {
  Dispatch().Dispatch([this] {
    PersonClick();
    Raise(DblClick);
  });
}

void Control::OwnKey(const KeyEvent&, char16_t) {}

// The character that a key brings with it; 0 for none.
static char16_t CharacterOf(const KeyEvent& key) {
  if (key.ctrl || key.alt) return 0;
  switch (key.code) {
    case keys::kEnter:
    case keys::kEscape:
    case keys::kSpace:
    case keys::kBackspace:
      return static_cast<char16_t>(key.code);
    default:
      return 0;
  }
}

void Control::PersonKey(KeyEvent key) {
  Dispatch().Dispatch([this, key]() mutable {
    PersonFocus();
    KeyEvent released = key;
    Raise(KeyDown, key);
    if (key.code != 0) {
      char16_t character = CharacterOf(key);
      const bool brings = character != 0;
      if (brings) Raise(KeyPress, character);
      // A character that the handler took away does nothing more.
      if (!brings || character != 0) {
        CommandButton* const button = key.code == keys::kEscape                  ? Owner().CancelButton()
                                      : key.code == keys::kEnter && !UsesEnter() ? Owner().DefaultButton()
                                                                                 : nullptr;
        if (button && button->IsReachable()) {
          button->PersonClick();
        } else {
          OwnKey(key, character);
        }
      }
    }
    Raise(KeyUp, released);
  });
}

void Control::PersonDrop(const DragData& data) {
  Dispatch().Dispatch([&] {
    if (OLEDragDrop) {
      OLEDragDrop(data);
    } else {
      OwnDrop(data);
    }
  });
}

}  // namespace quillbox
