#include "console/ConsoleError.h"
#include "console/Properties.h"
#include "console/Verbs.h"

namespace quillbox {

void AddPropertyVerbs(VerbTable& table, Session& session) {
  table.Add("get", 2, [&](const Arguments& arguments, Answer& answer) {
    const std::string name = arguments.Name(0);
    const std::string property = arguments.Name(1);
    // An item of the menu goes by its bare name too, as the menu lists it.
    if (const MenuItem* const item = session.FindMenuItem(name)) {
      GetOfMenuItem(*item, property, answer);
    } else if (name.find('.') == std::string::npos) {
      GetOfForm(session.FindForm(name), property, answer);
    } else {
      GetOfControl(session.GetControl(name), property, answer);
    }
  });
  table.Add("slots", 1, [&](const Arguments& arguments, Answer& answer) {
    const auto slots = session.Started().Slots(arguments[0]);
    if (!slots) throw ConsoleError("no such array");
    for (const Text& slot : *slots) answer.Add(slot);
  });
}

}  // namespace quillbox
