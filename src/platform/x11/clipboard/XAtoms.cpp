#include "platform/x11/clipboard/XAtoms.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

#include "platform/ports/TextTypes.h"
#include "platform/x11/server/XServer.h"

namespace quillbox {

namespace {

// Each spelling is an atom of its own.
constexpr std::string_view kPlainTexts[] = {
    "text/plain",
    "text/plain;charset=UTF-8",
    "text/plain;charset=us-ascii",
    "text/plain;charset=US-ASCII",
    "text/plain;charset=ANSI_X3.4-1968",
    "text/plain;charset=iso-8859-1",
    "text/plain;charset=ISO-8859-1",
    "text/plain;charset=utf-16",
    "text/plain;charset=unicode",
};

}  // namespace

void XAtoms::Intern(xcb_connection_t* connection) {
  const std::pair<xcb_atom_t*, std::string_view> own[] = {
      {&clipboard, "CLIPBOARD"},
      {&clipboardManager, "CLIPBOARD_MANAGER"},
      {&windowManager, "WM_S0"},
      {&activeWindow, "_NET_ACTIVE_WINDOW"},
      {&targets, "TARGETS"},
      {&timestamp, "TIMESTAMP"},
      {&multiple, "MULTIPLE"},
      {&atomPair, "ATOM_PAIR"},
      {&saveTargets, "SAVE_TARGETS"},
      {&incr, "INCR"},
      {&null, "NULL"},
      {&utf8String, "UTF8_STRING"},
      {&plainUtf8, "text/plain;charset=utf-8"},
      {&text, "TEXT"},
      {&passwordHint, kSecretHintType},
      {&forTargets, "QUILLBOX_TARGETS"},
      {&forHint, "QUILLBOX_HINT"},
      {&forUtf8, "QUILLBOX_UTF8"},
      {&forPlain, "QUILLBOX_PLAIN"},
      {&forLatin1, "QUILLBOX_LATIN1"},
      {&forTime, "QUILLBOX_TIME"},
      {&forSaving, "QUILLBOX_SAVE"},
  };
  std::vector<std::string_view> names;
  for (const auto& [atom, name] : own) names.push_back(name);
  names.insert(names.end(), HarmlessTypes().begin(), HarmlessTypes().end());
  names.insert(names.end(), std::begin(kPlainTexts), std::end(kPlainTexts));

  const std::vector<xcb_atom_t> atoms = AtomsOf(connection, names);
  auto next = atoms.begin();
  for (const auto& [atom, name] : own) *atom = *next++;
  harmless_ = {XCB_ATOM_STRING, utf8String, plainUtf8, text};
  harmless_.insert(harmless_.end(), next, atoms.end());
}

bool XAtoms::IsTextOrProtocol(xcb_atom_t target) const {
  return std::find(harmless_.begin(), harmless_.end(), target) != harmless_.end();
}

}  // namespace quillbox
