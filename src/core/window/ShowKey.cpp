#include "core/window/ShowKey.h"

#include <utility>

#include "base/Utf8.h"

namespace quillbox {

namespace {

TextView FaultOf(KeyBinding binding) {
  switch (binding) {
    case KeyBinding::None:
    case KeyBinding::Bound:
      return {};
    case KeyBinding::Pending:
      return u"The desktop hasn't answered yet.";
    case KeyBinding::Taken:
      return u"Another program has this key.";
    case KeyBinding::Refused:
      return u"The desktop has refused this key.";
    case KeyBinding::NoSuchKey:
      return u"The keyboard has no such key.";
    case KeyBinding::Impossible:
      return u"This desktop gives programs no such keys.";
    case KeyBinding::Unreadable:
      return u"There is no key of this name.";
  }
  return {};
}

}  // namespace

ShowKey::ShowKey(MainWindow& window, Norvane& settings, Platform& platform)
    : window_(window), settings_(settings), windows_(platform.windows), key_(platform.globalKey) {
  Dispatcher& dispatcher = window_.form.GetDispatcher();
  pressed_ = key_.OnPressed([this, &dispatcher] { dispatcher.Dispatch([this] { Pressed(); }); });
  changed_ = key_.OnChanged(
      [this, &dispatcher](KeyBinding binding) { dispatcher.Dispatch([this, binding] { Become(binding); }); });
}

void ShowKey::Follow() {
  const bool works = binding_ == KeyBinding::Bound || binding_ == KeyBinding::Pending;
  // A desktop that asks the person isn't asked once more for the same.
  if (works && wanted_ == settings_.Read(setting::kShowKey)) return;
  Bind(true);
}

void ShowKey::Bind(bool told) {
  told_ = told;
  if (binding_ != KeyBinding::None) key_.Release();
  wanted_ = settings_.Read(setting::kShowKey);
  if (wanted_.empty()) {
    binding_ = KeyBinding::None;
    return;
  }
  const std::optional<KeyCombination> key = ParseCombination(wanted_);
  Become(key && !IsMissedEverywhere(*key) ? key_.Bind(*key) : KeyBinding::Unreadable);
}

void ShowKey::Become(KeyBinding binding) {
  binding_ = binding;
  if (binding == KeyBinding::Pending) return;
  const Text fault = Fault();
  if (Tracing()) Trace({"key: ", fault.empty() ? "bound" : ToUtf8(fault)});
  if (!std::exchange(told_, false) || fault.empty()) return;
  window_.MessageBox(Text(wanted_).append(u" doesn't open Quillbox. ").append(fault), BoxCode::Information,
                     u"Quillbox Key");
}

void ShowKey::End() {
  if (binding_ != KeyBinding::None) key_.Release();
  binding_ = KeyBinding::None;
}

Text ShowKey::Fault() const { return Text(FaultOf(binding_)); }

bool ShowKey::HasOpened() const { return window_.form.GetVisible() && window_.form.Shows() == shows_; }

void ShowKey::Pressed() {
  if (!window_.form.GetLoaded()) return;
  const bool inFront = window_.form.GetVisible() && windows_.IsForeground(window_.form);
  Trace({"key: pressed", inFront ? ", the window is in front" : ""});
  if (inFront) return window_.Minimize();
  window_.SSTab1.SetTab(static_cast<int>(Page::Clip));
  window_.form.Show();
  shows_ = window_.form.Shows();
  Raise(Open);
}

}  // namespace quillbox
