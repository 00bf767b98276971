#include "scenarios/WalkScenario.h"

#include <cstdlib>
#include <iostream>

#include "base/CodePage.h"
#include "base/Utf8.h"

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
  const std::string answer = Send(parts);
  EXPECT_EQ(answer.find("no such"), std::string::npos) << ::testing::PrintToString(parts) << ": " << answer;
}

std::string WalkScenario::Stored(const std::string& list, const std::vector<Values>& entries) {
  return ToBytes(FromUtf8(File(list, entries, "½½½½½")));
}

}  // namespace quillbox
