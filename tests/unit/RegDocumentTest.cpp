#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <string>

#include "platform/linux/registry/RegDocument.h"

namespace quillbox {
namespace {

using Entry = RegDocument::Entry;

// Six keys of six values of all kinds, whose names say where they stand.
std::string Whole() {
  const std::string text = "\"a \\\"text\\\" \xFC\\\\\"";
  const std::string values[] = {
      text, "hex(1):61,62,\\\r\n  63,64", text, "dword:0000002a", text, "\"two\r\nlines\""};
  std::string whole = "REGEDIT4\r\n\r\n";
  for (int key = 0; key < 6; ++key) {
    whole += "[HKEY_CURRENT_USER\\Software\\Key" + std::to_string(key) + "]\r\n";
    for (int value = 0; value < 6; ++value)
      whole += "\"K" + std::to_string(key) + "V" + std::to_string(value) + "\"=" + values[value] + "\r\n";
    whole += "; a comment\r\n\r\n";
  }
  return whole;
}

// Takes a few bytes away, or the rest of a line, and puts a byte there that may mean something, or the same
// again.
void Damage(std::string& text, std::mt19937& random) {
  static const std::string kBytes("\"\\\n\r[]=@;-,:()x \0\xFFhex", 22);
  const std::size_t at = random() % text.size();
  const std::string put = random() % 5 == 0 ? text.substr(at, random() % 60)
                                            : kBytes.substr(random() % kBytes.size(), random() % 2);
  text.replace(at, random() % 5 == 0 ? text.find('\n', at) - at : random() % 4, put);
}

std::string Shown(const Entry* entry) {
  if (entry == nullptr) return "none";
  return std::to_string(entry->type) + (entry->deleted ? " deleted" : ":" + entry->bytes);
}

// A value of the file, by its number, as it is asked for.
Text PathOf(std::size_t value) { return u"hkey_current_user\\software\\key" + Decimal(value / 6); }
Text NameOf(std::size_t value) { return u"k" + Decimal(value / 6) + u"v" + Decimal(value % 6); }

TEST(RegDocument, AChangeOfADamagedFileChangesNothingElse) {
  std::mt19937 random(815);
  const std::string whole = Whole();
  for (int round = 0; round < 2000; ++round) {
    std::string text = whole;
    for (std::size_t count = random() % 12; count > 0; --count) Damage(text, random);
    if (random() % 4 == 0) text.resize(random() % text.size());
    const RegDocument before(text);
    const std::size_t changed = random() % 36;
    const bool removed = round % 3 == 0;
    const Entry entry{NameOf(changed), false, round % 2 == 0 ? 1U : 3U, "\"new\"\n" + std::to_string(round)};
    const std::optional<std::string> result = removed ? before.WithoutEntry(PathOf(changed), NameOf(changed))
                                                      : before.WithEntry(PathOf(changed), entry);
    ASSERT_TRUE(result);
    const RegDocument after(*result);
    for (std::size_t i = 0; i < 36; ++i) {
      const Entry* const own = removed ? nullptr : &entry;
      const Entry* const wanted = i == changed ? own : before.Find(PathOf(i), NameOf(i));
      ASSERT_EQ(Shown(after.Find(PathOf(i), NameOf(i))), Shown(wanted)) << text << "\n====\n" << *result;
    }
  }
}

}  // namespace
}  // namespace quillbox
