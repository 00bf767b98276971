#pragma once

#include <string>
#include <utility>
#include <vector>

#include "console/Console.h"

namespace quillbox {

// The program on the console, as a scenario drives it. Values are UTF-8, unescaped.
class Driver {
 public:
  using Values = std::vector<std::string>;
  // Text, code and title of a message box.
  struct Box {
    std::string code;
    std::string title;
    std::string text;
    bool operator==(const Box&) const = default;
  };

  Driver();

  // The values of the answer; a refused request fails the test.
  Values Ask(const Values& request);
  // Whether the console refuses the request: a hidden or disabled control, for one.
  bool Refuses(const Values& request);

  // The one value of a property; `control` without a form stands on frmTray.
  std::string Get(const std::string& control, const std::string& property);
  Values GetAll(const std::string& control, const std::string& property);
  bool Is(const std::string& control, const std::string& property) { return Get(control, property) == "1"; }

  // A setting of a section of the user; "<none>" for none.
  std::string Setting(const std::string& key, const std::string& section = "Intern");
  void Set(const std::string& key, const std::string& value, const std::string& section = "Intern");
  // A value of the machine's hive.
  std::string Machine(const std::string& path, const std::string& name);

  void Start() { Ask({"start"}); }
  // Starts, shows the window and brings a page to the front: 0 Clip to 4 ToDo.
  void StartOnPage(int page);
  void Restart();
  // The boxes shown since the last call.
  std::vector<Box> Boxes();

  // The data file of that name; empty if there is none.
  std::string File(const std::string& name);
  void WriteFile(const std::string& name, const std::string& content);
  // A data file that can't be replaced from now on, or can be again with its content of before.
  void Obstruct(const std::string& name);
  void Clear(const std::string& name);
  int Writes(const std::string& name);
  std::string UserFolder();

  // Everything that the program stores: all values of both hives, all data files.
  struct Stored {
    std::vector<std::tuple<Text, Text, std::uint32_t, std::string>> user;
    std::vector<std::tuple<Text, Text, std::uint32_t, std::string>> machine;
    Values files;
    bool operator==(const Stored&) const = default;
  };
  Stored Everything();

  MemoryWorld& World() { return console_.World(); }

 private:
  std::string Send(const Values& request);

  Console console_;
};

}  // namespace quillbox
