#include "console/Verbs.h"

namespace quillbox {

void AddClipboardVerbs(VerbTable& table, Session& session) {
  MemoryClipboard& clipboard = session.world.clipboard;
  table.Add("clip.set", 0, 1,
            [&](const Arguments& arguments, Answer&) { clipboard.OtherSets(arguments[0]); });
  table.Add("clip.clear", 0, [&](const Arguments&, Answer&) { clipboard.OtherClears(); });
  table.Add("clip.picture", 0, [&](const Arguments&, Answer&) { clipboard.OtherSetsPicture(); });
  table.Add("clip.lock", 1,
            [&](const Arguments& arguments, Answer&) { clipboard.OtherLocks(arguments.Flag(0)); });
  table.Add("clip.get", 0, [&](const Arguments&, Answer& answer) { answer.Add(clipboard.Content()); });
  table.Add("clip.writes", 0,
            [&](const Arguments&, Answer& answer) { answer.Number(clipboard.OwnWrites()); });
}

}  // namespace quillbox
