#include "pad/ScriptRunner.h"

#include <algorithm>

#include "base/RuntimeError.h"
#include "base/Utf8.h"
#include "storage/PadList.h"

namespace quillbox {

namespace {

// A good script that can't be typed here and now isn't blamed on its syntax.
Text MessageFor(const RuntimeError& error) {
  if (error.Number() == errors::kDeviceError) {
    return u"Sorry, the script could not be typed. " + FromUtf8(error.what());
  }
  return u"Sorry, an error occured while executing the script. Please check your syntax (listed in the "
         u"StartHelp) and try again!";
}

}  // namespace

void ScriptRunner::Run(const Text& script) {
  if (running_) return;
  const Text keys = script.substr(std::min(PadList::kScriptMark.size(), script.size()));
  running_ = true;
  try {
    window_.form.GetDispatcher().WhileWaiting([&] { keySender_.Send(keys); });
    running_ = false;
  } catch (const RuntimeError& error) {
    running_ = false;
    // The program may have been ended while the keys went out.
    if (!window_.form.GetLoaded()) return;
    window_.form.SetWindowState(WindowState::Maximized);
    window_.MessageBox(MessageFor(error), BoxCode::Stop, u"Quillbox Script Error");
  }
}

}  // namespace quillbox
