#include "console/ConsoleError.h"
#include "console/Verbs.h"
#include "platform/forms/Dispatcher.h"

namespace quillbox {

namespace {

// What a person sees from the top, a submenu's items behind the submenu.
void List(const MenuItem& menu, Answer& answer) {
  for (const MenuItem* item : menu.Children()) {
    if (!item->GetVisible()) continue;
    answer.Add(item->Name());
    answer.Add(item->GetCaption());
    answer.Flag(item->GetChecked());
    List(*item, answer);
  }
}

}  // namespace

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
    if (session.Running() && windows.OpenMenu()) List(*windows.OpenMenu(), answer);
  });
  table.Add("pick", 1, [&](const Arguments& arguments, Answer&) {
    Program& program = session.Alive();
    MenuItem* const item = session.FindMenuItem(arguments.Name(0));
    if (!item) throw ConsoleError("no such menu item");
    windows.CloseMenu();
    if (item->Click) program.GetDispatcher().Dispatch([&] { item->Click(); });
  });
}

}  // namespace quillbox
