#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "console/Verbs.h"

namespace quillbox {

// The whole program without a screen, driven line by line. It outlives the program: after its end, records,
// files, settings and the state of its window can still be read, and it can be started again.
class Console {
 public:
  explicit Console(ProgramFactory factory) : factory_(std::move(factory)) { Begin(); }
  Console(const Console&) = delete;
  Console& operator=(const Console&) = delete;

  // One request, without its line feed. The answer, also without a line feed: `ok` and values, or `error` and
  // a message. Never throws, whatever the line holds.
  std::string Answer(std::string_view line);
  // A request a line on the standard input, the answer at once on the standard output, until the input ends.
  void Serve();

 private:
  using Lines = std::vector<std::string>;
  // A world with all that is done in it.
  struct Scene {
    explicit Scene(ProgramFactory factory) : session(std::move(factory)) {}
    Session session;
    VerbTable verbs;
    Lines box, keys;  // requests that wait for their moment
    Lines answers;    // of those that have been carried out
  };
  // A fresh one.
  void Begin();
  // What is done while a message box stands open or keys are sent.
  void AddMeanwhile(Scene& scene);

  const ProgramFactory factory_;
  std::unique_ptr<Scene> scene_;
  int depth_ = 0;  // of requests within one another
  bool renew_ = false;
};

}  // namespace quillbox
