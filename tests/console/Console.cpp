#include "console/Console.h"

#include "base/Utf8.h"
#include "console/Escaping.h"
#include "console/Verbs.h"

namespace quillbox {

Console::Console(ProgramFactory factory) : session_(std::move(factory)) {
  AddStartVerbs(verbs_, session_);
  AddClipboardVerbs(verbs_, session_);
  AddRegistryVerbs(verbs_, session_);
  AddPropertyVerbs(verbs_, session_);
  AddInputVerbs(verbs_, session_);
  AddListVerbs(verbs_, session_);
  AddTrayVerbs(verbs_, session_);
  AddRecordVerbs(verbs_, session_);
  AddTipVerbs(verbs_, session_);
}

std::string Console::Answer(std::string_view line) {
  std::string answer;
  try {
    answer = verbs_.Run(ReadRequest(line));
  } catch (const std::exception& failure) {
    answer = "error\t" + Escape(FromUtf8(failure.what()));
  }
  session_.Settle();
  return answer;
}

}  // namespace quillbox
