#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <string>
#include <vector>

#include "platform/linux/registry/RegDocument.h"

namespace quillbox {
namespace {

// A file of many kinds of lines: six keys of six values, whose names say where they stand.
std::vector<std::string> Lines() {
  std::vector<std::string> lines = {"REGEDIT4\r\n", "\r\n"};
  const std::string text = "\"a \\\"text\\\" \xFC\\\\\"";
  const std::string values[] = {
      text, "hex(1):61,62,\\\r\n  63,64", text, "dword:0000002a", text, "\"two\r\nlines\""};
  for (const char key : {'0', '1', '2', '3', '4', '5'}) {
    lines.push_back(std::string("[HKEY_CURRENT_USER\\Software\\Key") + key + "]\r\n");
    for (char value = '0'; value < '6'; ++value) {
      lines.push_back(std::string("\"K") + key + "V" + value + "\"=" + values[value - '0'] + "\r\n");
    }
    lines.insert(lines.end(), {"; a comment\r\n", "\r\n"});
  }
  return lines;
}

std::string Damaged(std::string line, std::mt19937& random) {
  static constexpr char kBytes[] = "\"\\\n\r[]=@;-,:()x \0\xFFhex";
  const std::size_t at = random() % line.size();
  const char byte = kBytes[random() % (sizeof kBytes - 1)];
  switch (random() % 5) {
    case 0:
      return line.insert(at, 1, byte);
    case 1:
      return line.erase(at, 1 + random() % 3);
    case 2:
      line[at] = byte;
      return line;
    case 3:
      return line.substr(0, at);
    default:
      return line + line;
  }
}

// A value that the lines hold, asked for in small letters.
struct Place {
  Text path = u"hkey_current_user\\software\\key";
  Text name = u"k";
};

using Entry = RegDocument::Entry;

bool Same(const Entry* a, const Entry* b) {
  if (a == nullptr || b == nullptr) return a == b;
  return a->type == b->type && a->bytes == b->bytes && a->deleted == b->deleted;
}

TEST(RegDocument, AChangeOfADamagedFileChangesNothingElse) {
  std::mt19937 random(815);
  const std::vector<std::string> lines = Lines();
  std::vector<Place> places(36);
  for (std::size_t i = 0; i < places.size(); ++i) {
    places[i].path += Decimal(i / 6);
    places[i].name += Decimal(i / 6) + u"v" + Decimal(i % 6);
  }
  for (int round = 0; round < 2000; ++round) {
    std::string text;
    for (const std::string& line : lines) text += random() % 8 == 0 ? Damaged(line, random) : line;
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
    for (const Place& place : places) {
      const bool own = &place == &changed;
      const Entry* const wanted = !own ? before.Find(place.path, place.name) : removed ? nullptr : &entry;
      ASSERT_TRUE(Same(after.Find(place.path, place.name), wanted)) << text << "\n====\n" << *result;
    }
  }
}

}  // namespace
}  // namespace quillbox
