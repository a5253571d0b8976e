#include "host/store/demo.h"

#include <optional>
#include <string>
#include <vector>

#include "framework/references.h"
#include "host/store/guid.h"
#include "host/store/numbering.h"
#include "host/store/schema.h"
#include "host/store/sql.h"

namespace tolvex::store {

namespace {

struct Addressee {
  int sign;
  const char *foidr, *name;
};

struct Currency {
  int sign;
  double rate, sum;
};

struct DemoEntry {
  const char *debit, *credit;
  double sum;
  std::vector<Addressee> addressees;
  std::optional<Currency> dollars;
  int tradeType = 0, vatIndication = 0;  // a trade entry bears the tariff of 18 %
};

struct DemoOperation {
  int group;
  const char* kind;
  DateTime date;
  const char *comment, *client, *parameters;
  std::vector<DemoEntry> entries;
};

constexpr Addressee kSupplierD{1, "O00001002", "UAB Tiekėjas"};
constexpr Addressee kSupplierC{-1, "O00001002", "UAB Tiekėjas"};
constexpr Addressee kBuyerD{1, "O00001003", "UAB Pirkėjas"};
constexpr Addressee kBuyerC{-1, "O00001003", "UAB Pirkėjas"};
constexpr Addressee kWorkerD{1, "O00014013", "Jonas Jonaitis"};

Addressee pointer(int sign, const char* operation, const char* name) {
  return {sign, operation, name};
}

std::vector<DemoOperation> operations() {
  const auto day = [](unsigned month, unsigned date) { return DateTime::Of(2004, month, date); };
  const auto invoice = [](int sign) { return pointer(sign, "O02015001", "2004.01.10 P-0001"); };
  const auto dollars = [](int sign) { return pointer(sign, "O02015004", "2004.01.10 P-0002"); };
  const char* const kOrder = "Pagal sąskaitą P-0001##   #0#O00005001#O00001002#O00005004##1|";
  const char* const kDollarOrder270 =
      "Pagal sąskaitą P-0002##USD#2,7#O00005003#O00001002#O00005004##1|";
  const char* const kDollarOrder275 =
      "Pagal sąskaitą P-0002##USD#2,75#O00005003#O00001002#O00005004##1|";
  return {
      {3,
       "O0201500",
       day(1, 10),
       "Prekės iš UAB Tiekėjas",
       "",
       "",
       {{"204", "450", 1000, {kSupplierC}, {}, 1, 1},
        {"2441", "450", 180, {kSupplierC}, {}, 1, 2}}},
      {5,
       "O0201501",
       day(2, 5),
       "UAB Tiekėjas",
       "O00001002",
       kOrder,
       {{"450", "2711", 500, {kSupplierD, kSupplierC, invoice(1)}, {}}}},
      {5,
       "O0201501",
       day(3, 1),
       "UAB Tiekėjas",
       "O00001002",
       kOrder,
       {{"450", "2711", 680, {kSupplierD, kSupplierC, invoice(1)}, {}}}},
      {3,
       "O0201500",
       day(1, 10),
       "Prekės iš UAB Tiekėjas, USD",
       "",
       "",
       {{"204", "450", 2800, {kSupplierC}, Currency{-1, 2.80, 1000}}}},
      {5,
       "O0201501",
       day(2, 10),
       "UAB Tiekėjas",
       "O00001002",
       kDollarOrder270,
       {{"450", "536", 100, {kSupplierD, dollars(1)}, Currency{1, 0, 0}},
        {"450", "2711", 1080, {kSupplierD, dollars(1)}, Currency{1, 2.70, 400}}}},
      {5,
       "O0201501",
       day(3, 10),
       "UAB Tiekėjas",
       "O00001002",
       kDollarOrder275,
       {{"636", "450", 30, {kSupplierC, dollars(-1)}, Currency{-1, 0, 0}},
        {"450", "2711", 1650, {kSupplierD, dollars(1)}, Currency{1, 2.75, 600}}}},
      {15,
       "O0201500",
       DateTime::Of(2003, 12, 31),
       "Pradiniai likučiai",
       "",
       "",
       {{"2711", "0", 50000, {}, {}},
        {"2721", "0", 2000, {}, {}},
        {"204", "0", 30000, {}, {}},
        {"0", "301", 82000, {}, {}}}},
      {4,
       "O0201500",
       day(1, 15),
       "Prekės UAB Pirkėjas",
       "",
       "",
       {{"240", "500", 2000, {kBuyerD}, {}, 2, 1},
        {"240", "4461", 360, {kBuyerD}, {}, 2, 2},
        {"600", "204", 1200, {}, {}}}},
      {6,
       "O0201502",
       day(2, 20),
       "UAB Pirkėjas",
       "O00001003",
       "Pagal sąskaitą S-0001##   #0#O00005001#O00001003#O00005005##",
       {{"2711", "240", 1000, {kBuyerC, pointer(-1, "O02015008", "2004.01.15 S-0001")}, {}}}},
      {7,
       "O0201503",
       day(2, 1),
       "Jonas Jonaitis",
       "O00014013",
       "Komandiruotei##   #0#O00014013##",
       {{"255", "2721", 300, {kWorkerD}, {}}}},
  };
}

void fillBanks(Database& db) {
  constexpr const char* kBank =
      "INSERT INTO bank (id, name, code, swift, city, country) VALUES ($1,$2,$3,$4,$5,'Lietuva')";
  run(db, kBank, 1, "Bankas A", "70100", "BNKALT2X", "Vilnius");
  run(db, kBank, 2, "Bankas B", "70200", "BNKBLT2X", "Kaunas");
  constexpr const char* kAccount =
      "INSERT INTO bank_account (id, bank_id, owner_ref, account_number, main_flag)"
      " VALUES ($1,$2,$3,$4,$5)";
  run(db, kAccount, 1, 1, "O00001001", "LT037010000000000001", 1);
  run(db, kAccount, 2, 1, "O00001001", "LT737010000000000002", 0);
  run(db, kAccount, 3, 2, "O00001001", "LT297020000000000003", 0);
  run(db, kAccount, 4, 2, "O00001002", "LT027020000000000004", 1);
  run(db, kAccount, 5, 1, "O00001003", "LT897010000000000005", 1);
}

void fillParties(Database& db) {
  run(db,
      "UPDATE firm SET name = 'UAB Demo', code = '110000003', vat_code = 'LT110000003',"
      " street = 'Gedimino pr. 1', city = 'Vilnius', country = 'Lietuva',"
      " director = 'Jonas Jonaitis', director_title = 'direktorius', financier = 'Ona Onaitė',"
      " cashier = 'Rasa Rasaitė' WHERE id = 1");
  constexpr const char* kFirm =
      "INSERT INTO firm (id, parent_id, name, code, vat_code, street, city, country)"
      " VALUES ($1,$2,$3,$4,$5,$6,$7,'Lietuva')";
  const std::optional<int> noParent;
  run(db, kFirm, 2, noParent, "UAB Tiekėjas", "120000005", "LT120000005", "Kauno g. 2", "Kaunas");
  run(db, kFirm, 3, noParent, "UAB Pirkėjas", "130000007", "LT130000007", "Taikos pr. 3",
      "Klaipėda");
  run(db, kFirm, 4, 3, "UAB Pirkėjo filialas", "130000014", "LT130000007", "Tilžės g. 4",
      "Šiauliai");
  run(db, kFirm, 5, noParent, "AB Paslaugos", "150000000", "", "Laisvės al. 5", "Kaunas");
  run(db, "INSERT INTO person (id, name, last_name) VALUES (1, 'Petras', 'Petraitis')");
  constexpr const char* kEmployee =
      "INSERT INTO employee (id, name, last_name, title) VALUES ($1,$2,$3,$4)";
  run(db, kEmployee, 1, "Ona", "Onaitė", "vyr. buhalterė");
  run(db, kEmployee, 2, "Rasa", "Rasaitė", "kasininkė");
  run(db, kEmployee, 3, "Jonas", "Jonaitis", "direktorius");
}

void fillRates(Database& db) {
  struct Span {
    DateTime from, to;
    double rate;
  };
  const DateTime first = DateTime::Of(2004, 1, 10), second = DateTime::Of(2004, 2, 10),
                 third = DateTime::Of(2004, 3, 10), end = DateTime::Of(2004, 4, 1);
  for (const Span& span : {Span{first, second, 2.80}, {second, third, 2.70}, {third, end, 2.75}}) {
    for (DateTime day = span.from; day < span.to; day = day.AddDays(1)) {
      run(db,
          "INSERT INTO currency_rate (currency_id, day, rate)"
          " SELECT id, $1, $2 FROM currency WHERE code = 'USD'",
          day.DayNumber(), span.rate);
    }
  }
}

void fillGroupsAndJournals(Database& db) {
  run(db, "UPDATE oper_group SET parameters = 'O00005001####y#0' WHERE id IN (5, 6)");
  run(db, "UPDATE oper_group SET parameters = 'Ona Onaitė#####35#17#1' WHERE id = 8");
  constexpr const char* kJournal =
      "INSERT INTO journal (parent_id, otype, name, guid, config_list, param_list)"
      " SELECT id, otype, $1, $2, config_list, $3 FROM journal WHERE id = 9";
  run(db, kJournal, "Kasos knyga", newGuid(), "2721;3;LTL;;;Kasa litais;;;1;1;0;0");
  run(db, kJournal, "Bankas", newGuid(),
      "2711;1;   ;;;Atsiskaitomoji sąskaita litais;O0000100;;1;0;0;0");
  run(db, kJournal, "Tiekėjai", newGuid(),
      "450;1;   ;;;Skolos tiekėjams už prekes ir paslaugas;O0000100;;0;0;0;0");
}

void addEntry(RowSet& BR, const DemoEntry& entry, DateTime date) {
  BR.AddNew();
  BR["GUID"] = newGuid();
  BR["DateD"] = Variant(date);
  BR["SumA"] = entry.sum;
  BR["AccountD"] = entry.debit;
  BR["AccountC"] = entry.credit;
  BR["Info"] = "";
  BR["Tag"] = "";
  BR["TradeOperationType"] = static_cast<double>(entry.tradeType);
  BR["RestoringSign"] = 1.0;
  BR["VATIndication"] = static_cast<double>(entry.vatIndication);
  BR["VATFlag"] = 0.0;
  if (entry.tradeType != 0) BR["VATTariff"] = 18.0;
  if (entry.dollars) {
    RowSet& rows = *BR["BRCurrency"].Rows();
    rows.AddNew();
    rows["Sign"] = static_cast<double>(entry.dollars->sign);
    rows["RateCurr"] = entry.dollars->rate;
    rows["SumCurr"] = entry.dollars->sum;
    rows["FCurrencyCode"] = "USD";
  }
  RowSet& rows = *BR["BRProperties"].Rows();
  for (const Addressee& addressee : entry.addressees) {
    rows.AddNew();
    rows["Sign"] = static_cast<double>(addressee.sign);
    rows["FOIDR"] = addressee.foidr;
    rows["ShowString"] = addressee.name;
  }
}

void saveOperation(Session& session, const DemoOperation& operation) {
  const HostResult made = session.create(operation.kind, operation.kind);
  if (made.Code != kDone) throw BooksError(made.Text);
  RowSet& record = *made.Data.AsRows();
  const std::optional<NumberRules> rules = readNumberRules(session.db(), operation.group);
  const int number = offerNumber(session, *rules, session.user().id, session.user().prefix,
                                 operation.kind, operation.date.DayNumber());
  record["DateD"] = Variant(operation.date);
  record["BROperGroupID"] = static_cast<double>(operation.group);
  record["Serija"] = "";
  record["Number"] = session.offer().text;
  record["AutoNumber"] = static_cast<double>(number);
  record["Comment"] = operation.comment;
  record["Parameters"] = operation.parameters;
  record["VATRegisterIndication"] = 0.0;
  if (*operation.client != '\0') record["FOIDR"] = operation.client;
  for (const DemoEntry& entry : operation.entries) {
    addEntry(*record["BR"].Rows(), entry, operation.date);
  }
  const SaveOutcome saved = session.save(operation.kind, operation.kind, record, nullptr, nullptr);
  if (saved.Code != kDone) throw BooksError(saved.Text);
}

}  // namespace

void fillDemo(Session& session) {
  {
    Database& db = session.db();
    Transaction transaction(db, Transaction::For::Write);
    fillBanks(db);
    fillParties(db);
    fillRates(db);
    fillGroupsAndJournals(db);
    moveIdCounters(db);
    transaction.commit();
  }
  for (const DemoOperation& operation : operations()) saveOperation(session, operation);
}

}  // namespace tolvex::store
