#pragma once

#include <string>
#include <tuple>
#include <vector>

#include "scenarios/Scenario.h"

namespace quillbox {

// A message box as it was shown.
struct Box {
  std::string code;
  std::string title;
  std::string text;
  bool operator==(const Box&) const = default;
};

// A scenario that looks at what the program shows and stores.
class RecordScenario : public Scenario {
 protected:
  // A property of a control of the main window.
  std::string Of(const std::string& control, const std::string& property) {
    return Get("frmTray." + control, property);
  }
  bool Is(const std::string& control, const std::string& property) { return Get(control, property) == "1"; }
  // The boxes shown since the last call.
  std::vector<Box> Boxes();
  std::string MachineValue(const std::string& path, const std::string& name);
  void Restart();

  // A data file that can't be replaced from now on; then it stands there again as it was before.
  void Obstruct(const std::string& name);
  void Clear(const std::string& name);

  // Everything that the program stores: all values of both hives, all data files.
  struct Stored {
    std::vector<std::tuple<Text, Text, std::uint32_t, std::string>> user;
    std::vector<std::tuple<Text, Text, std::uint32_t, std::string>> machine;
    Values files;
    bool operator==(const Stored&) const = default;
  };
  Stored Everything();
};

}  // namespace quillbox
