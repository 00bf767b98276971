#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>

#include "console/Protocol.h"
#include "console/Session.h"

namespace quillbox {

using In = const Request&;
using Out = Answer&;

// What the console understands: names with what they do. What can't do it throws ConsoleError.
class VerbTable {
 public:
  using Handler = std::function<void(In, Out)>;
  static constexpr std::size_t kAnyNumber = static_cast<std::size_t>(-1);

  void Add(const std::string& name, std::size_t least, std::size_t most, Handler handler) {
    verbs_.insert_or_assign(name, Verb{least, most, std::move(handler)});
  }
  // Exactly `count` arguments.
  void Add(const std::string& name, std::size_t count, Handler handler) {
    Add(name, count, count, std::move(handler));
  }
  // ConsoleError for an unknown verb or a wrong number of arguments.
  std::string Run(const Request& request) const {
    const auto found = verbs_.find(request.Verb());
    if (found == verbs_.end()) throw ConsoleError("unknown verb");
    const Verb& verb = found->second;
    if (request.Count() < verb.least || request.Count() > verb.most)
      throw ConsoleError("wrong number of arguments");
    Answer answer;
    verb.handler(request, answer);
    return answer.Line();
  }

 private:
  struct Verb {
    std::size_t least;
    std::size_t most;
    Handler handler;
  };
  std::map<std::string, Verb> verbs_;
};

// The groups of verbs. The session outlives the table. What surrounds the program, start and end, time:
void AddWorldVerbs(VerbTable& table, Session& session);
// What a person does to controls, forms, icon and menu.
void AddPersonVerbs(VerbTable& table, Session& session);
// What can be read of forms, controls, menu, tips and slots, and what the program has shown, sent and played.
void AddStateVerbs(VerbTable& table, Session& session);

}  // namespace quillbox
