// Large demo books: the rows of a save without its questions, roll-ups and items made at the end.
#include <algorithm>
#include <array>
#include <cmath>
#include <deque>
#include <map>

#include "framework/references.h"
#include "framework/rounding.h"
#include "framework/text.h"
#include "host/store/control_digit.h"
#include "host/store/demo.h"
#include "host/store/dimset.h"
#include "host/store/numbering.h"
#include "host/store/oper_doc.h"
#include "host/store/oper_save.h"
#include "host/store/schema.h"
#include "host/store/sql.h"

namespace tolvex::store {

namespace {

constexpr int kFirms = 5000, kFirstFirm = 1001, kPerTransaction = 10000;
constexpr int kVatPercent = 18;
constexpr double kEuroRate = 3.4528;

// The same numbers on every machine.
class Dice {
 public:
  std::uint64_t next() {
    std::uint64_t z = (state_ += 0x9E3779B97F4A7C15u);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
    return z ^ (z >> 31);
  }
  int below(int limit) { return static_cast<int>(next() % static_cast<std::uint64_t>(limit)); }
  bool percent(int share) { return below(100) < share; }
  // Small numbers often, large ones seldom.
  int skewed(int limit) {
    const std::int64_t a = below(limit), b = below(limit), c = below(limit);
    return static_cast<int>(a * b / limit * c / limit);
  }

 private:
  std::uint64_t state_ = 20020101;
};

struct Money {
  std::string cur{kBaseCode};
  double rate = 0;
  std::int64_t sumCur = 0;  // 1/10000
  std::int64_t sumLt = 0;
};

struct OpenDocument {
  int operId = 0, firm = 0;
  std::string name;
  Money rest;  // rate as booked
};

std::int64_t centsOf(double litas) { return std::llround(roundLt(litas) * 100); }

class Generator {
 public:
  Generator(Database& db, int operations, const Progress& progress)
      : db_(db), operations_(operations), progress_(progress), dimsets_(db, dimsetIds_) {}

  void run() {
    loadAccounts();
    {
      Transaction transaction(db_, Transaction::For::Exclusive);
      makeFirms();
      makeDays();
      transaction.commit();
    }
    for (int done = 0; done < operations_;) {
      Transaction transaction(db_, Transaction::For::Write);
      const int end = std::min(operations_, done + kPerTransaction);
      for (; done < end; ++done) makeOperation(done);
      transaction.commit();
      goOn(progress_, "Kuriamos operacijos", done / double(operations_));
    }
  }

 private:
  struct Account {
    int id = 0;
    bool tracked = false;
  };

  void loadAccounts() {
    auto select = db_.prepare("SELECT code, id, track_items FROM account WHERE plan = 0");
    while (select->step()) {
      accounts_[std::string(select->text(0))] = {select->whole(1), select->integer(2) != 0};
    }
  }

  void makeFirms() {
    constexpr std::array kForms{"UAB", "AB", "UAB", "IĮ", "UAB"};
    constexpr std::array kStems{"Vėtrungė", "Ąžuolas", "Žiedas", "Baltija", "Šaltinis", "Gintaras",
                                "Nemunas",  "Pušynas", "Rytas",  "Aušra",   "Žuvėdra",  "Vilkė"};
    constexpr std::array kCities{"Vilnius", "Kaunas", "Klaipėda", "Šiauliai", "Panevėžys"};
    auto insert = db_.prepare(
        "INSERT INTO firm (id, name, code, vat_code, street, city, country)"
        " VALUES ($1,$2,$3,$4,$5,$6,'Lietuva')");
    for (int i = 0; i < kFirms; ++i) {
      const auto at = static_cast<std::size_t>(i);
      std::string code = std::to_string(20000000 + i * 37);
      code += static_cast<char>('0' + controlDigit(code));
      names_.push_back(std::string(kForms[at % kForms.size()]) + " " +
                       kStems[at / 7 % kStems.size()] + " " + std::to_string(i + 1));
      insert->bind(1, kFirstFirm + i).bind(2, names_.back()).bind(3, code);
      insert->bind(4, "LT" + code).bind(5, "Pramonės g. " + std::to_string(i % 190 + 1));
      insert->bind(6, kCities[at % kCities.size()]);
      insert->run();
    }
    moveIdCounters(db_);
  }

  // Working days of three years, with the dollar's rate of each.
  void makeDays() {
    double rate = 2.8;
    int weekday = 1;  // 2002.01.01 was a Tuesday
    for (DateTime day = DateTime::Of(2002, 1, 1); day < DateTime::Of(2005, 1, 1);
         day = day.AddDays(1), weekday = (weekday + 1) % 7) {
      if (weekday >= 5) continue;
      rate = roundHalfEven(std::clamp(rate + (dice_.below(401) - 200) / 10000.0, 2.4, 4.0), 4);
      days_.push_back(day.DayNumber());
      rates_.push_back(rate);
      store::run(db_,
                 "INSERT INTO currency_rate (currency_id, day, rate) SELECT id, $1, $2 FROM"
                 " currency WHERE code = 'USD' ON CONFLICT (currency_id, day) DO NOTHING",
                 day.DayNumber(), rate);
    }
  }

  void makeOperation(int index) {
    const auto place =
        static_cast<std::size_t>(index) * days_.size() / static_cast<std::size_t>(operations_);
    day_ = days_[place];
    usdRate_ = rates_[place];
    if (index == 0) return makeOpening();
    const int kind = dice_.below(100);
    if (kind < 30) return makeInvoice(false);
    if (kind < 55) return makePayment(receivable_, false);
    if (kind < 75) return makeInvoice(true);
    if (kind < 90) return makePayment(payable_, true);
    makeOther();
  }

  void makeOpening() {
    begin("O0201500", 15, "Pradiniai likučiai");
    add("2711", "301", {{}, 0, 0, 1000000000});
    finish();
  }

  // An invoice to a buyer or of a supplier; one in a currency crosses the border without VAT.
  void makeInvoice(bool purchase) {
    const int firm = dice_.skewed(kFirms);
    Money money;
    money.sumLt = 500 + dice_.skewed(4000000);
    if (dice_.percent(9)) money = inCurrency(dice_.percent(60) ? "EUR" : "USD", money.sumLt);
    const bool withVat = money.cur == kBaseCode;
    const char* const account = purchase ? "450" : "240";
    const int sign = purchase ? -1 : 1;
    begin("O0201500", purchase ? 3 : 4, (purchase ? "Prekės iš " : "Prekės ") + name(firm));
    header_.vatRegister = withVat && dice_.percent(80) ? (purchase ? 1 : 2) : 0;
    OpenDocument document{0, firm, "", money};
    const auto trade = [&](const char* other, const Money& part, int indication) {
      EntryRow& entry = purchase ? add(other, account, part) : add(account, other, part);
      setCurrency(entry.side(sign), part);
      addFirm(entry, sign, firm);
      entry.tradeType = purchase ? 1 : 2;
      entry.vatIndication = indication;
      entry.vatTariff = withVat ? kVatPercent * 100 : 0;
    };
    trade(purchase ? "204" : "500", money, 1);
    if (withVat) {
      Money vat;
      vat.sumLt = (money.sumLt * kVatPercent + 50) / 100;
      trade(purchase ? "2441" : "4461", vat, 2);
      document.rest.sumLt += vat.sumLt;
    }
    document.operId = finish();
    document.name = operName(header_);
    (purchase ? payable_ : receivable_).push_back(std::move(document));
  }

  // Pays the oldest document, whole or its half; in a currency at the rate of the day, so that a
  // rate difference closes what the booked rate leaves over.
  void makePayment(std::deque<OpenDocument>& documents, bool purchase) {
    if (documents.empty()) return makeOther();
    OpenDocument document = std::move(documents.front());
    documents.pop_front();
    Money& rest = document.rest;
    const bool whole = !dice_.percent(30) || rest.sumLt < 100;
    Money paid = rest;
    if (!whole) {
      paid.sumLt = rest.sumLt / 2;
      paid.sumCur = rest.sumCur / 2 / 100 * 100;
    }
    std::int64_t booked = paid.sumLt;
    if (rest.cur != kBaseCode) {
      booked = whole ? rest.sumLt : centsOf(static_cast<double>(paid.sumCur) / 10000.0 * rest.rate);
      paid.rate = rest.cur == "EUR" ? kEuroRate : usdRate_;
      paid.sumLt = centsOf(static_cast<double>(paid.sumCur) / 10000.0 * paid.rate);
    }
    const char* const money = rest.cur == kBaseCode ? "2711" : rest.cur == "EUR" ? "2712" : "2713";
    const char* const account = purchase ? "450" : "240";
    const int sign = purchase ? 1 : -1;
    beginPayment(document, paid, purchase);
    EntryRow& entry = purchase ? add(account, money, paid) : add(money, account, paid);
    setCurrency(entry.debit, paid);
    setCurrency(entry.credit, paid);
    addFirm(entry, sign, document.firm);
    addPointer(entry, sign, document);
    if (booked != paid.sumLt) addDifference(document, account, booked - paid.sumLt, purchase);
    finish();
    if (whole) return;
    rest.sumLt -= booked;
    rest.sumCur -= paid.sumCur;
    documents.push_back(std::move(document));
  }

  // What is left of the booked value (or missing) becomes gain or loss on the document's account.
  void addDifference(const OpenDocument& document, const char* account, std::int64_t left,
                     bool purchase) {
    const bool gain = purchase == (left > 0);
    Money difference{document.rest.cur, 0, 0, left > 0 ? left : -left};
    EntryRow& entry = gain ? add(account, "536", difference) : add("636", account, difference);
    const int sign = gain ? 1 : -1;
    setCurrency(entry.side(sign), difference);
    addFirm(entry, sign, document.firm);
    addPointer(entry, sign, document);
  }

  void beginPayment(const OpenDocument& document, const Money& paid, bool purchase) {
    begin(purchase ? "O0201501" : "O0201502", purchase ? 5 : 6, name(document.firm));
    header_.clientRef = refOf("O0000100", kFirstFirm + document.firm);
    const bool base = paid.cur == kBaseCode;
    header_.parameters = "Pagal " + document.name + "##" + (base ? "   " : paid.cur) + "#" +
                         replaceAll(plainNumber(paid.rate), ".", ",") + "##" + *header_.clientRef +
                         "###" + (purchase ? "1|" : "");
  }

  void makeOther() {
    struct Kind {
      const char *debit, *credit, *comment;
    };
    constexpr std::array kKinds{
        Kind{"600", "204", "Parduotų prekių savikaina"}, Kind{"6123", "2711", "Nuoma ir ryšiai"},
        Kind{"2721", "2711", "Pinigai į kasą"},          Kind{"6121", "4481", "Darbo užmokestis"},
        Kind{"611", "2721", "Pardavimo sąnaudos"},       Kind{"2721", "500", "Kasos aparatas"}};
    const Kind& kind = kKinds[static_cast<std::size_t>(dice_.below(int(kKinds.size())))];
    begin("O0201500", 2, kind.comment);
    add(kind.debit, kind.credit, {std::string(kBaseCode), 0, 0, 500 + dice_.skewed(1000000)});
    finish();
  }

  Money inCurrency(const char* code, std::int64_t aboutLt) const {
    Money money;
    money.cur = code;
    money.rate = money.cur == "EUR" ? kEuroRate : usdRate_;
    const double units = roundHalfEven(static_cast<double>(aboutLt) / 100.0 / money.rate, 0) + 1;
    money.sumCur = std::llround(units * 10000);
    money.sumLt = centsOf(units * money.rate);
    return money;
  }

  std::string name(int firm) const { return names_[static_cast<std::size_t>(firm)]; }

  void begin(const char* kind, int group, std::string comment) {
    header_ = {};
    header_.otype = kind;
    header_.groupId = group;
    header_.day = day_;
    header_.comment = std::move(comment);
    takeNumber();
    entries_.clear();
  }

  void takeNumber() {
    Counter& counter = counters_[{header_.groupId, day_ / 10000}];
    if (counter.bucket == 0) {
      counter.rules = *readNumberRules(db_, header_.groupId);
      counter.bucket = lockBucket(db_, bucketKey(counter.rules, 1, header_.otype, day_));
      counter.last = static_cast<int>(
          integerFrom(db_, "SELECT MAX(auto_number) FROM oper WHERE an_bucket_id = $1",
                      counter.bucket)
              .value_or(0));
    }
    header_.bucketId = counter.bucket;
    header_.autoNumber = ++counter.last;
    header_.number = composeNumber(counter.rules, "AD", day_, header_.autoNumber);
  }

  EntryRow& add(const char* debit, const char* credit, const Money& money) {
    EntryRow& entry = entries_.emplace_back();
    entry.guid = "e" + std::to_string(entries_.size());
    entry.day = day_;
    entry.sumLt = money.sumLt;
    const std::pair<SideRow*, const char*> sides[] = {{&entry.debit, debit},
                                                      {&entry.credit, credit}};
    for (const auto& [side, code] : sides) {
      const Account& account = accounts_.at(code);
      side->accountId = account.id;
      side->tracked = account.tracked;
    }
    return entry;
  }

  static void setCurrency(SideRow& side, const Money& money) {
    if (money.cur == kBaseCode) return;
    side.cur = money.cur;
    side.rate = money.rate;
    side.sumCur = money.sumCur;
  }

  void addFirm(EntryRow& entry, int sign, int firm) const {
    entry.refs.push_back(
        {0, sign, refOf("O0000100", kFirstFirm + firm), kAddressee, 0, name(firm)});
  }

  static void addPointer(EntryRow& entry, int sign, const OpenDocument& document) {
    entry.refs.push_back({0, sign, refOf(kOperationKind, document.operId), kOwnOperation,
                          document.operId, document.name});
  }

  int finish() {
    insertHeader(db_, header_);
    for (EntryRow& entry : entries_) {
      derive(entry, header_.id, dimsets_);
      insertEntry(db_, header_.id, entry);
    }
    writeDoc(db_, header_, false);
    auto log = db_.prepare(
        "INSERT INTO oper_log (oper_id, oper_name, action, user_id, user_name, at, save_key)"
        " VALUES ($1,$2,'C',1,'Administratorius',$3,$4)");
    std::string at = dayText(day_) + " 12:00:00";
    at[4] = at[7] = '-';
    log->bind(1, header_.id).bind(2, operName(header_)).bind(3, at);
    log->bind(4, "demo-" + std::to_string(header_.id));
    log->run();
    return header_.id;
  }

  struct Counter {
    NumberRules rules;
    int bucket = 0, last = 0;
  };

  Database& db_;
  const int operations_;
  const Progress& progress_;
  Dice dice_;
  DimsetIds dimsetIds_;
  Dimsets dimsets_;
  std::map<std::string, Account, std::less<>> accounts_;
  std::vector<std::string> names_;
  std::vector<int> days_;
  std::vector<double> rates_;
  std::map<std::pair<int, int>, Counter> counters_;
  std::deque<OpenDocument> receivable_, payable_;
  int day_ = 0;
  double usdRate_ = 0;
  HeaderRow header_;
  std::vector<EntryRow> entries_;
};

}  // namespace

void generateDemo(Database& db, int operations, const Progress& progress) {
  if (operations <= 0) return;
  if (db.engine() == Engine::Sqlite) db.execute("PRAGMA cache_size = -131072");
  Generator(db, operations, progress).run();
  rebuildBooks(db, progress);
  if (db.engine() == Engine::Sqlite) db.execute("PRAGMA cache_size = -32768");
}

}  // namespace tolvex::store
