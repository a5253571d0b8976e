// Balances of accounts, and what hangs on them.
#include <map>

#include "framework/references.h"
#include "framework/text.h"
#include "host/store/answer.h"
#include "host/store/balances.h"
#include "host/store/lookups.h"
#include "host/store/routine_table.h"

namespace tolvex::store {
namespace {

constexpr ColumnSpec kAccountTotal[] = {col::number("LikutisLt"), col::number("LikutisCurr"),
                                        col::text("FCurrencyCode", 3)};

Variant GetAccountTotal(Session& session, const Arguments& arguments, std::string_view) {
  Answer answer(kAccountTotal);
  const auto account = accountByCode(session.db(), arguments[0].str());
  if (!account) return answer.done();
  BalanceQuery query;
  query.to = arguments[1].day();
  query.account = account->id;
  query.addressee = AddresseeFilter(arguments[2].str());
  const int side = arguments[3].integer() < 0 ? -1 : 1;
  for (const Turnover& rest : turnovers(session.db(), query))
    if (rest.lt() != 0 || rest.cur() != 0)
      answer.row().lt(side * rest.lt()).cur(side * rest.cur()).text(blankForBase(rest.currency));
  return answer.done();
}

constexpr ColumnSpec kAccountsTotal[] = {col::text("Account", 20), col::number("SumA"),
                                         col::text("AccType", 1)};

// The trial balance: litas of all currencies, each account on its own side, by number.
Variant GetAccountsTotal(Session& session, const Arguments& arguments, std::string_view) {
  BalanceQuery query;
  query.to = arguments[0].day();
  query.addressee = AddresseeFilter(arguments[1].str());
  const std::map<int, AccountRow> accounts = accountsById(session.db());
  std::map<std::string, std::pair<std::int64_t, const AccountRow*>> byCode;
  for (const Turnover& rest : turnovers(session.db(), query)) {
    const AccountRow& account = accounts.at(rest.accountId);
    auto& total = byCode[account.code];
    total.first += account.ownSide(rest.lt());
    total.second = &account;
  }
  Answer answer(kAccountsTotal);
  for (const auto& [code, total] : byCode)
    answer.row().text(code).lt(total.first).text(total.second->type);
  return answer.done();
}

constexpr ColumnSpec kAccountRest[] = {col::number("RestLt"), col::text("CurrCode", 3),
                                       col::number("RestCurr")};

// At the start of the day, for the account and everything below it, debit positive.
Variant GetAccountRest(Session& session, const Arguments& arguments, std::string_view) {
  std::map<std::string, Turnover> byCurrency;
  if (const int day = arguments[1].day(); day > kFirstDay) {
    BalanceQuery query;
    query.to = DateTime::FromDayNumber(day).AddDays(-1).DayNumber();
    query.addressee = AddresseeFilter(arguments[2].str());
    for (const int account : accountsBelow(session.db(), arguments[0].str())) {
      query.account = account;
      for (const Turnover& rest : turnovers(session.db(), query)) {
        Turnover& sum = byCurrency[rest.currency];
        sum.debit += rest.lt();
        sum.debitCur += rest.cur();
      }
    }
  }
  Answer answer(kAccountRest);
  for (const auto& [currency, sum] : byCurrency)
    if (sum.debit != 0 || sum.debitCur != 0)
      answer.row().lt(sum.debit).text(currency).cur(sum.debitCur);
  return answer.done();
}

// Turnover of a period on each account's own side, without what went to or came from the closing
// account and those below it.
Variant GetAccountsTurnover(Session& session, const Arguments& arguments, std::string_view) {
  BalanceQuery query;
  query.from = arguments[0].day();
  query.to = arguments[1].day();
  query.addressee = AddresseeFilter(arguments[3].str());
  if (!arguments[2].str().empty()) query.without = accountsBelow(session.db(), arguments[2].str());
  const std::map<int, AccountRow> accounts = accountsById(session.db());
  std::map<std::string, std::pair<std::int64_t, const AccountRow*>> byCode;
  for (const Turnover& turn : turnovers(session.db(), query)) {
    const AccountRow& account = accounts.at(turn.accountId);
    auto& total = byCode[account.code];
    total.first += account.ownSide(turn.lt());
    total.second = &account;
  }
  Answer answer(kAccountsTotal);
  for (const auto& [code, total] : byCode)
    answer.row().text(code).lt(total.first).text(total.second->type);
  return answer.done();
}

constexpr ColumnSpec kInfluence[] = {col::text("OIDR", 30), col::date("DateD"),
                                     col::text("Number", 500), col::number("SumA")};

// The condition that a difference names its document by a pointer on the account's side. Where
// items are kept, a condition that an index has tells it: the item is then another operation's.
std::string pointerCondition(const AccountRow& account, bool pointed) {
  if (account.tracked) return pointed ? "p.item_id <> p.oper_id" : "p.item_id = p.oper_id";
  return std::string(pointed ? "" : "NOT ") +
         "EXISTS (SELECT 1 FROM entry_ref r WHERE r.entry_id = p.entry_id AND r.sign = p.sign"
         " AND r.role = 1)";
}

// The newest rate difference that the other way of revaluing left on the account. By operations
// each difference names its operation by a pointer, by totals none does.
Variant GetCheckInfluenceType(Session& session, const Arguments& arguments, std::string_view) {
  Answer answer(kInfluence);
  const auto account = accountByCode(session.db(), arguments[0].str());
  if (!account) return answer.done();
  const bool wantsPointer = arguments[3].integer() == 1;
  // One select for each other account keeps the search on the first entries of an index.
  std::vector<int> others;
  if (const auto loss = accountByCode(session.db(), arguments[2].str())) others.push_back(loss->id);
  auto gains = session.db().prepare(
      "SELECT a.id FROM account a JOIN account_mark m ON m.id = a.mark_id"
      " WHERE m.code = '536' AND a.plan = 0");
  while (gains->step()) others.push_back(gains->whole(0));
  auto select = session.db().prepare(
      "SELECT o.id, o.day, o.number, p.sum_lt, p.day FROM posting p CROSS JOIN oper o WHERE"
      " o.id = p.oper_id AND p.account_id = $1 AND p.corr_id = $2 AND p.day <= $3 AND p.cur <> "
      "'LTL'"
      " AND p.sum_cur = 0 AND " +
      pointerCondition(*account, wantsPointer) + " ORDER BY p.day DESC, p.entry_id DESC LIMIT 1");
  struct Found {
    std::int64_t id = 0, day = 0, sum = 0, posted = 0;
    std::string number;
  } newest;
  for (const int other : others) {
    select->bind(1, account->id).bind(2, other).bind(3, arguments[1].day());
    if (select->step() && select->integer(4) > newest.posted)
      newest = {select->integer(0), select->integer(1), select->integer(3), select->integer(4),
                std::string(select->text(2))};
    select->reset();
  }
  if (newest.id != 0)
    answer.row().text(operReference(newest.id)).day(newest.day).text(newest.number).lt(newest.sum);
  return answer.done();
}

constexpr ColumnSpec kSaldo[] = {col::number("Saldo")};

// Debit less credit of a client today on the accounts that carry the mark; where none does, on
// those whose number begins with it.
Variant GetSaldoByAccountCode(Session& session, const Arguments& arguments, std::string_view kind) {
  const std::string& client = arguments[0].str();
  BalanceQuery query;
  query.to = session.now().DayNumber();
  const auto id = arguments[0].id();
  if (!id) throw Refusal(kWrongParameters, "GetSaldoByAccountCode: '" + client + "'");
  query.addressee = AddresseeFilter(isRef(client) ? client : refOf(kind, *id));
  std::vector<int> accounts;
  auto marked = session.db().prepare(
      "SELECT a.id FROM account a JOIN account_mark m ON m.id = a.mark_id"
      " WHERE m.code = $1 AND a.plan = 0 ORDER BY a.code");
  marked->bind(1, arguments[1].str());
  while (marked->step()) accounts.push_back(marked->whole(0));
  if (accounts.empty()) accounts = accountsBelow(session.db(), arguments[1].str());
  std::int64_t saldo = 0;
  for (const int account : accounts) {
    query.account = account;
    for (const Turnover& rest : turnovers(session.db(), query)) saldo += rest.lt();
  }
  Answer answer(kSaldo);
  answer.row().lt(saldo);
  return answer.done();
}

constexpr Routine kRoutines[] = {
    {"O0201500", "GetAccountTotal", "tdti", false, GetAccountTotal},
    {"O0201500 O0200500", "GetAccountsTotal", "dT", false, GetAccountsTotal},
    {"O0200500", "GetAccountRest", "tdT", false, GetAccountRest},
    {"O0200500", "GetAccountsTurnover", "ddTT", false, GetAccountsTurnover},
    {"O0201500", "GetCheckInfluenceType", "tdti", false, GetCheckInfluenceType},
    {"O0000100", "GetSaldoByAccountCode", "rt", false, GetSaldoByAccountCode},
};

}  // namespace

std::span<const Routine> balanceRoutines() { return kRoutines; }

}  // namespace tolvex::store
