#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "platform/linux/registry/RegDocument.h"

namespace quillbox {
namespace {

// A file of many kinds of lines.
std::vector<std::string> Lines() {
  std::vector<std::string> lines = {"REGEDIT4\r\n", "\r\n"};
  for (int key = 0; key < 6; ++key) {
    lines.push_back("[HKEY_CURRENT_USER\\Software\\Key" + std::to_string(key) + "]\r\n");
    for (int value = 0; value < 6; ++value) {
      const std::string name = "\"K" + std::to_string(key) + "V" + std::to_string(value) + "\"=";
      switch (value) {
        case 1:
          lines.push_back(name + "hex(1):61,62,\\\r\n  63,64\r\n");
          break;
        case 3:
          lines.push_back(name + "dword:0000002a\r\n");
          break;
        case 5:
          lines.push_back(name + "\"two\r\nlines\"\r\n");
          break;
        default:
          lines.push_back(name + "\"a \\\"text\\\" \xFC\\\\\"\r\n");
          break;
      }
    }
    lines.emplace_back("; a comment\r\n");
    lines.emplace_back("\r\n");
  }
  return lines;
}

std::string Mutated(std::string line, std::mt19937& random) {
  const auto at = [&] { return static_cast<std::size_t>(random() % (line.size() + 1)); };
  static constexpr char kBytes[] = "\"\\\n\r[]=@;-,:()x \0\xFFhex";
  const auto byte = [&] { return kBytes[random() % (sizeof kBytes - 1)]; };
  switch (random() % 5) {
    case 0:
      return line.insert(at(), 1, byte());
    case 1:
      line.erase(std::min(at(), line.size() - 1), 1 + random() % 3);
      return line;
    case 2:
      line[std::min(at(), line.size() - 1)] = byte();
      return line;
    case 3:
      return line.substr(0, at());
    default:
      return line + line;
  }
}

// A value that the lines hold, asked for in small letters.
struct Place {
  Place(int key, int value)
      : path(u"hkey_current_user\\software\\key" + Decimal(key)),
        name(u"k" + Decimal(key) + u"v" + Decimal(value)) {}
  Text path;
  Text name;
};

std::vector<Place> Places() {
  std::vector<Place> places;
  for (int key = 0; key < 6; ++key) {
    for (int value = 0; value < 6; ++value) places.emplace_back(key, value);
  }
  return places;
}

using Entry = RegDocument::Entry;

bool Same(const Entry* a, const Entry* b) {
  if (a == nullptr || b == nullptr) return a == b;
  return a->type == b->type && a->bytes == b->bytes && a->deleted == b->deleted;
}

TEST(RegDocument, AChangeOfADamagedFileChangesNothingElse) {
  std::mt19937 random(815);
  const std::vector<std::string> lines = Lines();
  const std::vector<Place> places = Places();
  for (int round = 0; round < 3000; ++round) {
    std::string text;
    for (const std::string& line : lines) text += random() % 8 == 0 ? Mutated(line, random) : line;
    if (random() % 4 == 0) text.resize(random() % text.size());
    const RegDocument before(text);
    const Place& changed = places[random() % places.size()];
    const bool removed = round % 3 == 0;
    const Entry entry{changed.name, false, round % 2 == 0 ? 1U : 3U,
                      "new \"value\"\n" + std::to_string(round)};
    const std::optional<std::string> result =
        removed ? before.WithoutEntry(changed.path, changed.name) : before.WithEntry(changed.path, entry);
    ASSERT_TRUE(result);
    const RegDocument after(*result);
    ASSERT_TRUE(Same(after.Find(changed.path, changed.name), removed ? nullptr : &entry))
        << text << "\n====\n"
        << *result;
    for (const Place& place : places) {
      if (place.path == changed.path && place.name == changed.name) continue;
      ASSERT_TRUE(Same(after.Find(place.path, place.name), before.Find(place.path, place.name)))
          << text << "\n====\n"
          << *result;
    }
  }
}

}  // namespace
}  // namespace quillbox
