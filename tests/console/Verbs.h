#pragma once

#include <functional>
#include <limits>
#include <map>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

#include "console/Protocol.h"
#include "console/Session.h"

namespace quillbox {

using Out = Answer&;

// A last argument that may be missing, which is as if it was empty.
struct Last : Text {};
// All the arguments that are left, which may be none.
template <std::size_t kMost = std::numeric_limits<std::size_t>::max() / 2>
struct Rest : std::vector<Argument> {
  static constexpr std::size_t kAtMost = kMost;
};

// What the console understands: names with what they do. What can't do it throws ConsoleError.
class VerbTable {
 public:
  // The session outlives the table.
  explicit VerbTable(Session& session) : session_(session) {}

  // A verb with an argument for each parameter, read in their order: texts, numbers, a form that is loaded, a
  // control that can be reached. A parameter of the running program, of its person or of the answer is no
  // argument. The result is answered.
  template <class Does>
  void Add(const std::string& name, Does does) {
    AddTyped(name, does, &Does::operator());
  }
  // ConsoleError for an unknown verb or a wrong number of arguments.
  std::string Run(const Request& request) const {
    const auto found = verbs_.find(request.verb);
    if (found == verbs_.end()) throw ConsoleError("unknown verb");
    Answer answer;
    found->second(request.arguments, answer);
    return answer.Line();
  }

 private:
  using Texts = const std::vector<Text>&;

  // How many arguments a parameter takes at least and at most.
  template <class Parameter>
  static constexpr std::pair<std::size_t, std::size_t> Taken() {
    using Plain = std::remove_cvref_t<Parameter>;
    if constexpr (requires { Plain::kAtMost; }) return {0, Plain::kAtMost};
    if (std::is_same_v<Plain, Last>) return {0, 1};
    const bool isArgument = !std::is_same_v<Plain, QuillboxProgram> && !std::is_same_v<Plain, Person> &&
                            !std::is_same_v<Plain, Answer>;
    return {isArgument, isArgument};
  }

  template <class Does, class Result, class... Parameters>
  void AddTyped(const std::string& name, const Does& does, Result (Does::*)(Parameters...) const) {
    verbs_[name] = [this, does](Texts texts, Out out) {
      constexpr std::size_t least = (Taken<Parameters>().first + ... + 0);
      constexpr std::size_t most = (Taken<Parameters>().second + ... + 0);
      if (texts.size() < least || texts.size() > most) throw ConsoleError("wrong number of arguments");
      static_cast<void>(this);  // without arguments nobody is asked
      std::size_t next = 0;
      const std::tuple<decltype(Read<Parameters>(texts, next, out))...> values{
          Read<Parameters>(texts, next, out)...};
      if constexpr (std::is_void_v<Result>) {
        std::apply(does, values);
      } else {
        out.Add(std::apply(does, values));
      }
    };
  }

  template <class Parameter>
  decltype(auto) Read(Texts texts, std::size_t& next, Out out) const {
    using Plain = std::remove_cvref_t<Parameter>;
    const auto take = [&] {
      ++next;
      return Argument{texts[next - 1], next};
    };
    if constexpr (std::is_same_v<Plain, QuillboxProgram>) {
      return session_.Alive();
    } else if constexpr (std::is_same_v<Plain, Person>) {
      return static_cast<Person&>(*session_.Alive().person);
    } else if constexpr (std::is_same_v<Plain, Answer>) {
      return static_cast<Out>(out);
    } else if constexpr (requires { Plain::kAtMost; }) {
      Plain rest;
      while (next < texts.size()) rest.push_back(take());
      return rest;
    } else if constexpr (std::is_same_v<Plain, Last>) {
      return next < texts.size() ? Last{take().text} : Last();
    } else if constexpr (std::is_same_v<Plain, Form>) {
      return session_.LoadedForm(ToUtf8(take().text));
    } else if constexpr (std::is_base_of_v<Control, Plain>) {
      return session_.Reachable<Plain>(ToUtf8(take().text));
    } else if constexpr (std::is_same_v<Plain, bool>) {
      return take().Index(2) == 1;
    } else if constexpr (std::is_same_v<Plain, int>) {
      return take().Int();
    } else if constexpr (std::is_same_v<Plain, std::string>) {
      return ToUtf8(take().text);
    } else if constexpr (std::is_same_v<Plain, Argument>) {
      return take();
    } else {
      return Plain(take().text);
    }
  }

  Session& session_;
  std::map<std::string, std::function<void(Texts, Out)>> verbs_;
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
