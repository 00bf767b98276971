#include "console/Reach.h"
#include "console/Verbs.h"
#include "platform/forms/Dispatcher.h"

namespace quillbox {

void AddTipVerbs(VerbTable& table, Session& session) {
  table.Add("settip", 1, 2, [&](const Arguments& arguments, Answer&) {
    Dispatcher& dispatcher = session.Alive().GetDispatcher();
    Control& control = session.GetControl(arguments.Name(0));
    dispatcher.Dispatch([&] { control.SetToolTipText(arguments[1]); });
  });
  table.Add("tip", 2, [&](const Arguments& arguments, Answer& answer) {
    Program& program = session.Alive();
    const Control& control = session.GetControl(arguments.Name(0));
    const DrawnTip tip = program.Tip(control, arguments.Int(1));
    answer.Number(tip.left);
    answer.Number(tip.width);
    answer.Number(tip.height);
    answer.Number(tip.alignment);
    answer.Add(tip.text);
  });
}

}  // namespace quillbox
