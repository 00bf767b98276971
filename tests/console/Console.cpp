#include "console/Console.h"

#include <iostream>
#include <utility>

#include "console/Verbs.h"

namespace quillbox {

namespace {

// A world with all that is done in it.
class Scene {
 public:
  explicit Scene(const PersonFactory& makePerson) : session_(makePerson) {
    AddWorldVerbs(verbs_, session_);
    AddPersonVerbs(verbs_, session_);
    AddStateVerbs(verbs_, session_);
    verbs_.Add("during", [this](const Rest<>& request) { return Wait(request); });
    // The world goes when its own verb is done with.
    verbs_.Add("anew", [this] {
      if (depth_ > 1) throw ConsoleError("not within another request");
      isOver_ = true;
    });
    session_.world.messageBoxes.WhileOpen = [this] { CarryOut(forBox_); };
    session_.world.keySender.WhileSending = [this] { CarryOut(forKeys_); };
  }

  // One request, without its line feed. The answer, also without a line feed: `ok` and values, or `error` and
  // a message. Never throws, whatever the line holds.
  std::string Answer(std::string_view line) {
    std::string answer;
    ++depth_;
    try {
      answer = verbs_.Run(Request(line));
    } catch (const std::exception& failure) {
      answer = "error\t" + Escape(FromUtf8(failure.what()));
    }
    --depth_;
    session_.Settle();
    // Within another request the screen is still at work.
    const std::string differs = depth_ > 0 || isOver_ ? "" : session_.Rest();
    return differs.empty() ? answer : differs;
  }
  // Another world takes its place.
  bool IsOver() const { return isOver_; }

 private:
  using Lines = std::vector<std::string>;

  // A request that waits for its moment; without one, the answers of those that have been carried out.
  std::vector<Text> Wait(const std::vector<Argument>& request) {
    if (request.empty()) return std::exchange(answers_, {});
    if (request.size() == 1) throw ConsoleError("no request");
    const Text& moment = request[0].text;
    if (moment != u"box" && moment != u"keys") throw ConsoleError("neither box nor keys");
    std::string line = Escape(request[1].text);
    for (std::size_t i = 2; i < request.size(); ++i) line += '\t' + Escape(request[i].text);
    (moment == u"box" ? forBox_ : forKeys_).push_back(line);
    return {};
  }
  // All that wait for this moment, in their order; a moment within it has none of them.
  void CarryOut(Lines& requests) {
    for (const std::string& line : std::exchange(requests, {})) answers_.push_back(FromUtf8(Answer(line)));
  }

  Session session_;
  VerbTable verbs_{session_};
  Lines forBox_, forKeys_;
  std::vector<Text> answers_;
  int depth_ = 0;  // of requests within one another
  bool isOver_ = false;
};

}  // namespace

void ServeConsole(const PersonFactory& makePerson) {
  std::ios::sync_with_stdio(false);
  auto scene = std::make_unique<Scene>(makePerson);
  std::string line;
  while (std::cout && std::getline(std::cin, line)) {
    const std::string answer = scene->Answer(line);
    if (scene->IsOver()) {
      scene.reset();
      scene = std::make_unique<Scene>(makePerson);
    }
    std::cout << answer << '\n' << std::flush;
  }
}

}  // namespace quillbox
