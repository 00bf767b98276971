#include "console/Console.h"

int main() {
  quillbox::Console([](auto& world) { return std::make_unique<quillbox::QuillboxProgram>(world); }).Serve();
  return 0;
}
