#include "console/Reach.h"
#include "console/Verbs.h"
#include "platform/forms/ListBox.h"

namespace quillbox {

namespace {

int Row(const ListBox& list, const Arguments& arguments, std::size_t i) {
  return static_cast<int>(arguments.Number(i, 0, list.GetListCount() - 1));
}

// The first row is clicked, the others are Ctrl-clicked.
void Select(ListBox& list, const Arguments& arguments) {
  std::vector<int> rows;
  const bool none = arguments.Count() == 2 && arguments[1].empty();
  for (std::size_t i = 1; i < arguments.Count() && !none; ++i) rows.push_back(Row(list, arguments, i));
  if (rows.empty()) list.PersonSelectNone();
  for (std::size_t i = 0; i < rows.size(); ++i) list.PersonSelect(rows[i], i > 0);
}

}  // namespace

void AddListVerbs(VerbTable& table, Session& session) {
  table.Add("select", 1, VerbTable::kAnyNumber, [&](const Arguments& arguments, Answer&) {
    Select(ReachableAs<ListBox>(session, arguments.Name(0)), arguments);
  });
  table.Add("dblrow", 2, [&](const Arguments& arguments, Answer&) {
    auto& list = ReachableAs<ListBox>(session, arguments.Name(0));
    list.PersonDoubleClick(Row(list, arguments, 1));
  });
  table.Add("check", 3, [&](const Arguments& arguments, Answer&) {
    auto& list = ReachableAs<ListBox>(session, arguments.Name(0));
    if (!list.HasCheckBoxes()) throw ConsoleError("the list has no check boxes");
    const bool checked = arguments.Flag(2);
    list.PersonCheck(Row(list, arguments, 1), checked);
  });
  table.Add("drag", 1, [&](const Arguments& arguments, Answer& answer) {
    answer.Add(ReachableAs<ListBox>(session, arguments.Name(0)).PersonStartDrag());
  });
}

}  // namespace quillbox
