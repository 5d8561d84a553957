#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <functional>
#include <vector>

namespace bench {

/// What is timed, and what is done before it each time.
struct Work {
  std::function<void()> run;
  std::function<void()> prepare = [] {};
};

/// Which seconds are counted.
enum class Clock : std::uint8_t {
  processor,  ///< that this thread had a processor: others on the machine do not count
  wall,       ///< that went by: for what runs on several threads
};

inline double seconds_now(Clock clock) {
  std::timespec time{};
  clock_gettime(clock == Clock::processor ? CLOCK_THREAD_CPUTIME_ID : CLOCK_MONOTONIC, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

inline double median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

/// Seconds that each of several works takes, as medians over `rounds` rounds in
/// which every work runs once: what disturbs the machine disturbs them alike.
inline std::vector<double> medians(int rounds, const std::vector<Work>& works,
                                   Clock clock = Clock::processor) {
  std::vector<std::vector<double>> seconds(works.size());
  for (int round = 0; round < rounds; ++round) {
    for (std::size_t i = 0; i < works.size(); ++i) {
      works[i].prepare();
      const double start = seconds_now(clock);
      works[i].run();
      seconds[i].push_back(seconds_now(clock) - start);
    }
  }
  std::vector<double> result;
  for (const std::vector<double>& times : seconds) result.push_back(median(times));
  return result;
}

}  // namespace bench
