// What a change costs from the tick to the file, and what reading costs, beside the bare work on the disk.
#include "parts/Beside.h"

namespace quillbox::bench {
namespace {

constexpr int kRounds = 100;

void Lists(benchmark::internal::Benchmark* bench) {
  bench->Args({50, 100})->Args({100, 32000})->UseManualTime()->Iterations(kRounds);
}

void BareWriteOf(const BenchProgram& program, const char* name, Beside& beside) {
  const std::string bytes = BareRead(program.File(name));
  const std::string path = program.File("bare");
  beside.Bare([&] { BareWrite(path, bytes); });
  BareSync(path);
}

void ClipChange(benchmark::State& state) {
  const int rows = static_cast<int>(state.range(0));
  const auto length = static_cast<std::size_t>(state.range(1));
  BenchProgram program(rows - 1);
  program.Fill(rows, length);
  Beside beside(state);
  for (auto _ : state) {
    program.Copy(program.NewText(length));
    program.AwaitDisk();
    beside.Ours([&] { program.Tick(); });
    program.AwaitDisk();
    BareWriteOf(program, "ClipData.qbx", beside);
  }
}
BENCHMARK(ClipChange)->Apply(Lists);

void ReadClipFile(benchmark::State& state) {
  const int rows = static_cast<int>(state.range(0));
  BenchProgram program(rows - 1);
  program.Fill(rows, static_cast<std::size_t>(state.range(1)));
  const Text path = program.program.files.UserFile(u"ClipData.qbx");
  Beside beside(state);
  for (auto _ : state) {
    program.program.clip.RemoveAll();
    beside.Ours([&] { program.program.reader.ReadClipFile(path); });
    if (program.program.clip.List2.GetListCount() != rows) state.SkipWithError("rows are missing");
    beside.Bare([&] { benchmark::DoNotOptimize(BareRead(program.File("ClipData.qbx")).data()); });
  }
}
BENCHMARK(ReadClipFile)->Apply(Lists);

// A disk that takes five seconds for each sync: the longest of five changes.
void ClipChangeOnSlowDisk(benchmark::State& state) {
  BenchProgram program;
  program.Fill(10, 100);
  program.calls->syncSeconds = 5;
  double longest = 0;
  for (auto _ : state) {
    for (int change = 0; change < 5; ++change) {
      program.Copy(program.NewText(100));
      longest = std::max(longest, Seconds([&] { program.Tick(); }));
    }
    state.SetIterationTime(longest);
  }
  state.counters["longest_us"] = longest * 1e6;
}
BENCHMARK(ClipChangeOnSlowDisk)->UseManualTime()->Iterations(1);

void SaveTasks(benchmark::State& state) {
  BenchProgram program;
  for (int task = 0; task < 100; ++task) program.program.toDo.List3.AddItem(program.NewText(40));
  Beside beside(state);
  for (auto _ : state) {
    beside.Ours([&] { program.program.files.AktualisiereCle3(); });
    program.AwaitDisk();
    BareWriteOf(program, "ToDoData.qbx", beside);
  }
}
BENCHMARK(SaveTasks)->UseManualTime()->Iterations(kRounds);

}  // namespace
}  // namespace quillbox::bench
