#include "host/store/balances.h"

#include "framework/date_time.h"
#include "framework/references.h"
#include "host/store/sql_values.h"

namespace tolvex::store {
namespace {

int lastDayOfMonth(int month) {  // yyyymm -> yyyymmdd
  const int next = month % 100 == 12 ? month + 89 : month + 1;
  if (next > 999912) return kNoLimit;
  return DateTime::FromDayNumber(next * 100 + 1).AddDays(-1).DayNumber();
}

void append(std::vector<PeriodRange>& ranges, int from, int to) {
  if (from <= to) ranges.push_back({from, to});
}

// Whole months, joined to whole years where they make one.
void appendMonths(std::vector<PeriodRange>& ranges, int from, int to) {
  if (from > to) return;
  const int firstYear = from % 100 == 1 ? from / 100 : from / 100 + 1;
  const int lastYear = to % 100 == 12 ? to / 100 : to / 100 - 1;
  if (firstYear > lastYear) return append(ranges, from, to);
  append(ranges, from, (firstYear - 1) * 100 + 12);
  append(ranges, firstYear, lastYear);
  append(ranges, (lastYear + 1) * 100 + 1, to);
}

constexpr std::string_view kSumsOfPosting =
    ", CASE WHEN t.sign = 1 THEN t.sum_lt ELSE 0 END AS debit"
    ", CASE WHEN t.sign = 1 THEN 0 ELSE t.sum_lt END AS credit"
    ", CASE WHEN t.sign = 1 THEN t.sum_cur ELSE 0 END AS debit_cur"
    ", CASE WHEN t.sign = 1 THEN 0 ELSE t.sum_cur END AS credit_cur";

// One select for the rows of one range. The sets of one addressee and the accounts lead, so that an
// engine seeks each one's few rows and never walks a whole table.
std::string selectOf(const PeriodRange& range, const BalanceQuery& query, SqlValues& values) {
  const AddresseeFilter::Asks asks = query.addressee.asks();
  const bool everybody = asks == AddresseeFilter::Asks::Everybody;
  const bool postings = range.days() && !everybody;
  std::string sql = "SELECT t.account_id, t.cur";
  sql += postings ? kSumsOfPosting : ", t.debit, t.credit, t.debit_cur, t.credit_cur";
  sql += asks == AddresseeFilter::Asks::One ? " FROM dimset_ref r CROSS JOIN account a"
                                            : " FROM account a";
  sql += postings    ? " CROSS JOIN posting t"
         : everybody ? " CROSS JOIN turn_acc t"
                     : " CROSS JOIN turn_dim t";
  sql += " WHERE t.account_id = a.id";
  if (asks == AddresseeFilter::Asks::One)
    sql += " AND t.dimset_id = r.dimset_id AND r.foidr = " + values.mark(query.addressee.text());
  if (asks == AddresseeFilter::Asks::Kind)
    sql += " AND EXISTS (SELECT 1 FROM dimset_ref r WHERE r.dimset_id = t.dimset_id AND r.kind = " +
           values.mark(query.addressee.text()) + ")";
  if (postings) sql += " AND t.dimset_id <> 0";  // so that the index of sets may be used
  if (query.account) sql += " AND a.id = " + values.mark(*query.account);
  for (const int left : query.without) sql += " AND t.corr_id <> " + values.mark(left);
  sql += (postings ? " AND t.day BETWEEN " : " AND t.period BETWEEN ") + values.mark(range.from);
  return sql + " AND " + values.mark(range.to);
}

}  // namespace

AddresseeFilter::AddresseeFilter(std::string_view text) : text_(text) {
  if (text.size() == kKindLength) asks_ = Asks::Kind;
  if (text.size() > kKindLength) asks_ = Asks::One;
}

bool AddresseeFilter::matches(std::string_view reference) const {
  if (asks_ == Asks::Everybody) return true;
  return asks_ == Asks::One ? reference == text_ : kindOf(reference) == text_;
}

std::vector<PeriodRange> periodRanges(int from, int to) {
  std::vector<PeriodRange> ranges;
  if (from > to) return ranges;
  const bool wholeHead = from % 100 == 1;
  const bool wholeTail = to == lastDayOfMonth(to / 100);
  const int firstMonth = wholeHead                ? from / 100
                         : from / 100 % 100 == 12 ? from / 100 + 89
                                                  : from / 100 + 1;
  const int lastMonth = wholeTail ? to / 100 : to / 100 % 100 == 1 ? to / 100 - 89 : to / 100 - 1;
  if (from / 100 == to / 100 && !(wholeHead && wholeTail)) {
    append(ranges, from, to);
    return ranges;
  }
  if (!wholeHead) append(ranges, from, lastDayOfMonth(from / 100));
  appendMonths(ranges, firstMonth, lastMonth);
  if (!wholeTail) append(ranges, to / 100 * 100 + 1, to);
  return ranges;
}

std::vector<Turnover> turnovers(Database& db, const BalanceQuery& query) {
  const std::vector<PeriodRange> ranges = periodRanges(query.from, query.to);
  std::vector<Turnover> found;
  if (ranges.empty()) return found;
  std::string parts;
  SqlValues values;
  for (const PeriodRange& range : ranges)
    parts += (parts.empty() ? "" : " UNION ALL ") + selectOf(range, query, values);
  auto statement = db.prepare(
      "SELECT account_id, cur, SUM(debit), SUM(credit), SUM(debit_cur), SUM(credit_cur) FROM (" +
      parts + ") x GROUP BY account_id, cur ORDER BY account_id, cur");
  values.bindTo(*statement);
  while (statement->step())
    found.push_back({statement->whole(0), std::string(statement->text(1)), statement->integer(2),
                     statement->integer(3), statement->integer(4), statement->integer(5)});
  return found;
}

}  // namespace tolvex::store
