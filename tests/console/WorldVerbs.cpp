#include "base/CodePage.h"
#include "console/Verbs.h"

namespace quillbox {

namespace {

// Longer times than that are asked for in several requests.
constexpr long long kLongestAdvance = 31LL * 24 * 60 * 60 * 1000;
constexpr int kLargestScreen = 100'000;  // pixels a side

LocalTime ReadTime(TextView date, TextView time) {
  if (date.size() != 10 || date[4] != u'-' || date[7] != u'-') throw ConsoleError("bad date");
  if (time.size() != 8 || time[2] != u':' || time[5] != u':') throw ConsoleError("bad time");
  const auto part = [](TextView text) {
    const auto number = ReadNumber<unsigned>(text);
    return static_cast<int>(number ? *number : throw ConsoleError("bad date or time"));
  };
  return {part(date.substr(0, 4)), part(date.substr(5, 2)), part(date.substr(8)),
          part(time.substr(0, 2)), part(time.substr(3, 2)), part(time.substr(6))};
}

void AddSystem(VerbTable& table, MemoryWorld& world) {
  MemorySystem& system = world.system;
  table.Add("folder", [&](Text folder) {
    while (folder.size() > 1 && folder.back() == u'/') folder.pop_back();
    if (folder.empty()) throw ConsoleError("no folder");
    system.folder = folder;
  });
  table.Add("user",
            [&](const Last& name) { system.user = name == u"-" ? std::nullopt : std::optional<Text>(name); });
  table.Add("platform", [&](int id) { system.version.platformId = id; });
  table.Add("separator", [&](const Text& separator) {
    if (separator.size() != 1) throw ConsoleError("not one character");
    system.separator = separator.front();
  });
  table.Add("version", [&](int major, int minor, int build, const Last& servicePack) {
    system.version = {major, minor, build, system.version.platformId, servicePack};
  });
  table.Add("instance", [&](bool another) { system.anotherInstance = another; });
  table.Add("screen", [&](Argument width, Argument height) {
    const auto side = [](Argument of) { return static_cast<int>(of.Number(1, kLargestScreen)); };
    world.windows.screen = {side(width), side(height)};
  });
  table.Add("clock", [&](const Text& date, const Rest<1>& time) {
    // Both in one argument, with a blank between.
    const bool both = time.empty() && date.size() > 11 && date[10] == u' ';
    const LocalTime now = both ? ReadTime(date.substr(0, 10), date.substr(11))
                               : ReadTime(date, time.empty() ? TextView() : time[0].text);
    if (!world.clock.Set(now)) throw ConsoleError("no such time");
  });
  table.Add("advance", [&](Argument time) { world.timers.Advance(time.Number(0, kLongestAdvance)); });
}

// What other programs do with the clipboard and with the key that opens the window.
void AddDesktop(VerbTable& table, MemoryClipboard& clipboard, MemoryGlobalKey& key) {
  table.Add("clip.set", [&](const Last& text) { clipboard.OtherSets(text); });
  table.Add("clip.clear", [&] { clipboard.OtherClears(); });
  table.Add("clip.picture", [&] { clipboard.OtherClears(); });
  table.Add("clip.secret", [&] { clipboard.OtherSetsSecret(); });
  table.Add("clip.lock", [&](bool locked) { clipboard.locked = locked; });
  table.Add("clip.get", [&] { return clipboard.Content(); });
  table.Add("clip.writes", [&] { return clipboard.ownWrites; });
  // The key that is asked for, and what the desktop makes of it.
  table.Add("globalkey", [&] { return key.Asked(); });
  table.Add("globalkey.answer", [&](const Text& name) {
    static const std::map<Text, KeyBinding> kAnswers{
        {u"bound", KeyBinding::Bound},     {u"pending", KeyBinding::Pending},
        {u"taken", KeyBinding::Taken},     {u"refused", KeyBinding::Refused},
        {u"nokey", KeyBinding::NoSuchKey}, {u"impossible", KeyBinding::Impossible}};
    const auto answer = kAnswers.find(name);
    if (answer == kAnswers.end()) throw ConsoleError("no such answer");
    key.Answer(answer->second);
  });
}

Hive HiveOf(const Text& name) {
  return name == u"HKCU"   ? Hive::CurrentUser
         : name == u"HKLM" ? Hive::LocalMachine
                           : throw ConsoleError("no such hive");
}

std::string BytesOfHex(TextView hex) {
  if (hex.size() % 2 != 0) throw ConsoleError("half a byte");
  std::string bytes;
  for (; !hex.empty(); hex.remove_prefix(2)) {
    const auto byte = ReadNumber<unsigned char>(hex.substr(0, 2), 16);
    bytes += static_cast<char>(byte ? *byte : throw ConsoleError("not a hexadecimal digit"));
  }
  return bytes;
}

void AddRegistry(VerbTable& table, MemoryRegistry& store) {
  table.Add("reg.set", [&](const Text& hive, const Text& key, const Text& name, const Last& text) {
    store.Store(HiveOf(hive), key, name, {registry::kString, ToBytes(text)});
  });
  table.Add("reg.bytes",
            [&](const Text& hive, const Text& key, const Text& name, Argument type, const Last& hex) {
              const MemoryRegistry::Value value{static_cast<std::uint32_t>(type.Number(0, 0xFFFFFFFFLL)),
                                                BytesOfHex(hex)};
              store.Store(HiveOf(hive), key, name, value);
            });
  table.Add("reg.get", [&](const Text& hive, const Text& key, const Last& name) {
    const MemoryRegistry::Value* const value = store.Find(HiveOf(hive), key, name);
    return value ? std::vector<Text>{u"1", FromBytes(value->bytes)} : std::vector<Text>{u"0"};
  });
  table.Add("reg.delete", [&](const Text& hive, const Text& key, const Last& name) {
    store.Remove(HiveOf(hive), key, name);
  });
  table.Add("reg.deny", [&](const Text& name, bool denied) {
    const Hive hive = HiveOf(name);
    store.denied.erase(hive);
    if (denied) store.denied.insert(hive);
  });
}

}  // namespace

void AddWorldVerbs(VerbTable& table, Session& session) {
  AddSystem(table, session.world);
  AddDesktop(table, session.world.clipboard, session.world.globalKey);
  AddRegistry(table, session.world.registry);
  table.Add("start", [&] { session.Start(); });
  table.Add("running", [&] { return session.Running(); });
  table.Add("end", [&] {
    QuillboxProgram& program = session.Started();
    const Event<>& end = program.tray->menu.mnuBase.Find("mnuEnd")->Click;
    if (session.Running()) program.dispatcher.Dispatch([&] { end(); });
    return session.Running();
  });
  table.Add("shutdown", [&] {
    QuillboxProgram& program = session.Started();
    if (session.Running())
      program.dispatcher.Dispatch([&] { program.tray->form.Close(CloseReason::System); });
    return session.Running();
  });
  table.Add("closebox", [&](Form& form) {
    if (session.Running()) session.Alive().person->CloseBox(form);
    return session.Running();
  });
}

}  // namespace quillbox
