#include "console/ConsoleError.h"
#include "console/Verbs.h"
#include "platform/forms/Dispatcher.h"

namespace quillbox {

void AddTrayVerbs(VerbTable& table, Session& session) {
  MemoryTrayIcon& icon = session.world.trayIcon;
  MemoryWindows& windows = session.world.windows;
  table.Add("tray", 0, [&](const Arguments&, Answer& answer) {
    answer.Flag(icon.IsThere());
    answer.Add(icon.Image() == TrayImage::Window ? "window" : "Picture1");
    answer.Add(icon.Tip());
  });
  table.Add("tray.mouse", 1, [&](const Arguments& arguments, Answer&) {
    Program& program = session.Alive();
    const int message = arguments.Int(0);
    if (!icon.IsThere()) throw ConsoleError("there is no icon");
    windows.CloseMenu();
    program.GetDispatcher().Dispatch([&] { icon.Press(message); });
  });
  table.Add("menu", 0, [&](const Arguments&, Answer& answer) {
    if (!session.Running() || !windows.OpenMenu()) return;
    for (const Person::ShownItem& item : session.Alive().GetPerson().Look(*windows.OpenMenu())) {
      answer.Add(item.name);
      answer.Add(item.caption);
      answer.Flag(item.checked);
    }
  });
  table.Add("pick", 1, [&](const Arguments& arguments, Answer&) {
    Program& program = session.Alive();
    MenuItem* const item = session.FindMenuItem(arguments.Name(0));
    if (!item) throw ConsoleError("no such menu item");
    windows.CloseMenu();
    program.GetPerson().Pick(*item);
  });
}

}  // namespace quillbox
