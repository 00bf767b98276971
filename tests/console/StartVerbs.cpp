#include <limits>

#include "console/ConsoleError.h"
#include "console/Verbs.h"
#include "platform/forms/Dispatcher.h"

namespace quillbox {

namespace {

// Longer times than that are asked for in several requests.
constexpr long long kLongestAdvance = 31LL * 24 * 60 * 60 * 1000;

// The parts of a text like 12:34:56.
int Part(TextView text, std::size_t begin, std::size_t length) {
  int number = 0;
  for (const char16_t digit : text.substr(begin, length)) {
    if (digit < u'0' || digit > u'9') throw ConsoleError("bad date or time");
    number = number * 10 + (digit - u'0');
  }
  return number;
}

LocalTime ReadTime(TextView date, TextView time) {
  if (date.size() != 10 || date[4] != u'-' || date[7] != u'-') throw ConsoleError("bad date");
  if (time.size() != 8 || time[2] != u':' || time[5] != u':') throw ConsoleError("bad time");
  return {Part(date, 0, 4), Part(date, 5, 2), Part(date, 8, 2),
          Part(time, 0, 2), Part(time, 3, 2), Part(time, 6, 2)};
}

void SetClock(MemoryClock& clock, const Arguments& arguments) {
  Text date = arguments[0];
  Text time = arguments[1];
  // Both in one argument, with a blank between.
  if (arguments.Count() == 1 && date.size() > 11 && date[10] == u' ') {
    time = date.substr(11);
    date.resize(10);
  }
  if (!clock.Set(ReadTime(date, time))) throw ConsoleError("no such time");
}

void SetSystem(VerbTable& table, Session& session) {
  MemorySystem& system = session.world.system;
  table.Add("folder", 1, [&](const Arguments& arguments, Answer&) {
    Text folder = arguments[0];
    while (folder.size() > 1 && folder.back() == u'/') folder.pop_back();
    if (folder.empty()) throw ConsoleError("no folder");
    system.folder = folder;
  });
  table.Add("user", 0, 1, [&](const Arguments& arguments, Answer&) {
    system.user = arguments[0] == u"-" ? std::nullopt : std::optional(arguments[0]);
  });
  table.Add("platform", 1,
            [&](const Arguments& arguments, Answer&) { system.version.platformId = arguments.Int(0); });
  table.Add("separator", 1, [&](const Arguments& arguments, Answer&) {
    if (arguments[0].size() != 1) throw ConsoleError("not one character");
    system.separator = arguments[0].front();
  });
  table.Add("version", 3, 4, [&](const Arguments& arguments, Answer&) {
    const VersionRecord version{arguments.Int(0), arguments.Int(1), arguments.Int(2),
                                system.version.platformId, arguments[3]};
    system.version = version;
  });
  table.Add("instance", 1,
            [&](const Arguments& arguments, Answer&) { system.anotherInstance = arguments.Flag(0); });
  table.Add("screen", 2, [&](const Arguments& arguments, Answer&) {
    constexpr int kMost = 100'000;
    const auto side = [&](std::size_t i) { return static_cast<int>(arguments.Number(i, 1, kMost)); };
    session.world.windows.SetScreenSize({side(0), side(1)});
  });
}

}  // namespace

void AddStartVerbs(VerbTable& table, Session& session) {
  SetSystem(table, session);
  table.Add("clock", 1, 2,
            [&](const Arguments& arguments, Answer&) { SetClock(session.world.clock, arguments); });
  table.Add("start", 0, [&](const Arguments&, Answer&) { session.Start(); });
  table.Add("advance", 1, [&](const Arguments& arguments, Answer&) {
    session.world.timers.Advance(arguments.Number(0, 0, kLongestAdvance));
  });
  table.Add("running", 0, [&](const Arguments&, Answer& answer) { answer.Flag(session.Running()); });
  table.Add("end", 0, [&](const Arguments&, Answer& answer) {
    Program& program = session.Started();
    MenuItem* const end = program.Menu().Find("mnuEnd");
    if (program.Running() && end && end->Click) program.GetDispatcher().Dispatch([&] { end->Click(); });
    answer.Flag(session.Running());
  });
  table.Add("shutdown", 0, [&](const Arguments&, Answer& answer) {
    Program& program = session.Started();
    if (program.Running()) {
      program.GetDispatcher().Dispatch([&] { program.MainForm().Close(CloseReason::System); });
    }
    answer.Flag(session.Running());
  });
  table.Add("closebox", 1, [&](const Arguments& arguments, Answer& answer) {
    Form& form = session.LoadedForm(arguments.Name(0));
    if (session.Running()) session.Alive().GetPerson().CloseBox(form);
    answer.Flag(session.Running());
  });
}

}  // namespace quillbox
