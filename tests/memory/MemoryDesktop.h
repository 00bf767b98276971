#pragma once

#include <functional>
#include <optional>

#include "platform/forms/Form.h"
#include "platform/ports/Clipboard.h"
#include "platform/ports/GlobalKey.h"
#include "platform/ports/PixelSize.h"
#include "platform/ports/TipSurface.h"
#include "platform/ports/TrayIcon.h"
#include "platform/ports/WindowManager.h"

namespace quillbox {

// A clipboard that other programs (the methods beginning with Other) and this one share.
class MemoryClipboard : public Clipboard {
 public:
  TextView Read() override { return Opened(); }
  bool HoldsSecret() const override { return secret_; }
  void Clear() override { Put({}); }
  void Put(TextView text) override {
    Opened() = Text(text);
    secret_ = false;
    ++ownWrites;
  }

  void OtherSets(const Text& text) { Change(text, ClipboardNews::Text, false); }
  // Also for a picture, or whatever else isn't text.
  void OtherClears() { Change({}, ClipboardNews::Other, false); }
  void OtherSetsSecret() { Change({}, ClipboardNews::Other, true); }
  // What stands on it, whoever holds it; empty for a picture.
  const Text& Content() const { return text_; }

  bool locked = false;  // by another program: nobody else can open it
  int ownWrites = 0;    // how often the program cleared it or put something on it

 private:
  Text& Opened() {
    return !locked ? text_ : throw RuntimeError(errors::kClipboardBusy, "Can't open Clipboard");
  }
  void Change(const Text& text, ClipboardNews news, bool secret) {
    text_ = text;
    secret_ = secret;
    Tell(news);
  }

  Text text_;
  bool secret_ = false;
};

// The icon as the shell would show it.
class MemoryTrayIcon : public TrayIcon {
 public:
  struct Icon {
    TrayImage image = TrayImage::Window;
    Text tip;
  };

  void Add(TrayImage image, const Text& tip) override { icon = {image, tip}; }
  // A shell changes only an icon that it has.
  void Change(TrayImage image, const Text& tip) override {
    if (icon) Add(image, tip);
  }
  void Delete() override { icon.reset(); }
  // A mouse message on the icon.
  void Press(int message) { Tell(message); }

  std::optional<Icon> icon;
};

// A screen without windows. A menu that opens stays open until somebody closes it.
class MemoryWindows : public WindowManager {
 public:
  PixelSize ScreenSize() override { return screen; }
  void SetTopmost(Form&, bool, const PixelRect&) override {}
  void SetForeground(Form&) override {}
  bool IsForeground(const Form& form) override { return form.GetVisible() && form.Shows() != left_; }
  void OpenPopup(MenuItem& root) override { SetMenu(&root); }

  PixelSize screen{1024, 768};
  // The person goes to another program's window, until the form is shown again.
  void Leave(const Form& form) { left_ = form.Shows(); }
  // The root of the menu that stands open, or null.
  MenuItem* OpenMenu() const { return openMenu_; }
  void CloseMenu() { SetMenu(nullptr); }
  // The menu has opened or closed. Whoever listens lets go before it goes.
  std::function<void()> MenuChanged;
  // The program's windows and menus are gone.
  void Forget() {
    openMenu_ = nullptr;
    left_ = 0;
  }

 private:
  void SetMenu(MenuItem* root) {
    openMenu_ = root;
    if (MenuChanged) MenuChanged();
  }

  MenuItem* openMenu_ = nullptr;
  unsigned left_ = 0;
};

// A font whose characters are all of one size.
class MemoryTips : public TipSurface {
 public:
  static constexpr int kCharacterWidth = 7;

  int LineHeight() override { return 14; }
  int TextWidth(TextView text) override { return kCharacterWidth * static_cast<int>(text.size()); }
  PixelSize Border() override { return {1, 1}; }
};

// Binds keys with the answer that it was told to give.
class MemoryGlobalKey : public GlobalKey {
 public:
  KeyBinding Bind(const KeyCombination& key) override {
    bound_ = FormatCombination(key);
    return answer_;
  }
  void Release() override { bound_.clear(); }

  // To the next Bind, and to one that waits for it.
  void Answer(KeyBinding answer) {
    const bool waits = answer_ == KeyBinding::Pending && !bound_.empty();
    answer_ = answer;
    if (waits) TellChanged(answer);
  }
  // What was asked for last and not let go.
  const Text& Asked() const { return bound_; }
  bool Works() const { return !bound_.empty() && answer_ == KeyBinding::Bound; }
  void Press() { TellPressed(); }

 private:
  Text bound_;
  KeyBinding answer_ = KeyBinding::Bound;
};

}  // namespace quillbox
