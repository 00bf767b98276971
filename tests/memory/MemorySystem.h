#pragma once

#include <map>

#include "platform/linux/files/PosixFiles.h"
#include "platform/ports/SystemInfo.h"
#include "platform/ports/TextFolding.h"

namespace quillbox {

// A system that says what it was told to.
class MemorySystem : public SystemInfo {
 public:
  MemorySystem() { version.platformId = 2; }

  std::optional<Text> LogonName() override { return user; }
  VersionRecord Version() override { return version; }
  Text ProgramFolder() override { return folder; }
  Text ProgramName() override { return u"quillbox"; }
  Text PathSeparator() override { return u"/"; }
  Text ProgramSuffix() override { return {}; }
  Text DataFolder() override { return folder; }
  Text TemplateFolder() override { return folder + u"/Templates"; }
  bool AnotherInstanceRuns() override { return anotherInstance; }
  char16_t DecimalSeparator() override { return separator; }
  long InstanceHandle() override { return 1; }
  long ThreadId() override { return 1; }

  std::optional<Text> user = u"user";  // nothing: the system can't tell
  Text folder;                         // no closing separator
  VersionRecord version;
  char16_t separator = u'.';
  bool anotherInstance = false;
};

// The files on disk, with a count of the writes that succeeded, by file name.
class CountingFiles : public PosixFiles {
 public:
  void WritePieces(const Text& path, const Content& content) override {
    PosixFiles::WritePieces(path, content);
    ++writes[path.substr(path.rfind(u'/') + 1)];
  }

  std::map<Text, int> writes;
};

// The letters of German and French, and the accents that can be set on any letter.
class MemoryTextFolding : public TextFolding {
 public:
  Text Fold(char32_t character) override {
    constexpr TextView kFrom = u"ÀÁÂÃÄÅÇÈÉÊËÌÍÎÏÒÓÔÕÖÙÚÛÜàáâãäåçèéêëìíîïòóôõöùúûü";
    constexpr TextView kTo = u"aaaaaaceeeeiiiiooooouuuuaaaaaaceeeeiiiiooooouuuu";
    if (character >= 0x300 && character < 0x370) return {};
    if (character >= U'A' && character <= U'Z') character += U'a' - U'A';
    if (character == U'ß') return u"ss";
    if (character >= 0x10000) return TextOf(character);
    const auto unit = static_cast<char16_t>(character);
    const std::size_t found = kFrom.find(unit);
    return Text(1, found == TextView::npos ? unit : kTo[found]);
  }
};

}  // namespace quillbox
