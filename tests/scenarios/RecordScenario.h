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

inline const Box kDeleteKey{"36", "Delete selected entries?",
                            "Do you really want to delete the selected entries?"};
inline const Box kDeleteAll{"68", "No entries selected",
                            "You haven't selected any entries to delete. Do you want to delete ALL entries?"};

// A scenario that looks at what the program shows and stores.
class RecordScenario : public Scenario {
 protected:
  // A property of a control of the main window.
  std::string Of(const std::string& control, const std::string& property) {
    return Get("frmTray." + control, property);
  }
  bool Is(const std::string& control, const std::string& property) { return Get(control, property) == "1"; }
  void Click(const std::string& control) { Do("click", "frmTray." + control); }
  void Focus(const std::string& control) { Do("focus", "frmTray." + control); }
  // Types over all that stands in a field.
  void Enter(const std::string& field, const std::string& text) { Do("settext", "frmTray." + field, text); }
  // The Clip list from the top, as copies make it.
  void CopyAll(const Values& texts);
  // Hidden, and not minimized either.
  bool Hidden() { return !Is("frmTray", "Visible") && Get("frmTray", "WindowState") == "0"; }
  // The rows that are selected, or marked: a digit for each.
  std::string Marks(const std::string& list);
  // What a page's status shows; "hidden" while it doesn't. Its two lines come and go with it.
  std::string Status(const std::string& label, const std::string& upper, const std::string& lower);
  // Each row: a control, its caption, its tip, and whether it can be clicked.
  void ExpectControls(const std::vector<Values>& controls);
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
