// The trial balance of large books against a plain GROUP BY over their postings, and against that
// of books a tenth as large:
//   balance_bench [--quick] [--folder FOLDER]
// Books are made in the folder (default: here) and kept; --quick takes a twentieth of their size.
#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "bench/demo_books.h"
#include "framework/recordset.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

using bench::wallSeconds;

// Ends of years and months, days within months, one after the last. The first day of the books is
// left to the check of equal figures: a GROUP BY of one day reads next to nothing.
constexpr const char* kFirstDate = "2002.01.01";
constexpr const char* kDates[] = {"2002.08.15", "2003.06.30", "2003.12.31", "2004.02.29",
                                  "2004.07.14", "2004.11.30", "2004.12.17", "2009.12.31"};

template <class Work>
double medianSeconds(int rounds, const Work& work) {
  std::vector<double> seconds;
  for (int i = 0; i < rounds; ++i) {
    const double start = wallSeconds();
    work();
    seconds.push_back(wallSeconds() - start);
  }
  std::nth_element(seconds.begin(), seconds.begin() + rounds / 2, seconds.end());
  return seconds[static_cast<std::size_t>(rounds / 2)];
}

using Rests = std::map<std::string, std::int64_t>;

Rests byRoutine(Session& session, const std::string& date) {
  const HostResult result = session.call("O0201500", "GetAccountsTotal", "'" + date + "',''");
  if (result.Code != kDone) throw BooksError(result.Text);
  RowSet& rows = *result.Data.AsRows();
  Rests rests;
  ForEachRow(rows, [&](RowSet& row) {
    const double sum = row["SumA"].Number();
    rests[std::string(row["Account"].Text())] =
        static_cast<std::int64_t>(sum * 100 + (sum < 0 ? -0.5 : 0.5)) *
        (row["AccType"].Text() == "K" ? -1 : 1);
  });
  return rests;
}

Rests byGroup(Session& session, const std::string& date) {
  auto select = bound(session.db(),
                      "SELECT a.code, s.rest FROM (SELECT account_id, SUM(sign * sum_lt) AS rest"
                      " FROM posting WHERE day <= $1 GROUP BY account_id) s"
                      " JOIN account a ON a.id = s.account_id",
                      DateTime::Parse(date)->DayNumber());
  Rests rests;
  while (select->step()) rests[std::string(select->text(0))] = select->integer(1);
  return rests;
}

int benchmarks(bool quick, const std::string& folder) {
  const int many = quick ? 50000 : 1000000, few = many / 10;
  std::printf("trial balance, books of %d and %d operations\n", many, few);
  const auto small = bench::openOrMake(bench::booksOf(folder, few), few);
  const auto large = bench::openOrMake(bench::booksOf(folder, many), many);
  if (byRoutine(*large, kFirstDate) != byGroup(*large, kFirstDate))
    throw BooksError("the balances differ on the first day");
  double least = 1e9, most = 0;
  for (const char* date : kDates) {
    if (byRoutine(*large, date) != byGroup(*large, date))
      throw BooksError(std::string("the balances differ at ") + date);
    const double routine = medianSeconds(15, [&] { byRoutine(*large, date); });
    const double plain = medianSeconds(3, [&] { byGroup(*large, date); });
    const double before = medianSeconds(15, [&] { byRoutine(*small, date); });
    bench::note((std::string("trial balance at ") + date).c_str(), routine * 1e3, "ms");
    bench::note("  by a plain GROUP BY", plain * 1e3, "ms");
    least = std::min(least, plain / routine);
    most = std::max(most, routine / before);
  }
  bench::report("trial balance against a GROUP BY up to its date, the worst date", least, 20, "x",
                true);
  bench::report("trial balance against books a tenth as large, the worst date", most, 3, "x",
                false);
  return bench::missed == 0 ? 0 : 1;
}

}  // namespace
}  // namespace tolvex::store

int main(int count, char** arguments) {
  return tolvex::bench::measured(count, arguments, tolvex::store::benchmarks);
}
