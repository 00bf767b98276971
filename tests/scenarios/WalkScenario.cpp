#include "scenarios/WalkScenario.h"

#include <cstdlib>
#include <iostream>

#include "console/Escaping.h"
#include "platform/Utf8.h"

namespace quillbox {

WalkScenario::WalkScenario() {
  const char* const given = std::getenv("QUILLBOX_SEED");
  const auto seed = given ? static_cast<unsigned>(std::strtoul(given, nullptr, 10)) : std::random_device()();
  std::cout << "QUILLBOX_SEED=" << seed << std::endl;
  random_.seed(seed);
}

int WalkScenario::StepsOr(int otherwise) {
  const char* const given = std::getenv("QUILLBOX_WALK_STEPS");
  return given ? std::atoi(given) : otherwise;
}

void WalkScenario::Try(const Values& parts) {
  std::string line;
  for (const std::string& part : parts) line += (line.empty() ? "" : "\t") + Escape(FromUtf8(part));
  const std::string answer = console.Answer(line);
  EXPECT_EQ(answer.find("no such"), std::string::npos) << line << ": " << answer;
}

}  // namespace quillbox
