#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/Event.h"
#include "base/Text.h"

namespace quillbox {

// One item of a menu tree. An item with children opens them as a submenu.
class MenuItem {
 public:
  MenuItem(std::string_view name, const Text& caption, bool visible = true)
      : name_(name), caption_(caption), visible_(visible) {}
  MenuItem(const MenuItem&) = delete;
  MenuItem& operator=(const MenuItem&) = delete;

  const std::string& Name() const { return name_; }
  const Text& GetCaption() const { return caption_; }
  void SetCaption(const Text& caption) { caption_ = caption; }
  bool GetVisible() const { return visible_; }
  void SetVisible(bool visible) { visible_ = visible; }
  bool GetChecked() const { return checked_; }
  void SetChecked(bool checked) {
    checked_ = checked;
    checkable_ = true;
  }
  // Whether it is an item that has a mark at times.
  bool IsCheckable() const { return checkable_; }
  // Whether it types a text instead of copying it; shown beside the caption.
  bool IsScript() const { return script_; }
  void SetScript(bool script) { script_ = script; }
  bool IsSeparator() const { return caption_ == u"-"; }

  void Add(MenuItem& child) { children_.push_back(&child); }
  const std::vector<MenuItem*>& Children() const { return children_; }
  // The item of that name in this tree, or null.
  MenuItem* Find(std::string_view name) {
    if (name_ == name) return this;
    for (MenuItem* child : children_) {
      if (MenuItem* const found = child->Find(name)) return found;
    }
    return nullptr;
  }

  // The item's command; none: a pick does nothing.
  Event<> Click;

 private:
  std::string name_;
  Text caption_;
  bool visible_;
  bool checked_ = false;
  bool checkable_ = false;
  bool script_ = false;
  std::vector<MenuItem*> children_;
};

}  // namespace quillbox
