#include "console/Console.h"

#include <utility>

#include "base/Utf8.h"
#include "console/ConsoleError.h"
#include "console/Escaping.h"
#include "console/Verbs.h"

namespace quillbox {

namespace {

// The answer, whatever the request's own would have been.
std::string Tell(const Difference& found) {
  return "error\tmirror\t" + found.control + '\t' + found.property + '\t' + Escape(found.is) + '\t' +
         Escape(found.shouldBe);
}

}  // namespace

Console::Console(ProgramFactory factory) : factory_(std::move(factory)) { Begin(); }

void Console::Begin() {
  scene_.reset();
  scene_ = std::make_unique<Scene>(factory_);
  VerbTable& verbs = scene_->verbs;
  Session& session = scene_->session;
  AddStartVerbs(verbs, session);
  AddClipboardVerbs(verbs, session);
  AddRegistryVerbs(verbs, session);
  AddPropertyVerbs(verbs, session);
  AddInputVerbs(verbs, session);
  AddListVerbs(verbs, session);
  AddTrayVerbs(verbs, session);
  AddRecordVerbs(verbs, session);
  AddTipVerbs(verbs, session);
  AddMeanwhileVerbs(verbs, session, [this](std::string_view line) { return Answer(line); });
  // The world goes when its own verb is done with.
  verbs.Add("anew", 0, [this](const Arguments&, class Answer&) {
    if (depth_ > 1) throw ConsoleError("not within another request");
    renew_ = true;
  });
}

std::string Console::Answer(std::string_view line) {
  std::string answer;
  ++depth_;
  try {
    answer = scene_->verbs.Run(ReadRequest(line));
  } catch (const std::exception& failure) {
    answer = "error\t" + Escape(FromUtf8(failure.what()));
  }
  --depth_;
  if (std::exchange(renew_, false)) Begin();
  scene_->session.Settle();
  // Within another request the screen is still at work.
  if (depth_ > 0) return answer;
  const std::vector<Difference> found = scene_->session.Rest();
  return found.empty() ? answer : Tell(found.front());
}

}  // namespace quillbox
