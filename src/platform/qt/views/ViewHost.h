#pragma once

#include <functional>
#include <map>
#include <memory>

#include "platform/forms/Dispatcher.h"
#include "platform/qt/widgets/FormView.h"

namespace quillbox {

// Makes a form's view when it is first to be seen, and keeps all views in step with their forms.
class ViewHost {
 public:
  explicit ViewHost(Dispatcher& dispatcher);
  ~ViewHost();
  // Makes the view of a form; null for one that has none.
  std::function<std::unique_ptr<FormView>(Form&)> Make;
  // Whether the form must have its view although it isn't shown.
  std::function<bool(const Form&)> IsNeeded;

  // Draws what has changed; the dispatcher's word for it.
  void Refresh();
  // Null while the form has no view.
  FormView* Of(const Form& form) const;
  // Makes it if it isn't there.
  FormView* Need(Form& form);

 private:
  using Views = std::map<const Form*, std::unique_ptr<FormView>>;
  Views::iterator Drop(Views::iterator view);

  Dispatcher& dispatcher_;
  Views views_;
  bool refreshing_ = false;
  bool again_ = false;
};

}  // namespace quillbox
