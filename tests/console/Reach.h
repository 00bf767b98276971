#pragma once

#include <string_view>

#include "console/ConsoleError.h"
#include "console/Session.h"
#include "platform/forms/Timer.h"

namespace quillbox {

// The control, with which a person can work now; else ConsoleError.
inline Control& Reachable(Session& session, std::string_view name) {
  session.Alive();
  Control& control = session.GetControl(name);
  if (dynamic_cast<Timer*>(&control)) throw ConsoleError("a timer can't be touched");
  if (!control.IsShown()) throw ConsoleError("the control is hidden");
  if (!control.GetEnabled()) throw ConsoleError("the control is disabled");
  return control;
}

// The same for a control of one kind.
template <class Kind>
Kind& ReachableAs(Session& session, std::string_view name) {
  auto* const control = dynamic_cast<Kind*>(&Reachable(session, name));
  if (!control) throw ConsoleError("not that kind of control");
  return *control;
}

}  // namespace quillbox
