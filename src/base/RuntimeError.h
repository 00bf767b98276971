#pragma once

#include <stdexcept>
#include <string>

#include "base/Trace.h"

namespace quillbox {

// A failure that an error trap catches and sorts by its number.
class RuntimeError : public std::runtime_error {
 public:
  RuntimeError(int number, const std::string& description)
      : std::runtime_error(description), number_(number) {}
  int Number() const { return number_; }

 private:
  int number_;
};

namespace errors {
inline constexpr int kBadCall = 5;
inline constexpr int kOverflow = 6;
inline constexpr int kSubscript = 9;
inline constexpr int kDivisionByZero = 11;
inline constexpr int kTypeMismatch = 13;
inline constexpr int kFileNotFound = 53;
inline constexpr int kFileOpen = 55;
inline constexpr int kDeviceError = 57;
inline constexpr int kDiskFull = 61;
inline constexpr int kPastEnd = 62;
inline constexpr int kPermission = 70;
inline constexpr int kPathAccess = 75;
inline constexpr int kPathNotFound = 76;
inline constexpr int kBadIndex = 381;
inline constexpr int kClipboardBusy = 521;
}  // namespace errors

// For a trap that goes on as if nothing had happened.
inline void Swallow(const RuntimeError& error) { Trace({"ignored: ", error.what()}); }

// Runs one statement; a failure of it is ignored.
template <class Statement>
void IgnoreFailure(Statement&& statement) {
  try {
    statement();
  } catch (const RuntimeError& error) {
    Swallow(error);
  }
}

}  // namespace quillbox
