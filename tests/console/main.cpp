#include "console/Console.h"

int main() {
  quillbox::ServeConsole([](auto& world) { return std::make_unique<quillbox::QuillboxProgram>(world); });
  return 0;
}
