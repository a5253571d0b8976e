// How a benchmark tells what it measured: one line a goal, and whether it was reached.
#pragma once

#include <cstdio>
#include <ctime>

namespace tolvex::bench {

inline int missed = 0;

// `higherIsBetter`: the measured value must be at least the limit, else at most.
inline void report(const char* goal, double measured, double limit, const char* unit,
                   bool higherIsBetter) {
  const bool ok = higherIsBetter ? measured >= limit : measured <= limit;
  if (!ok) ++missed;
  std::printf("%-66s %10.3f %s %g %-4s %s\n", goal, measured, higherIsBetter ? ">=" : "<=", limit,
              unit, ok ? "ok" : "MISSED");
  std::fflush(stdout);
}

// Something worth knowing beside the goals.
inline void note(const char* what, double value, const char* unit) {
  std::printf("  %-64s %10.3f %s\n", what, value, unit);
  std::fflush(stdout);
}

inline double wallSeconds() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

inline double cpuSeconds() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

}  // namespace tolvex::bench
