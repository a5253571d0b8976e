// Demo books for measurements: made once in a folder and kept for the next run.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "bench/goals.h"
#include "host/store/books.h"
#include "host/store/demo.h"

namespace tolvex::bench {

inline std::unique_ptr<store::Session> openOrMake(const std::string& file, int operations) {
  if (!std::filesystem::exists(file)) {
    store::createBooks(file + ".part", {});
    {
      const auto db = store::Database::open(file + ".part", {});
      const double start = wallSeconds();
      store::generateDemo(*db, operations);
      if (operations > 0)
        note("making demo books, operations a second", operations / (wallSeconds() - start), "");
    }
    std::filesystem::rename(file + ".part", file);
  }
  return store::openBooks(file, "admin", "");
}

inline std::string booksOf(const std::string& folder, int operations) {
  return folder + "/bench_" + std::to_string(operations) + ".tolvex";
}

}  // namespace tolvex::bench
