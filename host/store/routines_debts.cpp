// Debts: what stands open on an account, with whom, and who can be covered against whom.
#include <algorithm>
#include <map>
#include <set>

#include "framework/references.h"
#include "framework/text.h"
#include "host/store/answer.h"
#include "host/store/debt_details.h"
#include "host/store/debts.h"
#include "host/store/lookups.h"
#include "host/store/routine_table.h"

namespace tolvex::store {
namespace {

constexpr ColumnSpec kDebts[] = {col::text("OIDR", 30),         col::text("FOIDR", 30),
                                 col::text("OType", 8),         col::date("DateD"),
                                 col::text("Number", 500),      col::text("Comment", 1000),
                                 col::text("Info", 1000),       col::text("AccountD", 20),
                                 col::text("AccountC", 20),     col::integer("InfluenceSign"),
                                 col::number("SumA"),           col::number("SumCurr"),
                                 col::number("LikutisLt"),      col::number("LikutisCurr"),
                                 col::text("FCurrencyCode", 3), col::number("RateCurr"),
                                 col::number("CurrentRate"),    col::number("CurrInfluence"),
                                 col::text("AddrOIDR", 30),     col::text("AddrName", 800)};

// The five lists of debts are one selection; a payment takes the rows in their order, oldest first.
Variant debtList(Session& session, const Arguments& arguments, int side) {
  Answer answer(kDebts);
  const auto account = accountByCode(session.db(), arguments[1].str());
  if (!account) return answer.done();
  DebtQuery query;
  query.account = account->id;
  query.tracked = account->tracked;
  query.day = arguments[2].day();
  query.side = side;
  query.addressee = AddresseeFilter(arguments[3].str());
  DimsetRefs sets(session.db());
  DebtDetails details(session.db(), sets);
  const std::vector<Debt> debts = openItems(session.db(), query, sets);
  for (const DebtLine& line : details.of(debts, query.addressee, arguments[0].id().value_or(0))) {
    const ItemRow& row = line.debt.row;
    answer.row()
        .text(operReference(line.debt.itemId))
        .text(line.documentReference)
        .text(line.otype)
        .day(line.day)
        .text(line.number)
        .text(line.comment)
        .text(line.info)
        .text(line.accountD)
        .text(line.accountC)
        .integer(-row.side())
        .lt(row.side() * row.fullLt)
        .cur(row.side() * row.fullCur)
        .lt(line.debt.restLt())
        .cur(line.debt.restCur())
        .text(blankForBase(row.cur))
        .number(line.rate)
        .number(0)
        .number(0)
        .text(line.debtor)
        .text(line.debtorName);
  }
  return answer.done();
}

void expectAddressee(const Arguments& arguments, AddresseeFilter::Asks asks,
                     std::string_view routine) {
  if (AddresseeFilter(arguments[3].str()).asks() != asks)
    throw Refusal(kWrongParameters, std::string(routine) + ": '" + arguments[3].str() + "'");
}

int sideOf(const Argument& argument, std::string_view routine) {
  if (argument.integer() != 1 && argument.integer() != -1)
    throw Refusal(kWrongParameters, std::string(routine) + ": " + argument.str());
  return argument.integer();
}

Variant GetDebts1(Session& session, const Arguments& arguments, std::string_view) {
  expectAddressee(arguments, AddresseeFilter::Asks::One, "GetDebts1");
  return debtList(session, arguments, sideOf(arguments[4], "GetDebts1"));
}

Variant GetDebts2(Session& session, const Arguments& arguments, std::string_view) {
  expectAddressee(arguments, AddresseeFilter::Asks::Kind, "GetDebts2");
  return debtList(session, arguments, sideOf(arguments[4], "GetDebts2"));
}

Variant GetDebts3(Session& session, const Arguments& arguments, std::string_view) {
  expectAddressee(arguments, AddresseeFilter::Asks::Everybody, "GetDebts3");
  return debtList(session, arguments, sideOf(arguments[4], "GetDebts3"));
}

Variant GetDebtsByDebit(Session& session, const Arguments& arguments, std::string_view) {
  return debtList(session, arguments, 1);
}

Variant GetDebtsByCredit(Session& session, const Arguments& arguments, std::string_view) {
  return debtList(session, arguments, -1);
}

constexpr ColumnSpec kCoverFirms[] = {col::text("ShowString", 800), col::text("FOIDR", 30),
                                      col::number("Sum1"), col::number("Sum2")};

struct FirmRest {
  std::int64_t sum = 0;
  int entryId = 0;  // one that names the firm
};

// Rests by addressee of the kind; an item shared by several of them counts for each.
std::map<std::string, FirmRest> restsByFirm(Session& session, const Argument& code, int side,
                                            const AddresseeFilter& kind, int day) {
  std::map<std::string, FirmRest> rests;
  const auto account = accountByCode(session.db(), code.str());
  if (!account) return rests;
  DimsetRefs sets(session.db());
  for (const Debt& debt :
       openItems(session.db(), {account->id, account->tracked, day, side, kind}, sets))
    for (const std::string& reference : sets.of(debt.row.dimsetId)) {
      if (!kind.matches(reference)) continue;
      FirmRest& rest = rests[reference];
      rest.sum += debt.restLt();
      if (rest.entryId == 0) rest.entryId = debt.row.headEntryId;
    }
  return rests;
}

Variant GetCoverFirms(Session& session, const Arguments& arguments, std::string_view) {
  const AddresseeFilter kind(arguments[4].str());
  const int day = arguments[5].day();
  const int side1 = sideOf(arguments[1], "GetCoverFirms");
  const bool second = !arguments[2].str().empty();
  const auto rests1 = restsByFirm(session, arguments[0], side1, kind, day);
  std::map<std::string, FirmRest> rests2;
  if (second)
    rests2 = restsByFirm(session, arguments[2], sideOf(arguments[3], "GetCoverFirms"), kind, day);
  std::vector<std::string> firms;
  for (const auto& [reference, rest] : rests1)
    if (!second || rests2.contains(reference)) firms.push_back(reference);
  DimsetRefs sets(session.db());
  DebtDetails details(session.db(), sets);
  details.readNames(firms);
  std::map<std::string, std::string> names;
  for (const std::string& firm : firms) names[firm] = details.nameOf(firm, rests1.at(firm).entryId);
  std::stable_sort(firms.begin(), firms.end(), [&](const auto& a, const auto& b) {
    return compareLithuanian(names[a], names[b]) < 0;
  });
  Answer answer(kCoverFirms);
  for (const std::string& firm : firms)
    answer.row().text(names[firm]).text(firm).lt(rests1.at(firm).sum).lt(rests2[firm].sum);
  return answer.done();
}

constexpr ColumnSpec kByNumber[] = {col::text("ClientName", 800), col::text("FOIDR", 30),
                                    col::text("OIDR", 30),        col::date("DateD"),
                                    col::text("Number", 500),     col::number("SumA")};

// Operations of that number, or of that series and number written together.
std::set<int> opersByNumber(Database& db, const std::string& text) {
  std::set<int> found;
  auto select = db.prepare("SELECT id FROM oper WHERE number = $1 AND ($2 = '' OR serija = $2)");
  for (std::size_t cut = 0; cut < length(text); ++cut) {
    const std::string series = trim(left(text, cut));
    if (cut > 0 && series.empty()) continue;
    select->bind(1, trim(mid(text, cut + 1))).bind(2, series);
    while (select->step()) found.insert(select->whole(0));
    select->reset();
  }
  return found;
}

Variant GetBROpersByNumber(Session& session, const Arguments& arguments, std::string_view) {
  Answer answer(kByNumber);
  const int side = sideOf(arguments[1], "GetBROpersByNumber");
  DimsetRefs sets(session.db());
  DebtDetails details(session.db(), sets);
  std::vector<Debt> debts;
  for (const int oper : opersByNumber(session.db(), trim(arguments[0].str())))
    for (Debt& debt : openItemsOf(session.db(), oper))
      if (debt.row.side() == side) debts.push_back(std::move(debt));
  for (const DebtLine& line : details.of(debts, {}))
    answer.row()
        .text(line.debtorName)
        .text(line.debtor)
        .text(operReference(line.debt.itemId))
        .day(line.day)
        .text(line.number)
        .lt(side * line.debt.row.fullLt);
  return answer.done();
}

constexpr Routine kRoutines[] = {
    {"O0201500", "GetDebts1", "rtdti", false, GetDebts1},
    {"O0201500", "GetDebts2", "rtdti", false, GetDebts2},
    {"O0201500", "GetDebts3", "rtdti", false, GetDebts3},
    {"O0201500", "GetDebtsByDebit", "rtdtI", false, GetDebtsByDebit},
    {"O0201500", "GetDebtsByCredit", "rtdtI", false, GetDebtsByCredit},
    {"O0201500", "GetCoverFirms", "tititd", false, GetCoverFirms},
    {"O0201500", "GetBROpersByNumber", "ti", false, GetBROpersByNumber},
};

}  // namespace

std::span<const Routine> debtRoutines() { return kRoutines; }

}  // namespace tolvex::store
