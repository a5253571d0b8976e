// Advances to employees and what they cover; sums booked for future months and their covers.
#include <algorithm>
#include <map>
#include <tuple>

#include "framework/references.h"
#include "framework/text.h"
#include "host/store/answer.h"
#include "host/store/debt_details.h"
#include "host/store/debts.h"
#include "host/store/lookups.h"
#include "host/store/routine_table.h"

namespace tolvex::store {
namespace {

constexpr ColumnSpec kAdvances[] = {
    col::text("OIDR", 30),        col::text("FOIDR", 30),     col::date("DateD"),
    col::text("Number", 500),     col::text("Comment", 1000), col::text("GUID", 40),
    col::text("AccountD", 20),    col::text("AccountC", 20),  col::number("FullSum"),
    col::number("FullSumCurr"),   col::number("RestSum"),     col::number("RestSumCurr"),
    col::number("DebtSum"),       col::number("DebtSumCurr"), col::number("DebtCurrRate"),
    col::text("DebtCurrCode", 3), col::number("CoveredSum"),  col::integer("InfluenceSign"),
    col::integer("SortOrder"),    col::text("OType", 8)};

Variant GetAdvanceOverExpenses(Session& session, const Arguments& arguments, std::string_view) {
  Answer answer(kAdvances);
  DebtQuery query;
  query.addressee = AddresseeFilter(arguments[0].str());
  if (query.addressee.asks() != AddresseeFilter::Asks::One)
    throw Refusal(kWrongParameters, "GetAdvanceOverExpenses: '" + arguments[0].str() + "'");
  if (!arguments[1].str().empty()) {
    const auto account = accountByCode(session.db(), arguments[1].str());
    if (!account) return answer.done();
    query.account = account->id;
    query.tracked = account->tracked;
  }
  if (arguments[2].day() != 0) query.day = arguments[2].day();
  DimsetRefs sets(session.db());
  DebtDetails details(session.db(), sets);
  int order = 0;
  for (const DebtLine& line : details.of(openItems(session.db(), query, sets), query.addressee)) {
    const ItemRow& row = line.debt.row;
    answer.row()
        .text(operReference(line.debt.itemId))
        .text(line.documentReference)
        .day(line.day)
        .text(line.number)
        .text(line.comment)
        .text(line.guid)
        .text(line.accountD)
        .text(line.accountC)
        .lt(row.side() * row.fullLt)
        .cur(row.side() * row.fullCur)
        .lt(line.debt.restLt())
        .cur(line.debt.restCur())
        .lt(line.debt.restLt())
        .cur(line.debt.restCur())
        .number(line.rate)
        .text(blankForBase(row.cur))
        .number(0)
        .integer(-row.side())
        .integer(++order)
        .text(line.otype);
  }
  return answer.done();
}

constexpr ColumnSpec kAdvance[] = {col::text("OIDR", 30), col::number("RestSum"),
                                   col::number("RestSumCurr"), col::text("CurrCode", 3)};

// Confirms that an advance still stands: a row for each currency while the operation has a posting
// on the account, also when nothing is left of it; what was spent beyond it is below zero.
Variant GetAdvanceRests(Session& session, const Arguments& arguments, std::string_view) {
  Answer answer(kAdvance);
  const std::string& given = arguments[0].str();
  const auto id = arguments[0].id();
  if (!id) throw Refusal(kWrongParameters, "CheckAdvance: '" + given + "'");
  const int oper = isRef(given) ? operIdOf(given) : *id;
  const auto account = accountByCode(session.db(), arguments[1].str());
  if (!account) return answer.done();
  std::map<std::string, std::pair<std::int64_t, std::int64_t>> rests;
  auto booked = session.db().prepare(
      "SELECT p.cur FROM entry e JOIN posting p ON p.entry_id = e.id"
      " WHERE e.oper_id = $1 AND p.account_id = $2");
  booked->bind(1, oper).bind(2, account->id);
  while (booked->step()) rests[std::string(booked->text(0))];
  if (rests.empty()) return answer.done();
  for (const Debt& debt : itemsOf(session.db(), *account, oper)) {
    const ItemRow& row = debt.row;
    if (!row.open()) continue;
    rests[row.cur].first += row.ownSide() * row.restLt;
    rests[row.cur].second += row.ownSide() * row.restCur;
  }
  for (const auto& [currency, rest] : rests)
    answer.row()
        .text(operReference(oper))
        .lt(rest.first)
        .cur(rest.second)
        .text(blankForBase(currency));
  return answer.done();
}

constexpr ColumnSpec kCovers[] = {
    col::text("OIDR", 30),        col::date("DateD"),         col::text("Nr", 500),
    col::text("BRGUID", 40),      col::number("SumA"),        col::text("BRComment", 1000),
    col::text("RelatedOIDR", 30), col::text("RelatedBROper"), col::date("BRDate"),
    col::number("BRSumA"),        col::text("AccountD", 20),  col::text("AccountC", 20)};

struct Source {  // an entry whose sum is to be spread over months
  int oper = 0, day = 0, entry = 0;
  std::int64_t sum = 0;
  std::string number, guid, info;
};

struct Cover {
  int oper = 0, day = 0;
  std::int64_t sum = 0;
  std::string name, accountD, accountC;
};

std::vector<Source> sourcesOf(Database& db, const Arguments& arguments, int account, int sign) {
  auto select = db.prepare(
      "SELECT p.oper_id, p.day, p.entry_id, p.sum_lt, o.number, e.guid, e.info"
      " FROM posting p JOIN entry e ON e.id = p.entry_id JOIN oper o ON o.id = p.oper_id"
      " WHERE p.account_id = $1 AND p.sign = $2 AND p.day BETWEEN $3 AND $4"
      " ORDER BY p.day, p.oper_id, p.entry_id");
  select->bind(1, account).bind(2, sign);
  select->bind(3, arguments[0].day()).bind(4, arguments[1].day());
  return readAll<Source>(*select, [](Statement& row) {
    return Source{row.whole(0),
                  row.whole(1),
                  row.whole(2),
                  row.integer(3),
                  std::string(row.text(4)),
                  std::string(row.text(5)),
                  std::string(row.text(6))};
  });
}

// Entries that take the account's sum off again, on its other side, and name the operation by a
// pointer on either of theirs.
std::vector<Cover> coversOf(Database& db, int oper, int account, int sign) {
  auto select = db.prepare(
      "SELECT o.id, e.day, e.sum_lt, o.day, o.number, ad.code, ac.code FROM (SELECT DISTINCT"
      " entry_id FROM entry_ref WHERE points_to = $1) r JOIN posting p ON p.entry_id = r.entry_id"
      " AND p.account_id = $2 AND p.sign = $3 JOIN entry e ON e.id = r.entry_id"
      " JOIN oper o ON o.id = e.oper_id"
      " JOIN posting d ON d.entry_id = e.id AND d.sign = 1 JOIN account ad ON ad.id = d.account_id"
      " JOIN posting c ON c.entry_id = e.id AND c.sign = -1 JOIN account ac ON ac.id = c.account_id"
      " ORDER BY e.day, e.id");
  select->bind(1, oper).bind(2, account).bind(3, -sign);
  return readAll<Cover>(*select, [](Statement& row) {
    return Cover{row.whole(0),
                 row.whole(1),
                 row.integer(2),
                 shownOperation(row.integer(3), row.text(4)),
                 std::string(row.text(5)),
                 std::string(row.text(6))};
  });
}

// What the operation has on that side in all, within the period and outside it.
std::int64_t sumOf(Database& db, int oper, int account, int sign) {
  auto select = db.prepare(
      "SELECT SUM(p.sum_lt) FROM entry e JOIN posting p ON p.entry_id = e.id"
      " WHERE e.oper_id = $1 AND p.account_id = $2 AND p.sign = $3");
  select->bind(1, oper).bind(2, account).bind(3, sign);
  return select->step() ? select->integer(0) : 0;
}

void addSource(Answer& answer, const Source& source, const Cover* cover) {
  answer.row()
      .text(operReference(source.oper))
      .day(source.day)
      .text(source.number)
      .text(source.guid)
      .lt(source.sum)
      .text(source.info);
  if (!cover) {
    answer.null().null().null().null().null().null();
    return;
  }
  answer.text(operReference(cover->oper))
      .text(cover->name)
      .day(cover->day)
      .lt(cover->sum)
      .text(cover->accountD)
      .text(cover->accountC);
}

Variant GetCoversInFuture(Session& session, const Arguments& arguments, std::string_view) {
  Answer answer(kCovers);
  const auto account = accountByCode(session.db(), arguments[2].str());
  if (!account) return answer.done();
  const int sign = arguments[3].integer() < 0 ? -1 : 1;
  std::vector<Source> sources = sourcesOf(session.db(), arguments, account->id, sign);
  struct Spread {
    int firstDay = 0;
    std::int64_t rest = 0;
    std::vector<Cover> covers;
  };
  std::map<int, Spread> byOper;
  for (const Source& source : sources) {
    const auto [place, fresh] = byOper.try_emplace(source.oper);
    Spread& spread = place->second;
    if (fresh) {
      spread.firstDay = source.day;
      spread.covers = coversOf(session.db(), source.oper, account->id, sign);
      spread.rest = sumOf(session.db(), source.oper, account->id, sign);
      for (const Cover& cover : spread.covers) spread.rest -= cover.sum;
    }
  }
  // The rows of an operation stay together, also when its entries have several dates.
  std::stable_sort(sources.begin(), sources.end(), [&](const Source& a, const Source& b) {
    return std::make_tuple(byOper[a.oper].firstDay, a.oper, a.entry) <
           std::make_tuple(byOper[b.oper].firstDay, b.oper, b.entry);
  });
  for (const Source& source : sources) {
    const Spread& spread = byOper[source.oper];
    if (arguments[4].integer() != 0 && spread.rest <= 0) continue;
    for (const Cover& cover : spread.covers) addSource(answer, source, &cover);
    if (spread.covers.empty()) addSource(answer, source, nullptr);
  }
  return answer.done();
}

constexpr Routine kRoutines[] = {
    {"O0201500", "GetAdvanceOverExpenses", "tTD", false, GetAdvanceOverExpenses},
    {"O0201500", "CheckAdvance", "rt", false, GetAdvanceRests},
    {"O0201500", "GetCoversInFuture", "ddtii", false, GetCoversInFuture},
};

}  // namespace

std::span<const Routine> advanceRoutines() { return kRoutines; }

}  // namespace tolvex::store
