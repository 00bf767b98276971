#include "pad/ScriptEntry.h"

#include <algorithm>

namespace quillbox {

namespace {

constexpr TextView kMark = u"{SCRIPT}";

}  // namespace

bool IsScript(TextView text) { return AsciiUpper(text.substr(0, kMark.size())) == kMark; }

void ScriptRunner::Run(const Text& script) {
  if (running_) return;
  const Text keys = script.substr(std::min(kMark.size(), script.size()));
  running_ = true;
  try {
    window_.form.GetDispatcher().WhileWaiting([&] { keySender_.Send(keys); });
    running_ = false;
  } catch (const RuntimeError&) {
    running_ = false;
    // The program may have been ended while the keys went out.
    if (!window_.form.GetLoaded()) return;
    window_.form.SetWindowState(WindowState::Maximized);
    window_.MessageBox(
        u"Sorry, an error occured while executing the script. Please check your syntax (listed in the "
        u"StartHelp) and try again!",
        16, u"Quillbox Script Error");
  }
}

}  // namespace quillbox
