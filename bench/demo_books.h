// Demo books for measurements: made once in a folder and kept for the next run.
#pragma once

#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "bench/goals.h"
#include "host/store/books.h"

namespace tolvex::bench {

inline std::unique_ptr<store::Session> openOrMake(const std::string& file, int operations) {
  if (!std::filesystem::exists(file)) {
    const double start = wallSeconds();
    store::NewBooks what;
    what.operations = operations;
    store::createBooks(file, what);
    if (operations > 0)
      note("making demo books, operations a second", operations / (wallSeconds() - start), "");
  }
  return store::openBooks(file, "admin", "");
}

// The main of a program that measures: `--quick`, `--folder` where its books are kept.
inline int measured(int count, char** arguments,
                    const std::function<int(bool quick, const std::string& folder)>& benchmarks) {
  bool quick = false;
  std::string folder = ".";
  for (int i = 1; i < count; ++i) {
    if (std::strcmp(arguments[i], "--quick") == 0) quick = true;
    if (std::strcmp(arguments[i], "--folder") == 0 && i + 1 < count) folder = arguments[++i];
  }
  try {
    return benchmarks(quick, folder);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 2;
  }
}

inline std::string booksOf(const std::string& folder, int operations) {
  return folder + "/bench_" + std::to_string(operations) + ".tolvex";
}

}  // namespace tolvex::bench
