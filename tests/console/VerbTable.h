#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "base/Text.h"
#include "console/Request.h"

namespace quillbox {

// The values of an answer, in their order.
class Answer {
 public:
  void Add(TextView value);
  void Add(const char* value) { line_ += '\t' + std::string(value); }
  void Add(const std::string& value) { Add(value.c_str()); }
  void Number(long long value) { Add(std::to_string(value)); }
  void Flag(bool value) { Number(value ? 1 : 0); }
  const std::string& Line() const { return line_; }

 private:
  std::string line_ = "ok";
};

// What the console understands: names with what they do. A handler that can't do it throws ConsoleError.
class VerbTable {
 public:
  using Handler = std::function<void(const Arguments&, Answer&)>;
  static constexpr std::size_t kAnyNumber = static_cast<std::size_t>(-1);

  // Exactly `count` arguments.
  void Add(std::string_view name, std::size_t count, Handler handler) {
    Add(name, count, count, std::move(handler));
  }
  void Add(std::string_view name, std::size_t least, std::size_t most, Handler handler);
  // ConsoleError for an unknown verb or a wrong number of arguments.
  std::string Run(const Request& request) const;

 private:
  struct Verb {
    std::size_t least;
    std::size_t most;
    Handler handler;
  };
  std::map<std::string, Verb, std::less<>> verbs_;
};

}  // namespace quillbox
