#include "base/Trace.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace quillbox {

bool Tracing() {
  static const bool tracing = std::getenv("QUILLBOX_LOG") != nullptr;
  return tracing;
}

void Trace(std::initializer_list<std::string_view> parts) {
  if (!Tracing()) return;
  std::string line = "quillbox: ";
  for (const std::string_view part : parts) line.append(part);
  line.push_back('\n');
  // In one piece: other threads may write, too.
  std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace quillbox
