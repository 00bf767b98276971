#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "console/Session.h"
#include "console/VerbTable.h"

namespace quillbox {

// The whole program without a screen, driven line by line. It outlives the program: after its end, records,
// files, settings and the state of its window can still be read, and it can be started again.
class Console {
 public:
  explicit Console(ProgramFactory factory);
  Console(const Console&) = delete;
  Console& operator=(const Console&) = delete;

  // One request, without its line feed: a verb and its arguments, tabs between. The answer, also without a
  // line feed: `ok` and values, or `error` and a message. Never throws, whatever the line holds.
  std::string Answer(std::string_view line);

  MemoryWorld& World() { return scene_->session.world; }

 private:
  // A world with all that is done in it.
  struct Scene {
    explicit Scene(ProgramFactory factory) : session(std::move(factory)) {}
    Session session;
    VerbTable verbs;
  };
  // A fresh one.
  void Begin();

  const ProgramFactory factory_;
  std::unique_ptr<Scene> scene_;
  int depth_ = 0;  // of requests within one another
  bool renew_ = false;
};

}  // namespace quillbox
