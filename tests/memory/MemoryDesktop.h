#pragma once

#include <functional>

#include "platform/forms/Form.h"
#include "platform/ports/Clipboard.h"
#include "platform/ports/GlobalKey.h"
#include "platform/ports/PixelSize.h"
#include "platform/ports/TrayIcon.h"
#include "platform/ports/WindowManager.h"

namespace quillbox {

// A clipboard that other programs (the methods beginning with Other) and this one share.
class MemoryClipboard : public Clipboard {
 public:
  TextView Read() override {
    CheckOpen();
    return text_;
  }
  bool HoldsSecret() const override { return secret_; }
  void Clear() override { Put({}); }
  void Put(TextView text) override {
    CheckOpen();
    ++ownWrites_;
    text_ = Text(text);
    secret_ = false;
  }

  void OtherSets(const Text& text) { Change(text, ClipboardNews::Text); }
  // Also for a picture, or whatever else isn't text.
  void OtherClears() { Change({}, ClipboardNews::Other); }
  void OtherSetsSecret() {
    OtherClears();
    secret_ = true;
  }
  // While another program holds the clipboard, nobody else can open it.
  void OtherLocks(bool locked) { locked_ = locked; }

  // What stands on it, whoever holds it; empty for a picture.
  const Text& Content() const { return text_; }
  // How often the program cleared it or put something on it.
  int OwnWrites() const { return ownWrites_; }

 private:
  void CheckOpen() const {
    if (locked_) throw RuntimeError(errors::kClipboardBusy, "Can't open Clipboard");
  }
  void Change(const Text& text, ClipboardNews news) {
    text_ = text;
    secret_ = false;
    Tell(news);
  }

  Text text_;
  bool secret_ = false;
  bool locked_ = false;
  int ownWrites_ = 0;
};

// The icon as the shell would show it.
class MemoryTrayIcon : public TrayIcon {
 public:
  void Add(TrayImage image, const Text& tip) override {
    there_ = true;
    Change(image, tip);
  }
  // A shell changes only an icon that it has.
  void Change(TrayImage image, const Text& tip) override {
    if (!there_) return;
    image_ = image;
    tip_ = tip;
  }
  void Delete() override {
    there_ = false;
    image_ = TrayImage::Window;
    tip_.clear();
  }

  bool IsThere() const { return there_; }
  TrayImage Image() const { return image_; }
  const Text& Tip() const { return tip_; }
  // A mouse message on the icon.
  void Press(int message) { Tell(message); }

 private:
  bool there_ = false;
  TrayImage image_ = TrayImage::Window;
  Text tip_;
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
  // The menu has opened or closed.
  std::function<void()> MenuChanged;
  // The program's windows and menus are gone.
  void Forget() {
    MenuChanged = nullptr;
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
