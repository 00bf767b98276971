#include "scenarios/ListPage.h"

#include <filesystem>
#include <set>

namespace quillbox {

void ListPageScenario::Add(const std::string& text) {
  if (page_.name == "CLIP") Copy(text);
  if (page_.name == "PAD") AddPad(text, Capitals(text));
  if (page_.name == "TODO") AddToDo(text);
}

std::string ListPageScenario::List() {
  const Values rows = AllRows();
  std::string word;
  for (const std::string& row : rows) word += row;
  if (page_.name == "CLIP") {
    EXPECT_EQ(Do("slots", "ClipEntries"), Padded(rows));
  } else if (page_.name == "PAD") {
    Values texts;
    for (const std::string& row : rows) texts.push_back(Capitals(row));
    EXPECT_EQ(Do("slots", "PadEntries"), Padded(texts));
  }
  return word;
}

std::string ListPageScenario::Page() {
  const Values rows = AllRows();
  const std::string marks = Marks();
  const int current = std::stoi(Index());
  std::string seen = Hidden() ? "(hidden) " : "";
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const std::string row = (rows[i].empty() ? "_" : rows[i]) + (marks[i] == '1' ? "*" : "");
    seen += static_cast<int>(i) == current ? "[" + row + "]" : row;
  }
  seen += " | " + Status() + Rest();
  for (const Box& box : Boxes()) seen += " ! " + box.title;
  return seen;
}

void ListPageScenario::Renew() {
  Do("end");
  std::filesystem::remove_all(Folder() + "/user");
  Do("clip.clear");
  Boxes();
  StartOnPage();
}

void ListPageScenario::ExpectSteps(const std::vector<Step>& steps) {
  static const std::set<std::string> kOnControls{"click",   "dblclick", "focus",  "key",
                                                 "settext", "type",     "select", "check",
                                                 "dblrow",  "spin",     "drop",   "dropother"};
  for (const Step& step : steps) {
    SCOPED_TRACE(step.rows + ": " + step.requests + " (" + step.setting + ")");
    Renew();
    Fill(step.rows);
    const std::size_t blank = step.setting.find(' ');
    const std::string key = step.setting.substr(0, blank);
    if (!key.empty()) Set(key, step.setting.substr(blank + 1));
    for (Values request : Requests(step.requests)) {
      const bool ofWindow = kOnControls.count(request[0]) && request[1].find('.') == std::string::npos;
      if (ofWindow) request[1] = "frmTray." + request[1];
      Do(request);
    }
    EXPECT_EQ(Page(), step.page);
    List();
    if (!key.empty()) Do("reg.delete", "HKCU", Intern(), key);
  }
}

}  // namespace quillbox
