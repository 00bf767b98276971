#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <map>
#include <memory>
#include <string>

#include "x11/PollEventLoop.h"

namespace quillbox::test {

template <class T>
std::unique_ptr<T, void (*)(void*)> Malloced(T* memory) {
  return {memory, std::free};
}

// Another program on the X server: a connection of its own, served by the test's event loop.
class TestClient {
 public:
  explicit TestClient(PollEventLoop& loop);
  virtual ~TestClient();
  TestClient(const TestClient&) = delete;
  TestClient& operator=(const TestClient&) = delete;

  xcb_atom_t Atom(const std::string& name);
  std::string Name(xcb_atom_t atom);
  xcb_window_t Window() const { return window_; }
  xcb_connection_t* Connection() const { return connection_; }
  void DestroyWindow();
  // Returns when the server has done all that was asked of it so far.
  void Sync();
  // The program ends: its connection closes.
  void Quit();
  bool Running() const { return connection_ != nullptr; }

 protected:
  virtual void OnEvent(const xcb_generic_event_t& event) = 0;
  PollEventLoop& loop_;

 private:
  void Work();

  xcb_connection_t* connection_;
  xcb_window_t window_;
  std::map<std::string, xcb_atom_t> atoms_;
};

}  // namespace quillbox::test
