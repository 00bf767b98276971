#include "base/CodePage.h"
#include "console/ConsoleError.h"
#include "console/Verbs.h"

namespace quillbox {

namespace {

Hive HiveOf(const Arguments& arguments) {
  if (arguments[0] == u"HKCU") return Hive::CurrentUser;
  if (arguments[0] == u"HKLM") return Hive::LocalMachine;
  throw ConsoleError("no such hive");
}

std::string BytesOfHex(TextView hex) {
  const auto digit = [](char16_t unit) {
    if (unit >= u'0' && unit <= u'9') return unit - u'0';
    if (unit >= u'a' && unit <= u'f') return unit - u'a' + 10;
    if (unit >= u'A' && unit <= u'F') return unit - u'A' + 10;
    throw ConsoleError("not a hexadecimal digit");
  };
  if (hex.size() % 2 != 0) throw ConsoleError("half a byte");
  std::string bytes;
  for (std::size_t i = 0; i < hex.size(); i += 2) {
    bytes += static_cast<char>(digit(hex[i]) * 16 + digit(hex[i + 1]));
  }
  return bytes;
}

}  // namespace

void AddRegistryVerbs(VerbTable& table, Session& session) {
  MemoryRegistry& store = session.world.registry;
  table.Add("reg.set", 3, 4, [&](const Arguments& arguments, Answer&) {
    store.Store(HiveOf(arguments), arguments[1], arguments[2], {registry::kString, ToBytes(arguments[3])});
  });
  table.Add("reg.bytes", 4, 5, [&](const Arguments& arguments, Answer&) {
    const auto type = static_cast<std::uint32_t>(arguments.Number(3, 0, 0xFFFFFFFFLL));
    store.Store(HiveOf(arguments), arguments[1], arguments[2], {type, BytesOfHex(arguments[4])});
  });
  table.Add("reg.get", 2, 3, [&](const Arguments& arguments, Answer& answer) {
    const auto value = store.Find(HiveOf(arguments), arguments[1], arguments[2]);
    answer.Flag(value.has_value());
    if (value) answer.Add(FromBytes(value->bytes));
  });
  table.Add("reg.delete", 2, 3, [&](const Arguments& arguments, Answer&) {
    store.Remove(HiveOf(arguments), arguments[1], arguments[2]);
  });
  table.Add("reg.deny", 2, [&](const Arguments& arguments, Answer&) {
    const bool denied = arguments.Flag(1);
    store.Deny(HiveOf(arguments), denied);
  });
}

}  // namespace quillbox
