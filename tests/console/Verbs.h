#pragma once

#include <functional>
#include <map>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

#include "console/Protocol.h"
#include "console/Session.h"

namespace quillbox {

using In = const Request&;
using Out = Answer&;

// A last argument that may be missing, which is as if it was empty.
struct Last : Text {};

// An argument that is read when something else has been looked at, with bounds of its own.
struct Argument {
  In in;
  std::size_t i;
  int Int() const { return in.Int(i); }
  long long Number(long long least, long long most) const { return in.Number(i, least, most); }
  int Index(std::size_t count) const { return in.Index(i, count); }
};

// What the console understands: names with what they do. What can't do it throws ConsoleError.
class VerbTable {
 public:
  using Handler = std::function<void(In, Out)>;
  static constexpr std::size_t kAnyNumber = static_cast<std::size_t>(-1);

  // The session outlives the table.
  explicit VerbTable(Session& session) : session_(session) {}

  // A verb that reads its arguments itself.
  void Add(const std::string& name, std::size_t least, std::size_t most, Handler handler) {
    verbs_.insert_or_assign(name, Verb{least, most, std::move(handler)});
  }
  // A verb with an argument for each parameter, read in their order: texts, numbers, a form that is loaded, a
  // control that can be reached. A parameter of the running program or of its person is no argument. The
  // result is answered.
  template <class Does>
  void Add(const std::string& name, Does does) {
    AddTyped(name, does, &Does::operator());
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
  template <class Parameter>
  static constexpr bool kIsArgument =
      !std::is_same_v<Parameter, QuillboxProgram&> && !std::is_same_v<Parameter, Person&>;

  template <class Does, class Result, class... Parameters>
  void AddTyped(const std::string& name, const Does& does, Result (Does::*)(Parameters...) const) {
    constexpr std::size_t most = (std::size_t{kIsArgument<Parameters>} + ... + 0);
    constexpr std::size_t least = most - (std::is_same_v<Parameters, const Last&> || ...);
    Add(name, least, most, [this, does](In in, Out out) {
      static_cast<void>(this);  // without arguments nobody is asked
      std::size_t next = 0;
      const std::tuple<decltype(Read<Parameters>(in, next))...> values{Read<Parameters>(in, next)...};
      if constexpr (std::is_void_v<Result>) {
        std::apply(does, values);
      } else {
        out.Add(std::apply(does, values));
      }
    });
  }

  template <class Parameter>
  decltype(auto) Read(In in, std::size_t& next) const {
    using Plain = std::remove_cvref_t<Parameter>;
    if constexpr (std::is_same_v<Plain, QuillboxProgram>) {
      return session_.Alive();
    } else if constexpr (std::is_same_v<Plain, Person>) {
      return static_cast<Person&>(*session_.Alive().person);
    } else if constexpr (std::is_same_v<Plain, Form>) {
      return session_.LoadedForm(ToUtf8(in[next++]));
    } else if constexpr (std::is_base_of_v<Control, Plain>) {
      return session_.Reachable<Plain>(ToUtf8(in[next++]));
    } else if constexpr (std::is_same_v<Plain, Argument>) {
      return Argument{in, next++};
    } else if constexpr (std::is_same_v<Plain, bool>) {
      return in.Index(next++, 2) == 1;
    } else if constexpr (std::is_same_v<Plain, int>) {
      return in.Int(next++);
    } else if constexpr (std::is_same_v<Plain, std::string>) {
      return ToUtf8(in[next++]);
    } else {
      return Plain{in[next++]};
    }
  }

  Session& session_;
  std::map<std::string, Verb> verbs_;
};

// The value of a control's property, as it is answered; false if the control has none of that name.
bool ReadProperty(const Control& control, const std::string& name, Answer& answer);

// The groups of verbs. What surrounds the program, start and end, time:
void AddWorldVerbs(VerbTable& table, Session& session);
// What a person does to controls, forms, icon and menu.
void AddPersonVerbs(VerbTable& table, Session& session);
// What can be read of forms, controls, menu, tips and slots, and what the program has shown, sent and played.
void AddStateVerbs(VerbTable& table, Session& session);

}  // namespace quillbox
