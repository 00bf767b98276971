#pragma once

#include <stdio.h>
#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>

namespace quillbox::test {

// An X server of the tests' own, on which they run while it is there. It ends with its last client, which is
// this one.
class OwnXServer {
 public:
  OwnXServer() {
    // It picks a free number and writes it when it is ready.
    const std::unique_ptr<FILE, int (*)(FILE*)> number(
        popen("Xvfb -displayfd 3 -screen 0 320x200x24 -nolisten tcp -terminate 3>&1 >/dev/null 2>&1 &", "r"),
        pclose);
    int display = 0;
    if (std::fscanf(number.get(), "%d", &display) != 1)
      throw std::runtime_error("the X server did not start");
    setenv("DISPLAY", (":" + std::to_string(display)).c_str(), 1);
    client_ = xcb_connect(nullptr, nullptr);
  }
  ~OwnXServer() {
    setenv("DISPLAY", before_.c_str(), 1);
    xcb_disconnect(client_);
  }
  OwnXServer(const OwnXServer&) = delete;
  OwnXServer& operator=(const OwnXServer&) = delete;

 private:
  std::string before_ = std::getenv("DISPLAY") != nullptr ? std::getenv("DISPLAY") : "";
  xcb_connection_t* client_ = nullptr;
};

}  // namespace quillbox::test
