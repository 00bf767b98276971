#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "console/Console.h"

namespace quillbox {

using Values = std::vector<std::string>;

// The whole program behind a console of its own, with the start help switched off and no other setting.
// Strings are UTF-8 with the characters themselves: the escapes of the protocol are made and read here.
class Scenario : public ::testing::Test {
 protected:
  Scenario();

  // The values of the answer; a failure of the test if it is an error.
  template <class... Parts>
  Values Do(const Parts&... parts) {
    return Run({std::string(parts)...});
  }
  Values Do(const Values& request) { return Run(request); }
  bool Fails(const Values& request) { return IsError(request); }
  template <class... Parts>
  bool Fails(const Parts&... parts) {
    return IsError({std::string(parts)...});
  }
  // The answer's only value.
  std::string Get(const std::string& control, const std::string& property);
  Values Rows(const std::string& list) { return Do("get", "frmTray." + list, "List"); }
  // The slots of `array` up to the last one that isn't empty.
  Values Slots(const std::string& array);
  void Advance(int milliseconds) { Do("advance", std::to_string(milliseconds)); }
  // One tick of the clipboard's poll.
  void Tick() { Advance(250); }
  // Another program copies, and the poll sees it.
  void Copy(const std::string& text);
  std::string Clipboard() { return Do("clip.get").at(0); }

  void Show() { Do("tray.mouse", "513"); }
  void OpenPage(int page) { Do("tab", "frmTray.SSTab1", std::to_string(page)); }
  void AddPad(const std::string& name, const std::string& text);
  void AddToDo(const std::string& text);

  void Set(const std::string& key, const std::string& value) { Do("reg.set", "HKCU", Intern(), key, value); }
  std::string Setting(const std::string& section, const std::string& key);
  static std::string Section(const std::string& name) { return "Software\\Norvane\\Quillbox\\user\\" + name; }
  static std::string Intern() { return Section("Intern"); }

  // Bytes of the user's data files and of the templates; "(missing)" for none.
  std::string Folder() const { return console.World().scratch.Path(); }
  std::string DataFile(const std::string& name) const { return Read(Folder() + "/user/" + name); }
  void WriteData(const std::string& name, const std::string& bytes) { Write("user", name, bytes); }
  void WriteTemplate(const std::string& name, const std::string& bytes) { Write("Templates", name, bytes); }
  int Writes(const std::string& name) { return std::stoi(Do("writes", name).at(0)); }
  static std::string Read(const std::string& path);

  mutable Console console;

  // A request and its answer as they are on the line.
  std::string Send(const Values& parts);

 private:
  Values Run(const Values& parts);
  bool IsError(const Values& parts);
  void Write(const std::string& folder, const std::string& name, const std::string& bytes);
};

// Requests from a text: a semicolon and a blank between them, blanks between their parts.
std::vector<Values> Requests(const std::string& text);

// Marker lines, and whole files.
inline const std::string kMark = "\xBD\xBD\xBD\xBD\xBD";
inline const std::string kEnd = "\r\n";
inline std::string Line(const std::string& text) { return text + kEnd; }
inline std::string Marker(const std::string& words, const std::string& mark = kMark) {
  return Line(mark + " [" + words + "] " + mark);
}
// `list` is PAD, CLIP or TODO; each entry is all its lines, in the encoding of `mark`.
std::string File(const std::string& list, const std::vector<Values>& entries,
                 const std::string& mark = kMark);

}  // namespace quillbox
