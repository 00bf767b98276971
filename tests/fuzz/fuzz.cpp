// Bytes as a stranger would send them, for whatever reads some: QUILLBOX_FUZZ=SUBJECT quillbox-fuzz [FOLDER].
// An input counts as a find if it brings the program down, throws what it shouldn't, or isn't read back as
// written.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <string_view>

#include "base/CodePage.h"
#include "base/NumberText.h"
#include "base/RuntimeError.h"
#include "base/Utf8.h"
#include "console/Console.h"
#include "console/Person.h"
#include "platform/linux/registry/DesktopEntry.h"
#include "platform/linux/registry/RegDocument.h"
#include "platform/linux/system/WaveFile.h"
#include "platform/ports/KeyNotation.h"
#include "platform/ports/TextTypes.h"
#include "storage/DataFileFormat.h"

using namespace quillbox;
using Bytes = std::string_view;

namespace {

void Must(bool holds) {
  if (!holds) std::abort();
}

// A RuntimeError is an answer.
template <class Read>
void MayFail(const Read& read) {
  try {
    read();
  } catch (const RuntimeError&) {
  }
}

void Encodings(Bytes in) {
  const Text text = FromLosslessUtf8(in);
  Must(FromBytes(ToBytes(text)) == text);
  Must(FromLosslessUtf8(ToLosslessUtf8(text)) == text);
  Must(FromUtf8(ToUtf8(FromUtf8(in))) == FromUtf8(in));
}

// What a clipboard's owner hands over: a type, a line end, its bytes.
void Selection(Bytes in) {
  const Bytes type = in.substr(0, in.find('\n'));
  const Bytes bytes = in.substr(std::min(type.size() + 1, in.size()));
  Must(TextTypeRank(type) < kTextTypeRanks);
  IsTextOrTalk(type);
  SaysSecret(bytes);
  for (const Bytes known :
       {type, Bytes("text/plain"), Bytes("UTF8_STRING"), Bytes("STRING"), Bytes("COMPOUND_TEXT")})
    DecodeText(known, bytes);
  Must(FromLatin1(ToLatin1(FromLatin1(bytes))) == FromLatin1(bytes));
  std::string whole = ToUtf8(FromUtf8(bytes));
  const std::string before = whole;
  DropHalfCharacter(whole);
  Must(whole == before);
}

void Numbers(Bytes in) {
  MayFail([&] {
    const Text written = MakeTextFromNumber(GetNumberFromText(FromBytes(in)));
    Must(MakeTextFromNumber(GetNumberFromText(written)) == written);
  });
  WholeNumber(FromBytes(in));
  RoundToDecimals(NumberOrInfinity(FromBytes(in)), 2);
}

void Keys(Bytes in) {
  MayFail([&] { Must(ParseKeys(FromLosslessUtf8(in)).size() <= kMaxKeyStrokes); });
}

void RegistryText(Bytes in) {
  const RegDocument before{std::string(in)};
  const regtext::Entry entry{u"Name", false, 1, std::string(in.substr(0, 40))};
  const auto with = before.WithEntry(u"HKEY_CURRENT_USER\\Key", entry);
  Must(with.has_value());
  const RegDocument after(*with);
  const auto* found = after.Find(FoldCase(u"HKEY_CURRENT_USER\\Key"), u"name");
  Must(found && !found->deleted && found->bytes == entry.bytes);
  const auto without = after.WithoutEntry(u"HKEY_CURRENT_USER\\Key", u"Name");
  Must(!without || !RegDocument(*without).Find(FoldCase(u"HKEY_CURRENT_USER\\Key"), u"name"));
}

void DesktopEntries(Bytes in) {
  desktopentry::IsHidden(in);
  desktopentry::ProgramOf(in);
  const Bytes path = in.substr(0, in.find_first_of(Bytes("\0\n\r", 3)));
  if (!path.empty()) Must(desktopentry::ProgramOf(desktopentry::Autostart(path)) == path);
}

void Waves(Bytes in) {
  static const std::string path = "/dev/shm/quillbox-fuzz." + std::to_string(std::random_device{}()) + ".wav";
  std::ofstream(path, std::ios::binary).write(in.data(), static_cast<std::streamsize>(in.size()));
  IsPlayableWave(FromUtf8(path));
  std::remove(path.c_str());
}

void DataFileLines(Bytes in) {
  MayFail([&] {
    LineReader lines(in);
    const MarkerLines markers(u"CLIP", TextView(lines.Next()).substr(0, 5));
    for (int entry = 1; entry < 100; ++entry) {
      Text text;
      lines.NextUntil([next = markers.Entry(entry)](const Text& line) { return line == next; }, text);
    }
  });
}

// Requests to the whole program, which answers any line.
void Console(Bytes in) {
  std::istringstream requests{std::string(in)};
  std::ostringstream answers;
  auto* const input = std::cin.rdbuf(requests.rdbuf());
  auto* const output = std::cout.rdbuf(answers.rdbuf());
  std::cin.clear();
  ServeConsole([](auto&, Dispatcher& dispatcher, auto&) { return std::make_unique<Person>(dispatcher); });
  std::cin.rdbuf(input);
  std::cout.rdbuf(output);
  const std::string all = answers.str();
  const auto lines = std::count(in.begin(), in.end(), '\n') + (!in.empty() && in.back() != '\n');
  Must(std::count(all.begin(), all.end(), '\n') == lines);
}

const std::map<Bytes, void (*)(Bytes)> kSubjects{
    {"encodings", Encodings},   {"numbers", Numbers},        {"keys", Keys},
    {"registry", RegistryText}, {"entries", DesktopEntries}, {"waves", Waves},
    {"files", DataFileLines},   {"selection", Selection},    {"console", Console}};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const char* const subject = std::getenv("QUILLBOX_FUZZ");
  static const auto found = kSubjects.find(subject ? subject : "");
  if (found == kSubjects.end()) {
    std::fputs("QUILLBOX_FUZZ names no subject\n", stderr);
    std::exit(2);
  }
  found->second(Bytes(reinterpret_cast<const char*>(data), size));
  return 0;
}
