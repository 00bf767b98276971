// What a tick costs while nothing happens.
#include <cstdlib>
#include <cstring>

#include "parts/Allocations.h"
#include "parts/BenchProgram.h"
#include "platform/x11/clipboard/XClipboard.h"
#include "x11/PollEventLoop.h"

namespace quillbox::bench {
namespace {

constexpr std::size_t kLength = 32000;

void Memcmp(benchmark::State& state) {
  const Text a(kLength, u'x');
  const Text b = a;
  for (auto _ : state) {
    const char16_t* p = a.data();
    benchmark::DoNotOptimize(p);
    benchmark::DoNotOptimize(std::memcmp(p, b.data(), kLength * sizeof(char16_t)));
    benchmark::ClobberMemory();
  }
}
BENCHMARK(Memcmp);

void ClipTickUnchanged(benchmark::State& state) {
  BenchProgram program;
  program.Fill(1, kLength);
  // The entry's blink comes to its end.
  for (int i = 0; i < 6; ++i) program.program.window.poll.Timer1.Fire();
  const CountAllocations count(state);
  for (auto _ : state) program.program.window.poll.Timer1.Fire();
}
BENCHMARK(ClipTickUnchanged);

void ClockTickNothingRuns(benchmark::State& state) {
  BenchProgram program;
  program.program.window.Timer2.Fire();
  const CountAllocations count(state);
  for (auto _ : state) program.program.window.Timer2.Fire();
}
BENCHMARK(ClockTickNothingRuns);

// The X server's side of the poll: only with a display.
void XClipboardRead(benchmark::State& state) {
  if (!std::getenv("DISPLAY")) return state.SkipWithError("no display");
  test::PollEventLoop loop;
  XClipboard clipboard(loop);
  clipboard.Settle(1000);
  clipboard.Put(Text(kLength, u'x'));
  loop.RunFor(200);
  const int before = loop.Wakeups();
  {
    const CountAllocations count(state);
    for (auto _ : state) benchmark::DoNotOptimize(clipboard.Read().size());
  }
  // A request would have been answered by now.
  loop.RunFor(200);
  state.counters["answers"] = loop.Wakeups() - before;
}
BENCHMARK(XClipboardRead);

}  // namespace
}  // namespace quillbox::bench
