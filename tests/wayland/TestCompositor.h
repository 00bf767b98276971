#pragma once

#include <wayland-server.h>

#include <atomic>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace quillbox::test {

// What an owner does when it is asked for a type. The descriptor is its own; it runs in the compositor's
// thread.
using Giving = std::function<void(int fd)>;
Giving Gives(std::string bytes);     // whole, in a thread of its own, unless the reader goes away
Giving Trickles(std::string piece);  // one piece after the other, without an end
Giving Refuses();                    // closes at once
Giving NeverWrites();                // holds the descriptor until its reader has gone

// A compositor with nothing but a clipboard, in a thread of its own. Its owners are made up by the test; what
// clients offer can be pasted.
class TestCompositor {
 public:
  struct Options {
    std::vector<std::string> managers = {"ext_data_control_manager_v1"};
    bool tellsOfNobody = true;  // a new client, that the clipboard is empty
    std::string socket = {};    // a name of its own if empty
  };
  using Offer = std::map<std::string, Giving>;  // by type

  explicit TestCompositor(Options options);
  // All connections break off, without a word.
  ~TestCompositor();
  TestCompositor(const TestCompositor&) = delete;
  TestCompositor& operator=(const TestCompositor&) = delete;

  const std::string& Socket() const { return socket_; }
  // The compositor does nothing else meanwhile.
  void Do(const std::function<void()>& work);

  // Somebody takes the clipboard; with an empty offer, nobody.
  void Own(Offer offer);
  void OwnerDies() { SetSelection({}); }  // nobody, from within what the owner does
  // Somebody pastes what a client offers: the reading end of the pipe, -1 if no client offers this type.
  int Paste(const std::string& type);
  // The types of the client that is the owner; nothing if none is.
  std::vector<std::string> Offered();
  // Every clipboard becomes unusable.
  void Finish();
  int Asked() const { return asked_; }  // how often a client has asked for a type

 private:
  struct Requests;
  struct Selection {
    int number = 0;
    Offer offer = {};               // of the test's own, or
    wl_resource* source = nullptr;  // a client's
    bool Any() const { return source || !offer.empty(); }
  };
  void SetSelection(Selection selection);
  void Send(wl_resource* device);
  void Receive(int selection, const std::string& type, int fd);

  void Run();

  const std::string socket_;
  const std::vector<std::string> managers_;
  const bool tellsOfNobody_;
  wl_display* const display_;
  std::vector<wl_interface> interfaces_;                      // of the managers
  std::map<wl_resource*, std::vector<std::string>> sources_;  // with their types
  std::vector<wl_resource*> devices_;
  Selection selection_;
  int selections_ = 0;
  std::atomic<int> asked_ = 0;
  std::mutex turn_;  // one thread at a time works in the display
  std::atomic<bool> ended_ = false;
  std::thread thread_;
};

}  // namespace quillbox::test
