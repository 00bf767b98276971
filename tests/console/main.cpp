#include "console/Console.h"

int main() {
  using namespace quillbox;
  ServeConsole([](auto&, Dispatcher& dispatcher, auto&) { return std::make_unique<Person>(dispatcher); });
  return 0;
}
