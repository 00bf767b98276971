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
  std::vector<std::string> types;
  std::map<std::string, std::string, std::less<>> texts;
  for (int i = 1; i + 1 < count; i += 2) texts[types.emplace_back(arguments[i])] = arguments[i + 1];
  test::PollEventLoop loop;
  WaylandConnection connection(loop, nullptr);
  while (!connection.GlobalsKnown()) loop.Turn();
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
  while (!cancelled) loop.Turn();
}
