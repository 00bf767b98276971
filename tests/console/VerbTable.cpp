#include "console/VerbTable.h"

#include "console/ConsoleError.h"
#include "console/Escaping.h"

namespace quillbox {

void Answer::Add(TextView value) { line_ += '\t' + Escape(value); }

void VerbTable::Add(std::string_view name, std::size_t least, std::size_t most, Handler handler) {
  verbs_.insert_or_assign(std::string(name), Verb{least, most, std::move(handler)});
}

std::string VerbTable::Run(const Request& request) const {
  const auto found = verbs_.find(request.verb);
  if (found == verbs_.end()) throw ConsoleError("unknown verb");
  const Verb& verb = found->second;
  const std::size_t count = request.arguments.Count();
  if (count < verb.least || count > verb.most) throw ConsoleError("wrong number of arguments");
  Answer answer;
  verb.handler(request.arguments, answer);
  return answer.Line();
}

}  // namespace quillbox
