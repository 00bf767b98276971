#pragma once

#include <cstddef>
#include <random>
#include <string>

#include "scenarios/RecordScenario.h"

namespace quillbox {

// A random hand on the whole program. Its seed is printed; QUILLBOX_SEED repeats a walk and
// QUILLBOX_WALK_STEPS makes it longer or shorter.
class WalkScenario : public RecordScenario {
 protected:
  WalkScenario();

  static int StepsOr(int otherwise);
  // At least 0, below `below`.
  int Random(int below) { return std::uniform_int_distribution<>(0, below - 1)(random_); }
  bool Chance(int percent) { return Random(100) < percent; }
  std::string Number(int below) { return std::to_string(Random(below)); }
  const std::string& OneOf(const Values& values) { return values[Random(static_cast<int>(values.size()))]; }
  // A request that may be refused: what can't be reached now. A name that doesn't exist is a failure.
  void Try(const Values& parts);
  // The bytes that the program writes for these entries, each all its lines.
  static std::string Stored(const std::string& list, const std::vector<Values>& entries);

 private:
  std::mt19937 random_;
};

}  // namespace quillbox
