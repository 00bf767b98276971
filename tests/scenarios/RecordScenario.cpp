#include "scenarios/RecordScenario.h"

#include <filesystem>

namespace quillbox {

std::vector<Box> RecordScenario::Boxes() {
  const Values values = Do("boxes");
  std::vector<Box> boxes;
  for (std::size_t i = 0; i + 2 < values.size(); i += 3)
    boxes.push_back({values[i], values[i + 1], values[i + 2]});
  return boxes;
}

void RecordScenario::CopyAll(const Values& texts) {
  for (std::size_t i = texts.size(); i > 0; --i) Copy(texts[i - 1]);
}

std::string RecordScenario::Marks(const std::string& list) {
  std::string marks;
  for (const std::string& mark : Do("get", "frmTray." + list, "Selected")) marks += mark;
  return marks;
}

std::string RecordScenario::Status(const std::string& label, const std::string& upper,
                                   const std::string& lower) {
  EXPECT_EQ(Of(upper, "Visible"), Of(label, "Visible"));
  EXPECT_EQ(Of(lower, "Visible"), Of(label, "Visible"));
  return Of(label, "Visible") == "1" ? Of(label, "Caption") : "hidden";
}

void RecordScenario::ExpectControls(const std::vector<Values>& controls) {
  for (const Values& each : controls) {
    const Values found{each[0], Of(each[0], "Caption"), Of(each[0], "ToolTipText"), Of(each[0], "Enabled")};
    EXPECT_EQ(found, each);
  }
}

std::string RecordScenario::MachineValue(const std::string& path, const std::string& name) {
  const Values found = Do("reg.get", "HKLM", path, name);
  return found.at(0) == "1" ? found.at(1) : "(missing)";
}

void RecordScenario::Restart() {
  EXPECT_EQ(Do("end"), Values{"0"});
  Do("start");
}

void RecordScenario::Obstruct(const std::string& name) {
  const std::filesystem::path path = Folder() + "/user/" + name;
  std::filesystem::rename(path, path.string() + ".before");
  // A folder that holds something can't be replaced by a file.
  std::filesystem::create_directories(path / "full");
}

void RecordScenario::Clear(const std::string& name) {
  const std::filesystem::path path = Folder() + "/user/" + name;
  std::filesystem::remove_all(path);
  std::filesystem::rename(path.string() + ".before", path);
}

RecordScenario::Stored RecordScenario::Everything() {
  const MemoryRegistry& registry = console.World().registry;
  return {registry.All(Hive::CurrentUser),
          registry.All(Hive::LocalMachine),
          {DataFile("PadData.qbx"), DataFile("ClipData.qbx"), DataFile("ToDoData.qbx")}};
}

}  // namespace quillbox
