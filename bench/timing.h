// What the benchmarks measure with: the time of one piece of work, and medians of several times.
#pragma once

#include <algorithm>
#include <chrono>
#include <vector>

namespace bench {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

// The upper one of the two in the middle when their number is even; 0 of none.
inline double Median(std::vector<double> values) {
  std::ranges::sort(values);
  return values.empty() ? 0 : values[values.size() / 2];
}

template <class Work>
double SecondsOf(const Work& work) {
  const auto start = Clock::now();
  work();
  return Seconds(Clock::now() - start).count();
}

template <class Work>
double MedianSecondsOf(int times, const Work& work) {
  std::vector<double> spent;
  for (int i = 0; i < times; ++i)
    spent.push_back(SecondsOf(work));
  return Median(spent);
}

}  // namespace bench
