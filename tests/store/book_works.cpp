#include "tests/store/book_works.h"

#include <algorithm>
#include <fstream>

#include "host/store/demo.h"
#include "host/store/numbering.h"
#include "host/store/schema.h"
#include "host/store/sql.h"
#include "tests/store/oper_books.h"
#include "tests/support/plan_fixture.h"

namespace tolvex::store {
namespace {

DateTime today() { return DateTime::Of(2004, 3, 31, 12, 0, 0); }

Act saving(Session& session, RowSetPtr record) {
  return [&session, record] { return save(session, *record).Code; };
}

Act postingNumbered(Session& session) {
  const RowSetPtr record =
      newOperation(session, {20040330,
                             {{"240", "500", 345.28, {{1, kFirmA}}, {{1, "EUR", 3.4528, 100}}},
                              {"240", "4461", 62.15, {{1, kFirmB}}}},
                             4});
  const int number = offerNumber(session, *readNumberRules(session.db(), 4), session.user().id,
                                 "AD", "O0201500", 20040330);
  (*record)["AutoNumber"] = static_cast<double>(number);
  (*record)["Number"] = session.offer().text;
  return saving(session, record);
}

Act postingLong(Session& session) {
  TestOper oper{20040330, {}, 2};
  for (int i = 0; i < 150; ++i) {
    oper.entries.push_back({"2711", "500", 1 + i / 100.0, {{1, i % 2 == 0 ? kFirmA : kFirmB}}});
  }
  return saving(session, newOperation(session, oper));
}

Act paying(Session& session) {  // the first purchase of the demo company once more
  return saving(session,
                newOperation(session, {20040330, {{"450", "2711", 1, {{1, operRef(1)}}}}, 2}));
}

Act editing(Session& session) {
  const auto last = integerFrom(session.db(), "SELECT MAX(id) FROM oper");
  RowSetPtr record = loaded(session, static_cast<int>(*last));
  (*record)["Comment"] = "pataisyta";
  (*(*record)["BR"].Rows())["SumA"] = 99.99;
  (*(*record)["BR"].Rows())["DateD"] = Variant(DateTime::Of(2004, 2, 29));
  return saving(session, record);
}

Act deleting(Session& session) {
  const auto last = integerFrom(session.db(), "SELECT MAX(id) FROM oper");
  return [&session, reference = operRef(static_cast<int>(*last))] {
    return session.erase("O0201500", reference).Code;
  };
}

Act lockingAll(Session& session) {
  constexpr const char* kLock = "O0201300";
  const RowSetPtr list = rowsIn(session.list(kLock, "", "", ""));
  const RowSetPtr door = rowsIn(session.load(kLock, "O02013001"));
  ForEachRow(*list, [](RowSet& row) { row["DateToLow"] = Variant(DateTime::Of(2003, 12, 31)); });
  return
      [&session, list, door] { return session.save(kLock, "", *door, list.get(), nullptr).Code; };
}

Act calling(Session& session, const char* kind, const char* routine, std::string parameters) {
  return [&session, kind, routine, parameters = std::move(parameters)] {
    return session.call(kind, routine, parameters).Code;
  };
}

Act savingRates(Session& session) {
  std::string rows;
  for (int day = 1; day <= 30; ++day) {
    const std::string date = DateTime::Of(2004, 4, static_cast<unsigned>(day)).Text();
    rows += (rows.empty() ? "" : "#") + date + ";USD;2.8#" + date + ";EUR;3.4528";
  }
  return calling(session, "O0002200", "SaveDayRates", "'" + rows + "'");
}

Act movingAccount(Session& session) {
  return calling(session, "O0200400", "MoveAccountDown",
                 "'" + std::to_string(accountId(session, 0, "240")) + "'");
}

Act converting(Session& session) { return calling(session, "O0200400", "Convert", ""); }

}  // namespace

const std::vector<Work>& bookWorks() {
  static const std::vector<Work> kWorks = {{"PostNumbered", postingNumbered},
                                           {"PostLong", postingLong},
                                           {"Pay", paying},
                                           {"Edit", editing},
                                           {"Delete", deleting},
                                           {"LockAll", lockingAll},
                                           {"DayRates", savingRates},
                                           {"MoveDown", movingAccount},
                                           {"Convert", converting}};
  return kWorks;
}

DemoOnDisk::DemoOnDisk() : path_(folder_.path("books.tolvex")) {
  Database::Options options;
  options.create = true;
  auto db = Database::open(path_, options);
  initBooks(*db);
  auto session = openSession(std::move(db), "admin", "", today);
  fillDemo(*session);
  run(session->db(), "INSERT INTO firm (id, name) VALUES (77, 'UAB Antra')");
  makeSmallPlan(*session);
  session.reset();
  files_ = disk_.files();
  std::ofstream(path_).flush();
}

std::unique_ptr<Session> DemoOnDisk::open() {
  auto session = openSession(Database::open(path_, {}), "admin", "", today);
  session->setBackupFolder(folder_.path(""));
  return session;
}

std::string statement(Database& db) {
  std::string all;
  for (const std::string& table : allTables()) {
    const std::string columns = textFrom(
        db,
        "SELECT group_concat('quote(' || name || ')', '||''|''||') FROM pragma_table_info($1)"
        " WHERE name NOT IN ('guid', 'save_key')",
        table);
    std::vector<std::string> rows;
    auto select = db.prepare("SELECT " + columns + " FROM " + table);
    while (select->step()) rows.emplace_back(select->text(0));
    std::sort(rows.begin(), rows.end());
    for (const std::string& row : rows) all.append(table).append(": ").append(row).append("\n");
  }
  return all;
}

std::string difference(const std::string& one, const std::string& other) {
  if (one == other) return "";
  const auto at = std::mismatch(one.begin(), one.end(), other.begin(), other.end());
  const auto line = [](const std::string& text, std::string::const_iterator place) {
    const auto offset = static_cast<std::size_t>(place - text.begin());
    const std::size_t begin = offset == 0 ? 0 : text.rfind('\n', offset - 1) + 1;
    return text.substr(begin, text.find('\n', begin) - begin);
  };
  return line(one, at.first) + " <> " + line(other, at.second);
}

}  // namespace tolvex::store
