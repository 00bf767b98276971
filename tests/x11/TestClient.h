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
  // Answers a request for a selection: it stands in the property now, or nowhere.
  void Notify(const xcb_selection_request_event_t& request, xcb_atom_t property);
  // What stands in a property, and is deleted there if that is wanted; null for none.
  std::unique_ptr<xcb_get_property_reply_t, void (*)(void*)> Property(xcb_window_t window,
                                                                      xcb_atom_t property, bool take);
  PollEventLoop& loop_;

 private:
  void Work();

  xcb_connection_t* connection_;
  xcb_window_t window_;
  std::map<std::string, xcb_atom_t> atoms_;
};

}  // namespace quillbox::test
