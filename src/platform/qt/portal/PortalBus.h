#pragma once

#include <QDBusConnection>
#include <QDBusMessage>

namespace quillbox::portal {

// A connection to the session bus for the calls of the portal alone, the same each time; not connected if
// there is no bus. The portal knows a caller by its connection, and takes the first call on it for the
// question who that is: on the one that the toolkit has, which asks for colours, nobody could be introduced
// any more.
QDBusConnection Bus();

// Tells the portal QUILLBOX_APP_ID; to be answered before any other call on that connection, to each portal
// that comes up. Without it a program isn't known by name, or by that of the terminal that it was started in,
// and some portals refuse such a one. It fails, and no harm is done, if it was done before, with older
// portals, and without an installed desktop entry.
QDBusMessage Introduction();

}  // namespace quillbox::portal
