#pragma once

#include <memory>

#include "console/Person.h"

namespace quillbox {

class frmTray;
struct MemoryWorld;

// Has the program's real windows on a screen that nobody sees, and works on them with mouse, keys and drops
// as Qt gets them from a window system; never on the forms.
//
// There is no window manager: which window is in front is the forms' word alone, and a window that isn't
// shown is closed on its form. An item that the tray menu doesn't show is carried out by its action, and what
// a window refuses to take is dropped on the control. What a window can't do as the forms do it is refused
// (ConsoleError), each with its reason.
std::unique_ptr<Person> MakeWindowPerson(MemoryWorld& world, Dispatcher& dispatcher, frmTray& program);

}  // namespace quillbox
