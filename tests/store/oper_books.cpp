#include "tests/store/oper_books.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <set>

#include "framework/references.h"
#include "framework/text.h"
#include "host/store/guid.h"
#include "host/store/sql.h"
#include "operations/entry_rules.h"

namespace tolvex::store {

namespace {

DateTime testClock() { return DateTime::Of(2004, 3, 31, 12, 0, 0); }

std::int64_t parts(double value, double scale) { return std::llround(value * scale); }

}  // namespace

std::unique_ptr<OperPlace> OperPlace::postgres() {
  return std::getenv("TOLVEX_TEST_PG") ? std::make_unique<OperPlace>(Store::Postgres) : nullptr;
}

std::vector<std::unique_ptr<OperPlace>> OperPlace::bothEngines() {
  std::vector<std::unique_ptr<OperPlace>> places;
  places.push_back(std::make_unique<OperPlace>(Store::Memory));
  if (auto server = postgres()) places.push_back(std::move(server));
  return places;
}

std::unique_ptr<Session> OperPlace::open(const std::string& login) {
  auto db = place_.connect();
  if (!seeded_) {
    initBooks(*db, {});
    run(*db, "INSERT INTO firm (id, name) VALUES (77, 'UAB Antra')");
    seeded_ = true;
  }
  return openSession(std::move(db), login, "", testClock);
}

std::unique_ptr<Session> memoryBooks() { return OperPlace(Store::Memory).open(); }

void addEntry(RowSet& record, const TestEntry& entry) {
  RowSet& BR = *record["BR"].Rows();
  BR.AddNew();
  BR["GUID"] = newGuid();
  if (entry.day != 0) {
    BR["DateD"] = Variant(DateTime::FromDayNumber(entry.day));
  } else {
    BR["DateD"] = record["DateD"].Value();
  }
  BR["SumA"] = entry.sum;
  BR["AccountD"] = entry.debit;
  BR["AccountC"] = entry.credit;
  BR["Info"] = "";
  BR["Tag"] = "";
  BR["TradeOperationType"] = 0.0;
  BR["RestoringSign"] = 1.0;
  BR["VATIndication"] = 0.0;
  BR["VATFlag"] = 0.0;
  for (const TestCurrency& currency : entry.currencies) {
    RowSet& rows = *BR["BRCurrency"].Rows();
    rows.AddNew();
    rows["Sign"] = static_cast<double>(currency.sign);
    rows["RateCurr"] = currency.rate;
    rows["SumCurr"] = currency.sum;
    rows["FCurrencyCode"] = currency.code;
  }
  for (const TestRef& ref : entry.refs) {
    RowSet& rows = *BR["BRProperties"].Rows();
    rows.AddNew();
    rows["Sign"] = static_cast<double>(ref.sign);
    rows["FOIDR"] = ref.foidr;
    rows["ShowString"] = "rodoma " + ref.foidr;
  }
}

RowSetPtr newOperation(Session& session, const TestOper& oper) {
  const HostResult made = session.create(oper.kind, oper.kind);
  EXPECT_EQ(made.Code, kDone) << made.Text;
  RowSetPtr record = made.Data.AsRows();
  (*record)["DateD"] = Variant(DateTime::FromDayNumber(oper.day));
  (*record)["BROperGroupID"] = static_cast<double>(oper.group);
  (*record)["Serija"] = "";
  (*record)["Number"] = "";
  (*record)["Comment"] = "bandymas";
  (*record)["Parameters"] = "";
  (*record)["AutoNumber"] = 0.0;
  (*record)["VATRegisterIndication"] = 0.0;
  for (const TestEntry& entry : oper.entries) addEntry(*record, entry);
  return record;
}

SaveOutcome save(Session& session, RowSet& record) {
  return session.save("O0201500", record["OType"].Text(), record, nullptr, nullptr);
}

int savedId(Session& session, const TestOper& oper) {
  const RowSetPtr record = newOperation(session, oper);
  const SaveOutcome saved = save(session, *record);
  EXPECT_EQ(saved.Code, kDone) << saved.Text;
  return idOf(saved.reference);
}

RowSetPtr loaded(Session& session, int id) {
  const HostResult result = session.load("O0201500", operRef(id));
  EXPECT_EQ(result.Code, kDone) << result.Text;
  return result.Data.AsRows();
}

namespace {

void appendRows(RowSet& rows, Given given, const std::string& indent, std::string& to) {
  static const std::set<std::string> kGiven = {"ID",         "OIDR",       "OID",    "FOIDR",
                                               "Preview",    "RowVersion", "GUID",   "OType",
                                               "ClientOIDR", "BRGUID",     "Number", "AutoNumber"};
  const bool header = indent.empty();
  const KeepPlace place(rows);
  ForEachRow(rows, [&](RowSet& row) {
    to += indent;
    std::string nested;
    for (std::size_t i = 0; i < row.Fields().size(); ++i) {
      const Field field = row.Fields()[i];
      if (field.Name() == "ClientName" || field.Name() == "RequiredAddr") continue;
      const bool fromStore = kGiven.contains(field.Name()) && (header || field.Name() != "FOIDR");
      if (fromStore && given == Given::Left) continue;
      if (field.Type() == FieldType::Nested) {
        appendRows(*field.Rows(), given, indent + "  ", nested);
      } else if (!field.IsAbsent()) {
        to += field.Name() + "=" + field.Value().Show() + ";";
      }
    }
    to += '\n';
    to += nested;
  });
}

}  // namespace

std::string content(RowSet& record, Given given) {
  std::string text;
  appendRows(record, given, "", text);
  return text;
}

std::string allTables(Database& db) {
  std::vector<std::string> tables;
  {
    auto select = db.prepare("SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name");
    while (select->step()) tables.emplace_back(select->text(0));
  }
  std::string all;
  for (const std::string& table : tables) {
    const std::string columns = textFrom(
        db, "SELECT group_concat('quote(' || name || ')', '||''|''||') FROM pragma_table_info($1)",
        table);
    auto select = db.prepare("SELECT " + columns + " FROM " + table + " ORDER BY 1");
    while (select->step()) all += table + ": " + std::string(select->text(0)) + "\n";
  }
  return all;
}

std::string findingsText(Database& db) {
  std::string text;
  for (const Finding& finding : verifyBooks(db)) text += finding.check + ": " + finding.text + "\n";
  return text;
}

void Auditor::replace(int operId, RowSet* record) {
  operations_.erase(operId);
  if (record == nullptr) return;
  std::vector<Line>& lines = operations_[operId];
  ForEachRow(*(*record)["BR"].Rows(), [&](RowSet& BR) {
    Line line{BR["DateD"].Value().AsDate().DayNumber(),
              std::string(BR["AccountD"].Text()),
              std::string(BR["AccountC"].Text()),
              "LTL",
              "LTL",
              parts(BR["SumA"].Number(), 100),
              0,
              0};
    ForEachRow(*BR["BRCurrency"].Rows(), [&](RowSet& side) {
      const bool debit = side["Sign"].Number() == 1;
      (debit ? line.curD : line.curC) = std::string(side["FCurrencyCode"].Text());
      (debit ? line.sumCurD : line.sumCurC) = parts(side["SumCurr"].Number(), 10000);
    });
    lines.push_back(std::move(line));
  });
}

namespace {

void withoutZeros(Auditor::Balances& balances) {
  std::erase_if(balances, [](const auto& row) {
    return row.second == std::pair<std::int64_t, std::int64_t>{};
  });
}

Auditor::Balances balancesFrom(Statement& select) {
  Auditor::Balances balances;
  while (select.step()) {
    balances[{std::string(select.text(0)), std::string(select.text(1))}] = {select.integer(2),
                                                                            select.integer(3)};
  }
  withoutZeros(balances);
  return balances;
}

}  // namespace

Auditor::Balances Auditor::balances(int until) const {
  Balances sums;
  for (const auto& [id, lines] : operations_) {
    for (const Line& line : lines) {
      if (line.day > until) continue;
      auto& debit = sums[{line.debit, line.curD}];
      debit.first += line.cents;
      debit.second += line.sumCurD;
      auto& credit = sums[{line.credit, line.curC}];
      credit.first -= line.cents;
      credit.second -= line.sumCurC;
    }
  }
  withoutZeros(sums);
  return sums;
}

Auditor::Balances Auditor::stored(Database& db, int until) {
  return balancesFrom(*bound(db,
                             "SELECT a.code, p.cur, SUM(p.sign * p.sum_lt), SUM(p.sign * p.sum_cur)"
                             " FROM posting p JOIN account a ON a.id = p.account_id"
                             " WHERE p.day <= $1 GROUP BY a.code, p.cur",
                             until));
}

Auditor::Balances Auditor::rolledUp(Database& db) {
  return balancesFrom(
      *bound(db,
             "SELECT a.code, t.cur, SUM(t.debit - t.credit), SUM(t.debit_cur - t.credit_cur)"
             " FROM turn_acc t JOIN account a ON a.id = t.account_id WHERE t.period < 10000"
             " GROUP BY a.code, t.cur"));
}

Auditor::Balances Auditor::ofItems(Database& db, Balances all) {
  Balances difference;
  for (const auto& [key, sums] : all) difference[{key.first, ""}].first += sums.first;
  auto tracked = db.prepare("SELECT code FROM account WHERE track_items = 1");
  std::set<std::string> codes;
  while (tracked->step()) codes.emplace(tracked->text(0));
  std::erase_if(difference, [&](const auto& row) { return !codes.contains(row.first.first); });
  auto items = db.prepare(
      "SELECT a.code, SUM(i.rest_lt) FROM open_item i JOIN account a ON a.id = i.account_id"
      " GROUP BY a.code");
  while (items->step()) difference[{std::string(items->text(0)), ""}].first -= items->integer(1);
  withoutZeros(difference);
  return difference;
}

}  // namespace tolvex::store
