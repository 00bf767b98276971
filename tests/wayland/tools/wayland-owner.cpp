// Owns the clipboard of a Wayland session until another does: wayland-owner
// TYPE TEXT [TYPE TEXT...]
#include <unistd.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "platform/wayland/clipboard/DataDevice.h"
#include "x11/PollEventLoop.h"

int main(int count, char** arguments) {
  using namespace quillbox;
  constexpr int kPatience = 60000;  // milliseconds
  std::map<std::string, std::string, std::less<>> texts;
  std::vector<std::string> types;
  for (int i = 1; i + 1 < count; i += 2) {
    types.emplace_back(arguments[i]);
    texts[arguments[i]] = arguments[i + 1];
  }
  test::PollEventLoop loop;
  WaylandConnection connection(loop, nullptr);
  if (!loop.RunUntil([&] { return connection.GlobalsKnown(); }, kPatience)) return 1;
  DataDevice device(connection, {.selection = [](const auto&) {}, .finished = [] {}});
  bool cancelled = false;
  const auto send = [&](std::string_view type, int fd) {
    const std::string& text = texts.find(type)->second;
    if (write(fd, text.data(), text.size()) < 0) std::perror("wayland-owner");
    close(fd);
  };
  const auto source = device.MakeSource(types, {.send = send, .cancelled = [&] { cancelled = true; }});
  device.SetSelection(source.get());
  connection.Flush();
  return loop.RunUntil([&] { return cancelled; }, kPatience) ? 0 : 1;
}
