#include "scenarios/Scenario.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

#include "base/Utf8.h"
#include "console/Escaping.h"
#include "console/QuillboxProgram.h"

namespace quillbox {

Scenario::Scenario() : console(MakeQuillbox) {
  Set("StartHelp", "No");
  Do("reg.set", "HKCU", Section("Extern"), "QuillboxVMajor", "4");
}

std::string Scenario::Send(const Values& parts) {
  std::string line;
  for (const std::string& part : parts) {
    if (&part != &parts.front()) line += '\t';
    line += Escape(FromUtf8(part));
  }
  return console.Answer(line);
}

Values Scenario::Run(const Values& parts) {
  const std::string answer = Send(parts);
  if (answer.rfind("ok", 0) != 0) {
    ADD_FAILURE() << parts[0] << (parts.size() > 1 ? " " + parts[1] : "") << ": " << answer;
    return {""};
  }
  Values values;
  for (std::size_t at = answer.find('\t'); at != std::string::npos;) {
    const std::size_t next = answer.find('\t', at + 1);
    values.push_back(ToUtf8(Unescape(std::string_view(answer).substr(at + 1, next - at - 1))));
    at = next;
  }
  return values;
}

bool Scenario::IsError(const Values& parts) { return Send(parts).rfind("error\t", 0) == 0; }

std::string Scenario::Get(const std::string& control, const std::string& property) {
  const Values values = Do("get", control, property);
  EXPECT_EQ(values.size(), 1u) << control << " " << property;
  return values.empty() ? "" : values[0];
}

Values Scenario::Slots(const std::string& array) {
  Values slots = Do("slots", array);
  EXPECT_EQ(slots.size(), 101u);
  while (!slots.empty() && slots.back().empty()) slots.pop_back();
  return slots;
}

void Scenario::Copy(const std::string& text) {
  Do("clip.set", text);
  Tick();
}

void Scenario::AddPad(const std::string& name, const std::string& text) {
  OpenPage(1);
  Do("settext", "frmTray.Text3", name);
  Do("settext", "frmTray.Text101", text);
  Do("click", "frmTray.Command101");
}

void Scenario::AddToDo(const std::string& text) {
  OpenPage(4);
  Do("settext", "frmTray.Text1", text);
  Do("click", "frmTray.Command2");
}

std::string Scenario::Setting(const std::string& section, const std::string& key) {
  const Values value = Do("reg.get", "HKCU", Section(section), key);
  return value.at(0) == "0" ? "(none)" : value.at(1);
}

std::string Scenario::Read(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return "(missing)";
  return {std::istreambuf_iterator<char>(file), {}};
}

void Scenario::Write(const std::string& folder, const std::string& name, const std::string& bytes) {
  std::filesystem::create_directories(Folder() + "/" + folder);
  std::ofstream(Folder() + "/" + folder + "/" + name, std::ios::binary) << bytes;
}

std::vector<Values> Requests(const std::string& text) {
  std::vector<Values> requests;
  std::istringstream all(text);
  for (std::string request; std::getline(all, request, ';');) {
    std::istringstream parts(request);
    Values& values = requests.emplace_back();
    for (std::string part; parts >> part;) values.push_back(part);
  }
  return requests;
}

std::string File(const std::string& list, const std::vector<Values>& entries, const std::string& mark) {
  std::string file = Marker(list + " ENTRY FILE 4.31, DO NOT EDIT", mark);
  for (std::size_t i = 0; i < entries.size(); ++i) {
    file += Marker(list + " ENTRY " + std::to_string(i), mark);
    for (const std::string& line : entries[i]) file += Line(line);
  }
  return file + Marker(list + " ENTRY FILE END", mark);
}

}  // namespace quillbox
