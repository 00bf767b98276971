#include "console/Reach.h"
#include "console/Verbs.h"

namespace quillbox {

void AddTipVerbs(VerbTable& table, Session& session) {
  table.Add("settip", 1, 2, [&](const Arguments& arguments, Answer&) {
    session.Alive();
    session.GetControl(arguments.Name(0)).SetToolTipText(arguments[1]);
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
