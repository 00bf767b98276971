#include "console/Request.h"

#include <limits>

#include "base/Utf8.h"
#include "console/ConsoleError.h"
#include "console/Escaping.h"

namespace quillbox {

namespace {

// More than any request has a use for.
constexpr std::size_t kMostArguments = 1000;

[[noreturn]] void BadNumber(std::size_t i) {
  throw ConsoleError("argument " + std::to_string(i + 1) + " isn't a number that fits here");
}

}  // namespace

const Text& Arguments::operator[](std::size_t i) const {
  static const Text missing;
  return i < values_.size() ? values_[i] : missing;
}

std::string Arguments::Name(std::size_t i) const { return ToUtf8((*this)[i]); }

long long Arguments::Number(std::size_t i, long long least, long long most) const {
  TextView digits = (*this)[i];
  const bool negative = !digits.empty() && digits.front() == u'-';
  if (negative) digits.remove_prefix(1);
  // Eighteen digits never overflow.
  if (digits.empty() || digits.size() > 18) BadNumber(i);
  long long number = 0;
  for (const char16_t digit : digits) {
    if (digit < u'0' || digit > u'9') BadNumber(i);
    number = number * 10 + (digit - u'0');
  }
  if (negative) number = -number;
  if (number < least || number > most) BadNumber(i);
  return number;
}

int Arguments::Int(std::size_t i) const {
  return static_cast<int>(Number(i, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

bool Arguments::Flag(std::size_t i) const { return Number(i, 0, 1) == 1; }

Request ReadRequest(std::string_view line) {
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  Request request;
  std::size_t end = line.find('\t');
  request.verb = std::string(line.substr(0, end));
  std::vector<Text> arguments;
  while (end != std::string_view::npos) {
    line.remove_prefix(end + 1);
    end = line.find('\t');
    if (arguments.size() == kMostArguments) throw ConsoleError("too many arguments");
    arguments.push_back(Unescape(line.substr(0, end)));
  }
  request.arguments = Arguments(std::move(arguments));
  return request;
}

}  // namespace quillbox
