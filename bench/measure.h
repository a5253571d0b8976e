// Measuring two pieces of code against each other in one run.
#pragma once

#include <algorithm>
#include <ctime>
#include <functional>
#include <vector>

namespace tolvex::bench {

inline double threadSeconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

inline double secondsOf(const std::function<void()>& work) {
  const double start = threadSeconds();
  work();
  return threadSeconds() - start;
}

inline double median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

// The seconds of each side for one call, by thread time: both sides in turn, the median of all
// rounds. Short work is repeated within a round until it can be timed.
inline std::vector<double> alternate(const std::vector<std::function<void()>>& sides,
                                     double secondsEach) {
  constexpr double kShortest = 2e-4;
  constexpr int kFewestRounds = 5;
  std::vector<int> repeats;
  for (const auto& side : sides) {
    side();  // caches and indexes as in the middle of a day's work
    int count = 1;
    while (secondsOf([&] {
             for (int i = 0; i < count; ++i) side();
           }) < kShortest)
      count *= 2;
    repeats.push_back(count);
  }
  std::vector<std::vector<double>> times(sides.size());
  double spent = 0;
  for (int round = 0; round < kFewestRounds || spent < secondsEach * double(sides.size());
       ++round) {
    for (std::size_t s = 0; s < sides.size(); ++s) {
      const double seconds = secondsOf([&] {
        for (int i = 0; i < repeats[s]; ++i) sides[s]();
      });
      times[s].push_back(seconds / repeats[s]);
      spent += seconds;
    }
  }
  std::vector<double> middle;
  for (const auto& side : times) middle.push_back(median(side));
  return middle;
}

}  // namespace tolvex::bench
