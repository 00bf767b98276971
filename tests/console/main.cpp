#include <iostream>
#include <string>

#include "console/Console.h"
#include "console/QuillboxProgram.h"

// A request a line on the standard input, the answer at once on the standard output, until the input ends.
int main() {
  std::ios::sync_with_stdio(false);
  quillbox::Console console(quillbox::MakeQuillbox);
  std::string line;
  while (std::cout && std::getline(std::cin, line)) std::cout << console.Answer(line) << '\n' << std::flush;
  return 0;
}
