#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/Text.h"

namespace quillbox {

// The arguments of a request. A missing one reads as empty.
class Arguments {
 public:
  Arguments() = default;
  explicit Arguments(std::vector<Text> values) : values_(std::move(values)) {}

  std::size_t Count() const { return values_.size(); }
  const Text& operator[](std::size_t i) const;
  // The argument as the name of something of the program.
  std::string Name(std::size_t i) const;
  // ConsoleError if the argument isn't a whole number in plain decimal within the bounds.
  long long Number(std::size_t i, long long least, long long most) const;
  int Int(std::size_t i) const;
  // `0` or `1`, else ConsoleError.
  bool Flag(std::size_t i) const;

 private:
  std::vector<Text> values_;
};

struct Request {
  std::string verb;
  Arguments arguments;
};

// Reads a line without its line feed; a carriage return at its end is ignored. ConsoleError if it can't be
// read.
Request ReadRequest(std::string_view line);

}  // namespace quillbox
