#pragma once

#include <stdexcept>

namespace quillbox {

// A request that can't be carried out; its text is the answer.
class ConsoleError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace quillbox
