#include <memory>
#include <utility>

#include "base/Utf8.h"
#include "console/ConsoleError.h"
#include "console/Escaping.h"
#include "console/Verbs.h"

namespace quillbox {

namespace {

using Lines = std::vector<std::string>;

// Requests that wait for their moment.
struct Meanwhile {
  Lines box;
  Lines keys;
  Lines answers;  // of those that have been carried out
};

// One request, its words as the arguments behind the moment.
std::string LineOf(const Arguments& arguments) {
  std::string line;
  for (std::size_t i = 1; i < arguments.Count(); ++i) {
    if (i > 1) line += '\t';
    line += Escape(arguments[i]);
  }
  return line;
}

}  // namespace

void AddMeanwhileVerbs(VerbTable& table, Session& session,
                       std::function<std::string(std::string_view)> answerTo) {
  const auto waiting = std::make_shared<Meanwhile>();
  // All that wait for this moment, in their order; a moment within it has none of them.
  const auto carryOut = [waiting, answerTo = std::move(answerTo)](Lines& requests) {
    for (const std::string& line : std::exchange(requests, {})) waiting->answers.push_back(answerTo(line));
  };
  session.world.messageBoxes.WhileOpen = [waiting, carryOut] { carryOut(waiting->box); };
  session.world.keySender.WhileSending = [waiting, carryOut] { carryOut(waiting->keys); };
  table.Add("during", 0, VerbTable::kAnyNumber, [waiting](const Arguments& arguments, Answer& answer) {
    if (arguments.Count() == 0) {
      for (const std::string& line : std::exchange(waiting->answers, {})) answer.Add(FromUtf8(line));
      return;
    }
    if (arguments.Count() == 1) throw ConsoleError("no request");
    if (arguments[0] == u"box") {
      waiting->box.push_back(LineOf(arguments));
    } else if (arguments[0] == u"keys") {
      waiting->keys.push_back(LineOf(arguments));
    } else {
      throw ConsoleError("neither box nor keys");
    }
  });
}

}  // namespace quillbox
