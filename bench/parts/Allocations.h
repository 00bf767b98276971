#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>

namespace quillbox::bench {

// How often this process has asked for memory so far.
std::uint64_t Allocations();

// Reports the allocations of one iteration as the counter `allocations`.
class CountAllocations {
 public:
  explicit CountAllocations(benchmark::State& state) : state_(state), before_(Allocations()) {}
  ~CountAllocations() {
    state_.counters["allocations"] =
        benchmark::Counter(static_cast<double>(Allocations() - before_), benchmark::Counter::kAvgIterations);
  }
  CountAllocations(const CountAllocations&) = delete;
  CountAllocations& operator=(const CountAllocations&) = delete;

 private:
  benchmark::State& state_;
  std::uint64_t before_;
};

}  // namespace quillbox::bench
