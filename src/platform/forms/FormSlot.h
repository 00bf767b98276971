#pragma once

#include <cassert>
#include <functional>
#include <memory>

#include "platform/forms/Dispatcher.h"
#include "platform/forms/Form.h"

namespace quillbox {

// A form that is made when it is loaded and gone when it is unloaded, so that each load begins with the
// controls as they are designed. T has a member `Form form`.
template <class T>
class FormSlot {
 public:
  // `make` gives a new form, never null.
  FormSlot(Dispatcher& dispatcher, std::function<std::unique_ptr<T>()> make)
      : dispatcher_(dispatcher), make_(std::move(make)) {}

  // The loaded form, made and loaded if it isn't.
  T& Load() {
    if (!object_) {
      object_ = make_();
      assert(object_);
      object_->form.Unloaded = [this] {
        // The unloading handler is still running in it.
        dispatcher_.Release(std::move(object_));
      };
      object_->form.Load();
    }
    return *object_;
  }
  // Loads the form if need be and shows it, or brings it up again.
  void Show() { Load().form.Show(); }
  // Null while the form isn't loaded.
  T* Get() const { return object_.get(); }
  void Unload() {
    if (object_) object_->form.Unload();
  }

 private:
  Dispatcher& dispatcher_;
  std::function<std::unique_ptr<T>()> make_;
  std::unique_ptr<T> object_;
};

}  // namespace quillbox
