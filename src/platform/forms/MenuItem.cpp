#include "platform/forms/MenuItem.h"

namespace quillbox {

MenuItem* MenuItem::Find(std::string_view name) {
  if (name_ == name) return this;
  for (MenuItem* child : children_) {
    if (MenuItem* const found = child->Find(name)) return found;
  }
  return nullptr;
}

}  // namespace quillbox
