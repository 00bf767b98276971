#pragma once

#include "console/Session.h"

namespace quillbox {

// The whole program driven line by line (see Protocol.h): a request a line on the standard input, the answer
// at once on the standard output, until the input ends. The console outlives the program: after its end,
// records, files, settings and the state of its window can still be read, and it can be started again.
void ServeConsole(const PersonFactory& makePerson);

}  // namespace quillbox
