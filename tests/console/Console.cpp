#include "console/Console.h"

#include <iostream>
#include <utility>

#include "base/Utf8.h"

namespace quillbox {

void Console::Begin() {
  scene_.reset();
  scene_ = std::make_unique<Scene>(factory_);
  AddWorldVerbs(scene_->verbs, scene_->session);
  AddPersonVerbs(scene_->verbs, scene_->session);
  AddStateVerbs(scene_->verbs, scene_->session);
  AddMeanwhile(*scene_);
  // The world goes when its own verb is done with.
  scene_->verbs.Add("anew", 0, [this](In, Out) {
    if (depth_ > 1) throw ConsoleError("not within another request");
    renew_ = true;
  });
}

void Console::AddMeanwhile(Scene& scene) {
  // All that wait for this moment, in their order; a moment within it has none of them.
  const auto carryOut = [this, &scene](Lines& requests) {
    for (const std::string& line : std::exchange(requests, {})) scene.answers.push_back(Answer(line));
  };
  scene.session.world.messageBoxes.WhileOpen = [&scene, carryOut] { carryOut(scene.box); };
  scene.session.world.keySender.WhileSending = [&scene, carryOut] { carryOut(scene.keys); };
  scene.verbs.Add("during", 0, VerbTable::kAnyNumber, [&scene](In in, Out out) {
    if (in.Count() == 0) {
      for (const std::string& line : std::exchange(scene.answers, {})) out.Add(FromUtf8(line));
      return;
    }
    if (in.Count() == 1) throw ConsoleError("no request");
    if (in[0] != u"box" && in[0] != u"keys") throw ConsoleError("neither box nor keys");
    std::string line = Escape(in[1]);
    for (std::size_t i = 2; i < in.Count(); ++i) line += '\t' + Escape(in[i]);
    (in[0] == u"box" ? scene.box : scene.keys).push_back(line);
  });
}

std::string Console::Answer(std::string_view line) {
  std::string answer;
  ++depth_;
  try {
    answer = scene_->verbs.Run(Request(line));
  } catch (const std::exception& failure) {
    answer = "error\t" + Escape(FromUtf8(failure.what()));
  }
  --depth_;
  if (std::exchange(renew_, false)) Begin();
  scene_->session.Settle();
  // Within another request the screen is still at work.
  if (depth_ > 0) return answer;
  const std::vector<Difference> found = scene_->session.Rest();
  if (found.empty()) return answer;
  // Whatever the request's own would have been.
  const Difference& first = found.front();
  return "error\tmirror\t" + first.control + '\t' + first.property + '\t' + Escape(first.is) + '\t' +
         Escape(first.shouldBe);
}

void Console::Serve() {
  std::ios::sync_with_stdio(false);
  std::string line;
  while (std::cout && std::getline(std::cin, line)) std::cout << Answer(line) << '\n' << std::flush;
}

}  // namespace quillbox
