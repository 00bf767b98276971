#include "scenarios/Driver.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "console/Escaping.h"
#include "console/QuillboxProgram.h"
#include "platform/Utf8.h"

namespace quillbox {

namespace {

std::string FullName(const std::string& control) {
  return control.find('.') == std::string::npos && control.rfind("frm", 0) != 0 ? "frmTray." + control
                                                                                : control;
}

std::string ReadAll(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

Driver::Driver() : console_(MakeQuillbox) {}

std::string Driver::Send(const Values& request) {
  std::string line;
  for (const std::string& part : request) {
    if (!line.empty()) line += '\t';
    line += Escape(FromUtf8(part));
  }
  return console_.Answer(line);
}

Driver::Values Driver::Ask(const Values& request) {
  const std::string answer = Send(request);
  Values values;
  std::size_t begin = 0;
  for (std::size_t tab = 0; tab != std::string::npos; begin = tab + 1) {
    tab = answer.find('\t', begin);
    values.push_back(ToUtf8(Unescape(answer.substr(begin, tab == std::string::npos ? tab : tab - begin))));
  }
  std::string whole;
  for (const std::string& part : request) whole += part + " ";
  EXPECT_EQ(values.front(), "ok") << whole << "-> " << answer;
  values.erase(values.begin());
  return values;
}

bool Driver::Refuses(const Values& request) { return Send(request).rfind("error", 0) == 0; }

Driver::Values Driver::GetAll(const std::string& control, const std::string& property) {
  return Ask({"get", FullName(control), property});
}

std::string Driver::Get(const std::string& control, const std::string& property) {
  const Values values = GetAll(control, property);
  EXPECT_EQ(values.size(), 1U) << control << " " << property;
  return values.empty() ? std::string() : values.front();
}

std::string Driver::Setting(const std::string& key, const std::string& section) {
  const Values found = Ask({"reg.get", "HKCU", "Software\\Norvane\\Quillbox\\user\\" + section, key});
  return found.front() == "1" ? found.at(1) : "<none>";
}

void Driver::Set(const std::string& key, const std::string& value, const std::string& section) {
  Ask({"reg.set", "HKCU", "Software\\Norvane\\Quillbox\\user\\" + section, key, value});
}

std::string Driver::Machine(const std::string& path, const std::string& name) {
  const Values found = Ask({"reg.get", "HKLM", path, name});
  return found.front() == "1" ? found.at(1) : "<none>";
}

void Driver::StartOnPage(int page) {
  Start();
  Ask({"tray.mouse", "513"});
  Ask({"tab", "frmTray.SSTab1", std::to_string(page)});
}

void Driver::Restart() {
  Ask({"end"});
  Start();
}

std::vector<Driver::Box> Driver::Boxes() {
  const Values values = Ask({"boxes"});
  std::vector<Box> boxes;
  for (std::size_t i = 0; i + 2 < values.size(); i += 3)
    boxes.push_back({values[i], values[i + 1], values[i + 2]});
  return boxes;
}

std::string Driver::UserFolder() { return World().scratch.Path() + "/user"; }

std::string Driver::File(const std::string& name) { return ReadAll(UserFolder() + "/" + name); }

void Driver::WriteFile(const std::string& name, const std::string& content) {
  std::filesystem::create_directories(UserFolder());
  std::ofstream(UserFolder() + "/" + name, std::ios::binary) << content;
}

void Driver::Obstruct(const std::string& name) {
  const std::filesystem::path path = UserFolder() + "/" + name;
  std::filesystem::rename(path, path.string() + ".before");
  // A folder that holds something can't be replaced by a file.
  std::filesystem::create_directories(path / "full");
}

void Driver::Clear(const std::string& name) {
  const std::filesystem::path path = UserFolder() + "/" + name;
  std::filesystem::remove_all(path);
  std::filesystem::rename(path.string() + ".before", path);
}

int Driver::Writes(const std::string& name) { return std::stoi(Ask({"writes", name}).front()); }

Driver::Stored Driver::Everything() {
  return {World().registry.All(Hive::CurrentUser),
          World().registry.All(Hive::LocalMachine),
          {File("PadData.qbx"), File("ClipData.qbx"), File("ToDoData.qbx")}};
}

}  // namespace quillbox
