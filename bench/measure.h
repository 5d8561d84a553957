#pragma once

#include <algorithm>
#include <chrono>
#include <functional>
#include <vector>

namespace bench {

/// Seconds that each of several works takes, as medians over `rounds` rounds in
/// which every work runs once: what disturbs the machine disturbs them alike.
inline std::vector<double> medians(int rounds, const std::vector<std::function<void()>>& works) {
  using Clock = std::chrono::steady_clock;
  std::vector<std::vector<double>> seconds(works.size());
  for (int round = 0; round < rounds; ++round) {
    for (std::size_t i = 0; i < works.size(); ++i) {
      const Clock::time_point start = Clock::now();
      works[i]();
      seconds[i].push_back(std::chrono::duration<double>(Clock::now() - start).count());
    }
  }
  std::vector<double> result;
  for (std::vector<double>& times : seconds) {
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    result.push_back(*middle);
  }
  return result;
}

}  // namespace bench
