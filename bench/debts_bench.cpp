// Open items of large books: one client's, an account's, those to be covered; in books of a million
// operations against books that hold little or nothing else.
//   debts_bench [--quick] [--folder FOLDER]
// Books are made in the folder (default: here) and kept; --quick takes a twentieth of their size.
#include <cmath>
#include <string>
#include <vector>

#include "bench/demo_books.h"
#include "bench/measure.h"
#include "framework/recordset.h"
#include "framework/references.h"
#include "host/store/guid.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

constexpr double kSecondsEach = 0.4;
// An account of receivables that the generated operations leave alone.
constexpr const char* kAccount = "259";
constexpr int kInvoices = 5000, kOfClient = 8;

RowSetPtr answered(Session& session, const char* routine, const std::string& parameters) {
  const HostResult result = session.call("O0201500", routine, parameters);
  if (result.Code != kDone) throw BooksError(result.Text);
  return result.Data.AsRows();
}

// A routine called in two books; both must answer with as many rows.
struct Compared {
  double few = 0, many = 0;  // seconds
  double ratio() const { return many / few; }
};

Compared compare(const char* routine, Session& few, const std::string& inFew, Session& many,
                 const std::string& inMany) {
  const auto rows = answered(few, routine, inFew)->RecordCount();
  if (answered(many, routine, inMany)->RecordCount() != rows)
    throw BooksError(std::string(routine) + ": the books differ");
  const auto seconds = bench::alternate(
      {[&] { answered(few, routine, inFew); }, [&] { answered(many, routine, inMany); }},
      kSecondsEach);
  return {seconds[0], seconds[1]};
}

int accountId(Database& db, const char* code) {
  return static_cast<int>(
      *integerFrom(db, "SELECT id FROM account WHERE plan = 0 AND code = $1", code));
}

// A buyer with just so many open invoices.
std::string buyer(Session& session) {
  auto select = bound(session.db(),
                      "SELECT r.foidr FROM open_item i JOIN dimset_ref r ON r.dimset_id ="
                      " i.dimset_id WHERE i.account_id = $1 AND i.is_open = 1"
                      " GROUP BY r.foidr HAVING COUNT(*) = $2 ORDER BY 1 LIMIT 1",
                      accountId(session.db(), "240"), kOfClient);
  if (!select->step()) throw BooksError("no buyer owes as many invoices as are wanted");
  return std::string(select->text(0));
}

void addInvoice(Session& session, int number) {
  const HostResult made = session.create("O0201500", "O0201500");
  RowSet& record = *made.Data.AsRows();
  record["DateD"] = Variant(DateTime::FromDayNumber(20040101 + number % 28));
  record["BROperGroupID"] = 4.0;
  record["Number"] = "B-" + std::to_string(number);
  record["Comment"] = "Prekės";
  RowSet& BR = *record["BR"].Rows();
  BR.AddNew();
  BR["GUID"] = newGuid();
  BR["DateD"] = record["DateD"].Value();
  BR["SumA"] = 100.0 + number;
  BR["AccountD"] = kAccount;
  BR["AccountC"] = "500";
  RowSet& refs = *BR["BRProperties"].Rows();
  refs.AddNew();
  refs["Sign"] = 1.0;
  refs["FOIDR"] = refOf("O0000100", 1001 + number % 700);
  refs["ShowString"] = "Pirkėjas " + std::to_string(number % 700);
  const SaveOutcome saved = session.save("O0201500", "O0201500", record, nullptr, nullptr);
  if (saved.Code != kDone) throw BooksError(saved.Text);
}

// The invoices of the account that is measured; those of an earlier run are counted.
void fillAccount(Session& session) {
  const auto there = integerFrom(
      session.db(), "SELECT COUNT(*) FROM open_item WHERE account_id = $1 AND is_open = 1",
      accountId(session.db(), kAccount));
  for (int number = static_cast<int>(there.value_or(0)); number < kInvoices; ++number)
    addInvoice(session, number);
}

void oneClient(Session& few, Session& many) {
  const std::string inFew = buyer(few), inMany = buyer(many);
  const auto asked = [](const char* date, const std::string& client) {
    return "'0','240','" + std::string(date) + "','" + client + "',1";
  };
  const Compared today =
      compare("GetDebts1", few, asked("9999.12.31", inFew), many, asked("9999.12.31", inMany));
  bench::note("open invoices of one client of a million operations", today.many * 1e3, "ms");
  bench::report("open invoices of one client: large books against small ones", today.ratio(), 3,
                "x", false);
}

// In the large books a client has some hundred payments, and as many items were open at a date.
void oneClientBefore(Session& few, Session& many) {
  const auto asked = [](const std::string& client) {
    return "'0','240','2004.06.30','" + client + "',1";
  };
  const std::string inFew = buyer(few), inMany = buyer(many);
  const auto rows = answered(many, "GetDebts1", asked(inMany))->RecordCount();
  const auto seconds = bench::alternate({[&] { answered(few, "GetDebts1", asked(inFew)); },
                                         [&] { answered(many, "GetDebts1", asked(inMany)); }},
                                        kSecondsEach);
  bench::note("the same client half a year before the end", seconds[1] * 1e3, "ms");
  bench::note("  rows", static_cast<double>(rows), "");
  bench::note("  in small books", seconds[0] * 1e3, "ms");
}

void oneAccount(Session& few, Session& many) {
  const auto fullList = [&](const char* date) {
    const std::string asked = "'0','" + std::string(kAccount) + "','" + date + "','',1";
    return compare("GetDebts3", few, asked, many, asked);
  };
  const Compared list = fullList("9999.12.31"), before = fullList("2004.01.14");
  bench::note("5000 open items of an account", list.many * 1e3, "ms");
  bench::note("the same account at an earlier date", before.many * 1e3, "ms");
  bench::report("5000 open items of an account: large books against empty ones", list.ratio(), 2,
                "x", false);
  bench::report("open items at an earlier date: large books against empty ones", before.ratio(), 2,
                "x", false);
  const std::string firms = "'" + std::string(kAccount) + "',1,'',0,'O0000100','9999.12.31'";
  const Compared covers = compare("GetCoverFirms", few, firms, many, firms);
  bench::note("firms of 5000 open items", covers.many * 1e3, "ms");
  bench::report("firms of 5000 open items: large books against empty ones", covers.ratio(), 2, "x",
                false);
}

// The generated payments leave a difference with a pointer for each document at another rate; the
// other way of revaluing was never used, so that there is nothing to be found.
void differences(Session& few, Session& many) {
  const std::string asked = "'240','9999.12.31','636',0";
  const Compared none = compare("GetCheckInfluenceType", few, asked, many, asked);
  bench::report("differences of the way not used: large books against small ones", none.ratio(), 2,
                "x", false);
}

void everything(Session& many) {
  const auto timed = [&](const char* what, const char* routine, const std::string& parameters) {
    std::int64_t rows = 0;
    const double seconds =
        bench::secondsOf([&] { rows = answered(many, routine, parameters)->RecordCount(); });
    bench::note(what, seconds * 1e3, "ms");
    bench::note("  its rows", static_cast<double>(rows), "");
  };
  timed("all receivables of the large books", "GetDebts3", "'0','240','9999.12.31','',1");
  timed("the same a month before the end", "GetDebts3", "'0','240','2004.11.30','',1");
  timed("whom to cover among all", "GetCoverFirms", "'240',1,'450',-1,'O0000100','9999.12.31'");
}

int benchmarks(bool quick, const std::string& folder) {
  const int operations = quick ? 50000 : 1000000, kFew = 7000;  // about 10 000 entries
  std::printf("open items, books of %d and %d operations\n", kFew, operations);
  const auto small = bench::openOrMake(bench::booksOf(folder, kFew), kFew);
  const auto large = bench::openOrMake(bench::booksOf(folder, operations), operations);
  const auto empty = bench::openOrMake(folder + "/bench_debts.tolvex", 1);
  fillAccount(*empty);
  fillAccount(*large);
  oneClient(*small, *large);
  oneClientBefore(*small, *large);
  oneAccount(*empty, *large);
  differences(*small, *large);
  everything(*large);
  return bench::missed == 0 ? 0 : 1;
}

}  // namespace
}  // namespace tolvex::store

int main(int count, char** arguments) {
  return tolvex::bench::measured(count, arguments, tolvex::store::benchmarks);
}
