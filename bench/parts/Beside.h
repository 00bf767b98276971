#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <vector>

#include "parts/BenchProgram.h"

namespace quillbox::bench {

// Two pieces of work in turn, so that both meet the same machine; the counters are the lower quartile
// of each in microseconds, which a busy machine moves least, and the ratio of the two. The iteration's time
// is that of the first.
class Beside {
 public:
  explicit Beside(benchmark::State& state) : state_(state) {}
  ~Beside() {
    const double ours = LowerQuartile(ours_);
    const double bare = LowerQuartile(bare_);
    state_.counters["ours_us"] = ours * 1e6;
    state_.counters["bare_us"] = bare * 1e6;
    state_.counters["ratio"] = ours / bare;
  }
  Beside(const Beside&) = delete;
  Beside& operator=(const Beside&) = delete;

  template <class Work>
  void Ours(Work&& work) {
    const double seconds = Seconds(work);
    state_.SetIterationTime(seconds);
    ours_.push_back(seconds);
  }
  template <class Work>
  void Bare(Work&& work) {
    bare_.push_back(Seconds(work));
  }

 private:
  static double LowerQuartile(std::vector<double> times) {
    if (times.empty()) return 0;
    const auto quartile = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 4);
    std::nth_element(times.begin(), quartile, times.end());
    return *quartile;
  }

  benchmark::State& state_;
  std::vector<double> ours_;
  std::vector<double> bare_;
};

}  // namespace quillbox::bench
