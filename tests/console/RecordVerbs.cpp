#include "console/Verbs.h"

namespace quillbox {

void AddRecordVerbs(VerbTable& table, Session& session) {
  MemoryWorld& world = session.world;
  table.Add("answer", 1, VerbTable::kAnyNumber, [&](const Arguments& arguments, Answer&) {
    std::vector<int> buttons;
    for (std::size_t i = 0; i < arguments.Count(); ++i) buttons.push_back(arguments.Int(i));
    for (const int button : buttons) world.messageBoxes.Answer(button);
  });
  table.Add("boxes", 0, [&](const Arguments&, Answer& answer) {
    for (const MemoryMessageBoxes::Box& box : world.messageBoxes.TakeShown()) {
      answer.Number(static_cast<int>(box.code));
      answer.Add(box.title);
      answer.Add(box.text);
    }
  });
  table.Add("keys", 0, [&](const Arguments&, Answer& answer) {
    for (const Text& keys : world.keySender.TakeSent()) answer.Add(keys);
  });
  table.Add("keys.fail", 1,
            [&](const Arguments& arguments, Answer&) { world.keySender.SetFailing(arguments.Flag(0)); });
  table.Add("sounds", 0, [&](const Arguments&, Answer& answer) {
    for (const Text& path : world.sound.TakePlayed()) answer.Add(path);
  });
  table.Add("writes", 1, [&](const Arguments& arguments, Answer& answer) {
    answer.Number(world.files.Writes(arguments[0]));
  });
}

}  // namespace quillbox
