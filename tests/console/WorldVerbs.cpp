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
  const auto part = [](TextView text, std::size_t begin, std::size_t length) {
    const auto number = ReadNumber<unsigned>(text.substr(begin, length));
    if (!number) throw ConsoleError("bad date or time");
    return static_cast<int>(*number);
  };
  return {part(date, 0, 4), part(date, 5, 2), part(date, 8, 2),
          part(time, 0, 2), part(time, 3, 2), part(time, 6, 2)};
}

void AddSystem(VerbTable& table, Session& session) {
  MemoryWorld& world = session.world;
  MemorySystem& system = world.system;
  table.Add("folder", 1, [&](In in, Out) {
    Text folder = in[0];
    while (folder.size() > 1 && folder.back() == u'/') folder.pop_back();
    if (folder.empty()) throw ConsoleError("no folder");
    system.folder = folder;
  });
  table.Add("user", 0, 1,
            [&](In in, Out) { system.user = in[0] == u"-" ? std::nullopt : std::optional(in[0]); });
  table.Add("platform", 1, [&](In in, Out) { system.version.platformId = in.Int(0); });
  table.Add("separator", 1, [&](In in, Out) {
    if (in[0].size() != 1) throw ConsoleError("not one character");
    system.separator = in[0].front();
  });
  table.Add("version", 3, 4, [&](In in, Out) {
    const VersionRecord version{in.Int(0), in.Int(1), in.Int(2), system.version.platformId, in[3]};
    system.version = version;
  });
  table.Add("instance", 1, [&](In in, Out) { system.anotherInstance = in.Flag(0); });
  table.Add("screen", 2, [&](In in, Out) {
    const auto side = [&](std::size_t i) { return static_cast<int>(in.Number(i, 1, kLargestScreen)); };
    world.windows.screen = {side(0), side(1)};
  });
  table.Add("clock", 1, 2, [&](In in, Out) {
    // Both in one argument, with a blank between.
    const bool both = in.Count() == 1 && in[0].size() > 11 && in[0][10] == u' ';
    const LocalTime time = both ? ReadTime(in[0].substr(0, 10), in[0].substr(11)) : ReadTime(in[0], in[1]);
    if (!world.clock.Set(time)) throw ConsoleError("no such time");
  });
  table.Add("advance", 1, [&](In in, Out) { world.timers.Advance(in.Number(0, 0, kLongestAdvance)); });
}

// What other programs do with the clipboard.
void AddClipboard(VerbTable& table, MemoryClipboard& clipboard) {
  table.Add("clip.set", 0, 1, [&](In in, Out) { clipboard.OtherSets(in[0]); });
  table.Add("clip.clear", 0, [&](In, Out) { clipboard.OtherClears(); });
  table.Add("clip.picture", 0, [&](In, Out) { clipboard.OtherClears(); });
  table.Add("clip.secret", 0, [&](In, Out) { clipboard.OtherSetsSecret(); });
  table.Add("clip.lock", 1, [&](In in, Out) { clipboard.OtherLocks(in.Flag(0)); });
  table.Add("clip.get", 0, [&](In, Out out) { out.Add(clipboard.Content()); });
  table.Add("clip.writes", 0, [&](In, Out out) { out.Add(clipboard.OwnWrites()); });
}

// The key that is asked for, and what the desktop makes of it.
void AddGlobalKey(VerbTable& table, MemoryGlobalKey& key) {
  table.Add("globalkey", 0, [&](In, Out out) { out.Add(key.Asked()); });
  table.Add("globalkey.answer", 1, [&](In in, Out) {
    static const std::map<Text, KeyBinding> kAnswers{
        {u"bound", KeyBinding::Bound},     {u"pending", KeyBinding::Pending},
        {u"taken", KeyBinding::Taken},     {u"refused", KeyBinding::Refused},
        {u"nokey", KeyBinding::NoSuchKey}, {u"impossible", KeyBinding::Impossible}};
    const auto answer = kAnswers.find(in[0]);
    if (answer == kAnswers.end()) throw ConsoleError("no such answer");
    key.Answer(answer->second);
  });
}

Hive HiveOf(In in) {
  if (in[0] == u"HKCU") return Hive::CurrentUser;
  if (in[0] == u"HKLM") return Hive::LocalMachine;
  throw ConsoleError("no such hive");
}

std::string BytesOfHex(TextView hex) {
  if (hex.size() % 2 != 0) throw ConsoleError("half a byte");
  std::string bytes;
  for (; !hex.empty(); hex.remove_prefix(2)) {
    const auto byte = ReadNumber<unsigned char>(hex.substr(0, 2), 16);
    if (!byte) throw ConsoleError("not a hexadecimal digit");
    bytes += static_cast<char>(*byte);
  }
  return bytes;
}

void AddRegistry(VerbTable& table, MemoryRegistry& store) {
  table.Add("reg.set", 3, 4, [&](In in, Out) {
    store.Store(HiveOf(in), in[1], in[2], {registry::kString, ToBytes(in[3])});
  });
  table.Add("reg.bytes", 4, 5, [&](In in, Out) {
    const auto type = static_cast<std::uint32_t>(in.Number(3, 0, 0xFFFFFFFFLL));
    store.Store(HiveOf(in), in[1], in[2], {type, BytesOfHex(in[4])});
  });
  table.Add("reg.get", 2, 3, [&](In in, Out out) {
    const auto value = store.Find(HiveOf(in), in[1], in[2]);
    out.Add(value.has_value());
    if (value) out.Add(FromBytes(value->bytes));
  });
  table.Add("reg.delete", 2, 3, [&](In in, Out) { store.Remove(HiveOf(in), in[1], in[2]); });
  table.Add("reg.deny", 2, [&](In in, Out) {
    const bool denied = in.Flag(1);
    store.Deny(HiveOf(in), denied);
  });
}

}  // namespace

void AddWorldVerbs(VerbTable& table, Session& session) {
  AddSystem(table, session);
  AddClipboard(table, session.world.clipboard);
  AddGlobalKey(table, session.world.globalKey);
  AddRegistry(table, session.world.registry);
  table.Add("start", 0, [&](In, Out) { session.Start(); });
  table.Add("running", 0, [&](In, Out out) { out.Add(session.Running()); });
  table.Add("end", 0, [&](In, Out out) {
    QuillboxProgram& program = session.Started();
    const Event<>& end = program.tray->menu.mnuBase.Find("mnuEnd")->Click;
    if (session.Running()) program.dispatcher.Dispatch([&] { end(); });
    out.Add(session.Running());
  });
  table.Add("shutdown", 0, [&](In, Out out) {
    QuillboxProgram& program = session.Started();
    if (session.Running())
      program.dispatcher.Dispatch([&] { program.tray->form.Close(CloseReason::System); });
    out.Add(session.Running());
  });
  table.Add("closebox", 1, [&](In in, Out out) {
    Form& form = session.LoadedForm(in.Name(0));
    if (session.Running()) session.Alive().person->CloseBox(form);
    out.Add(session.Running());
  });
}

}  // namespace quillbox
