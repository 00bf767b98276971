#pragma once

#include <sys/types.h>

#include <string>

namespace quillbox::test {

// An X server that the test may stop and end.
class OwnXServer {
 public:
  OwnXServer();  // throws if it doesn't start
  ~OwnXServer() { End(); }
  OwnXServer(const OwnXServer&) = delete;
  OwnXServer& operator=(const OwnXServer&) = delete;

  const std::string& Display() const { return display_; }
  void Stop();
  void Continue();
  void End();

 private:
  pid_t process_ = 0;
  std::string display_ = ":";
};

}  // namespace quillbox::test
