// What a change costs from the tick to the file, and what reading costs, beside the bare work on the disk.
#include "parts/Allocations.h"
#include "parts/BenchProgram.h"

namespace quillbox::bench {
namespace {

void Lists(benchmark::internal::Benchmark* bench) {
  bench->Args({50, 100})->Args({100, 32000})->UseManualTime();
}

void ClipChange(benchmark::State& state) {
  const int rows = static_cast<int>(state.range(0));
  BenchProgram program(rows - 1);
  program.Fill(rows, static_cast<std::size_t>(state.range(1)));
  for (auto _ : state) {
    program.Copy(program.NewText(static_cast<std::size_t>(state.range(1))));
    state.SetIterationTime(Seconds([&] { program.Tick(); }));
  }
}
BENCHMARK(ClipChange)->Apply(Lists);

void BareWriteOfClipFile(benchmark::State& state) {
  const int rows = static_cast<int>(state.range(0));
  BenchProgram program(rows - 1);
  program.Fill(rows, static_cast<std::size_t>(state.range(1)));
  const std::string path = program.File("ClipData.qbx");
  const std::string bytes = BareRead(path);
  for (auto _ : state) state.SetIterationTime(Seconds([&] { BareWrite(path, bytes); }));
}
BENCHMARK(BareWriteOfClipFile)->Apply(Lists);

void ReadClipFile(benchmark::State& state) {
  const int rows = static_cast<int>(state.range(0));
  BenchProgram program(rows - 1);
  program.Fill(rows, static_cast<std::size_t>(state.range(1)));
  const Text path = program.program.files.UserFile(u"ClipData.qbx");
  for (auto _ : state) {
    program.program.clip.RemoveAll();
    state.SetIterationTime(Seconds([&] { program.program.files.ReadClipFile(path); }));
    if (program.program.clip.List2.GetListCount() != rows) state.SkipWithError("rows are missing");
  }
}
BENCHMARK(ReadClipFile)->Apply(Lists);

void BareReadOfClipFile(benchmark::State& state) {
  const int rows = static_cast<int>(state.range(0));
  BenchProgram program(rows - 1);
  program.Fill(rows, static_cast<std::size_t>(state.range(1)));
  const std::string path = program.File("ClipData.qbx");
  for (auto _ : state) {
    state.SetIterationTime(Seconds([&] { benchmark::DoNotOptimize(BareRead(path).data()); }));
  }
}
BENCHMARK(BareReadOfClipFile)->Apply(Lists);

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
}
BENCHMARK(ClipChangeOnSlowDisk)->UseManualTime()->Iterations(1);

void SaveTasks(benchmark::State& state) {
  BenchProgram program;
  for (int task = 0; task < 100; ++task) program.program.toDo.List3.AddItem(program.NewText(40));
  for (auto _ : state) program.program.files.AktualisiereCle3();
}
BENCHMARK(SaveTasks);

void BareWriteOfTasks(benchmark::State& state) {
  BenchProgram program;
  for (int task = 0; task < 100; ++task) program.program.toDo.List3.AddItem(program.NewText(40));
  program.program.files.AktualisiereCle3();
  const std::string path = program.File("ToDoData.qbx");
  const std::string bytes = BareRead(path);
  for (auto _ : state) BareWrite(path, bytes);
}
BENCHMARK(BareWriteOfTasks);

}  // namespace
}  // namespace quillbox::bench
