#include "platform/qt/views/ViewHost.h"

#include <utility>

namespace quillbox {

ViewHost::ViewHost(Dispatcher& dispatcher) : dispatcher_(dispatcher) {
  dispatcher_.OnLeave = [this](const Form& form) {
    if (const auto found = views_.find(&form); found != views_.end()) Drop(found);
  };
}

ViewHost::~ViewHost() { dispatcher_.OnLeave = nullptr; }

ViewHost::Views::iterator ViewHost::Drop(Views::iterator view) {
  // One of its widgets may be at work right now.
  FormView* const gone = view->second.release();
  gone->hide();
  gone->deleteLater();
  return views_.erase(view);
}

FormView* ViewHost::Of(const Form& form) const {
  const auto found = views_.find(&form);
  return found == views_.end() ? nullptr : found->second.get();
}

FormView* ViewHost::Need(Form& form) {
  if (FormView* const view = Of(form)) return view;
  std::unique_ptr<FormView> made = Make ? Make(form) : nullptr;
  FormView* const view = made.get();
  if (view) views_.emplace(&form, std::move(made));
  return view;
}

void ViewHost::Refresh() {
  if (std::exchange(refreshing_, true)) {
    // What is being drawn has changed something: once more from the start.
    again_ = true;
    return;
  }
  do {
    again_ = false;
    // A view doesn't outlive its form's time of being loaded.
    for (auto view = views_.begin(); view != views_.end();) {
      view = view->first->GetLoaded() ? std::next(view) : Drop(view);
    }
    const std::vector<Form*> forms = dispatcher_.Forms();
    for (Form* form : forms) {
      if (!form->GetLoaded()) continue;
      FormView* const view = form->GetVisible() || (IsNeeded && IsNeeded(*form)) ? Need(*form) : Of(*form);
      if (view) view->Refresh();
    }
  } while (again_);
  refreshing_ = false;
}

}  // namespace quillbox
