#include "platform/qt/portal/RestoreToken.h"

#include <unistd.h>

#include <cstddef>
#include <cstring>

#include "base/Trace.h"
#include "platform/linux/files/AtomicFile.h"
#include "platform/linux/files/SystemCalls.h"

namespace quillbox {

namespace {

constexpr std::size_t kLongestToken = 4096;

}  // namespace

std::string RestoreToken::Read() const {
  SystemCalls calls;
  std::string token;
  return ReadWholeFile(calls, Path(), kLongestToken, token) == 0 ? token : std::string();
}

void RestoreToken::Write(const std::string& token) const {
  std::string path = Path();
  if (token.empty()) {
    unlink(path.c_str());
    return;
  }
  SystemCalls calls;
  MakeFolder(folder_(), true);
  if (const int failure = ReplaceFile(calls, path, token); failure != 0) {
    Trace({"keys: the desktop's permission can't be kept: ", std::strerror(failure)});
  }
}

}  // namespace quillbox
