#pragma once

#include <initializer_list>
#include <string_view>

namespace quillbox {

// What the program does out of sight, for whoever looks for a fault: with QUILLBOX_LOG in the environment,
// one line on standard error for each change of the clipboard's state, each save, each write of a setting and
// each failure that is swallowed. Never a text that was copied. Without it nothing is written.

// Whether anybody listens; asked once. For whoever would have to build what it says.
bool Tracing();
// Writes the parts as one line. Example: Trace({"clipboard: ", "held"}).
void Trace(std::initializer_list<std::string_view> parts);

}  // namespace quillbox
