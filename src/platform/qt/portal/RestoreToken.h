#pragma once

#include <functional>
#include <string>
#include <utility>

namespace quillbox {

// What a person has allowed once, as a word of the desktop's that is good for one more session: it is in the
// user's data folder, readable by nobody else, and replaced by each session.
class RestoreToken {
 public:
  // `folder` gives the user's data folder, which may be missing yet.
  explicit RestoreToken(std::function<std::string()> folder) : folder_(std::move(folder)) {}

  // Empty if there is none.
  std::string Read() const;
  // An empty one takes the file away. Failures are traced: the person is asked again then.
  void Write(const std::string& token) const;

 private:
  std::string Path() const { return folder_() + "/keyboard.token"; }

  std::function<std::string()> folder_;
};

}  // namespace quillbox
