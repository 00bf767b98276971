#include <vector>

#include "console/Reach.h"
#include "console/Verbs.h"

namespace quillbox {

namespace {

int Row(const ListBox& list, const Arguments& arguments, std::size_t i) {
  return static_cast<int>(arguments.Number(i, 0, list.GetListCount() - 1));
}

std::vector<int> Rows(const ListBox& list, const Arguments& arguments) {
  std::vector<int> rows;
  const bool none = arguments.Count() == 2 && arguments[1].empty();
  for (std::size_t i = 1; i < arguments.Count() && !none; ++i) rows.push_back(Row(list, arguments, i));
  return rows;
}

}  // namespace

void AddListVerbs(VerbTable& table, Session& session) {
  table.Add("select", 1, VerbTable::kAnyNumber, [&](const Arguments& arguments, Answer&) {
    auto& list = ReachableAs<ListBox>(session, arguments.Name(0));
    const std::vector<int> rows = Rows(list, arguments);
    session.Alive().GetPerson().Select(list, rows);
  });
  table.Add("dblrow", 2, [&](const Arguments& arguments, Answer&) {
    auto& list = ReachableAs<ListBox>(session, arguments.Name(0));
    const int row = Row(list, arguments, 1);
    session.Alive().GetPerson().DoubleClickRow(list, row);
  });
  table.Add("check", 3, [&](const Arguments& arguments, Answer&) {
    auto& list = ReachableAs<ListBox>(session, arguments.Name(0));
    if (!list.HasCheckBoxes()) throw ConsoleError("the list has no check boxes");
    const bool checked = arguments.Flag(2);
    const int row = Row(list, arguments, 1);
    session.Alive().GetPerson().Check(list, row, checked);
  });
  table.Add("drag", 1, [&](const Arguments& arguments, Answer& answer) {
    auto& list = ReachableAs<ListBox>(session, arguments.Name(0));
    answer.Add(session.Alive().GetPerson().Drag(list));
  });
}

}  // namespace quillbox
