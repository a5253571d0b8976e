// Lists for the host's trees and pickers.
#include "framework/references.h"
#include "host/store/demo.h"
#include "host/store/sql.h"
#include "tests/support/books_fixture.h"

namespace tolvex::store {
namespace {

class Lists : public BooksTest {
 protected:
  std::string names(const char* kind, const std::string& first) {
    RowSetPtr rows = rowsIn(session().list(kind, first, "", ""));
    std::string out;
    ForEachRow(*rows, [&](RowSet& row) {
      out += (out.empty() ? "" : "; ") + std::string(row["OType"].Text()) + " " +
             std::string(row["Name"].Text());
    });
    return out;
  }
};

TEST_P(Lists, GroupsShowWhatStandsBelowThem) {
  fillDemo(session());
  EXPECT_EQ(names("O0201400", ""), "MainGroup Finansinių operacijų apskaita");
  RowSetPtr below = rowsIn(session().list("O0201400", "O02014001", "", ""));
  EXPECT_EQ(below->RecordCount(), 16U);
  EXPECT_EQ((*below)["ParentOIDR"].Text(), "O02014001");
  const auto operations = [&](const char* from, const char* to) {
    const std::string parameters = "'" + std::string(from) + "','" + to + "','O02014003',''";
    return rowsIn(session().list("O0201400", parameters, "", ""))->RecordCount();
  };
  const auto all = integerFrom(db(), "SELECT COUNT(*) FROM oper WHERE group_id = 3").value_or(0);
  ASSERT_GT(all, 0);
  EXPECT_EQ(operations("2003.01.01", "9999.12.31"), static_cast<std::size_t>(all));
  EXPECT_EQ(operations("1990.01.01", "2003.01.01"), 0U);
  const auto onDay =
      integerFrom(db(), "SELECT COUNT(*) FROM oper WHERE group_id = 3 AND day = 20040110");
  EXPECT_EQ(operations("2004.01.10", "2004.01.10"), static_cast<std::size_t>(*onDay));
}

TEST_P(Lists, JournalGroupsAreToldByTheirType) {
  EXPECT_EQ(names("O0200500", "'OType = 'GRO0200501''"),
            "GRO0200501 Finansinių operacijų žurnalas");
  EXPECT_EQ(names("O0200510", ""),
            "GRO0200510 PVM registras; O0200510 Gautų PVM sąskaitų faktūrų registras; O0200510 "
            "Išrašytų PVM sąskaitų faktūrų registras");
  RowSetPtr record = rowsIn(session().load("O0200500", "O02005001"));
  record->MoveFirst();
  EXPECT_EQ((*record)["OType"].Text(), "O0200501") << "in the record it is the kind";
}

TEST_P(Lists, KindsOfOneTableDoNotMix) {
  EXPECT_EQ(names("O0001601", ""), "O0001601 Administracija; O0001601 Prekyba");
  EXPECT_EQ(names("O0001602", ""), "O0001602 Pardavimas; O0001602 Pirkimas");
  EXPECT_EQ(names("O0201700", ""),
            "O0001600 Apmokėjimo šablonai; O0201701 Per 30 dienų; O0201701 Avansas ir likutis");
  RowSetPtr rows = rowsIn(session().call("O0001602", "DO0001602_GetVXObjectList", "None"));
  EXPECT_EQ((*rows)["Code"].Text(), "SALE");
}

// Days go against the order of ids, so that a page by days would differ.
TEST_P(Lists, PagesOfOperationsJoinToTheWholeList) {
  run(db(),
      "INSERT INTO oper (otype, group_id, day) WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL"
      " SELECT i + 1 FROM n WHERE i < 60) SELECT 'O0201500', 3 + i % 2, 20040131 - i / 3 FROM n");
  const auto list = [&](const std::string& page) {
    return session().list("O0201400", "'2004.01.12','2004.01.30','O02014003',''" + page, "", "");
  };
  const auto references = [](RowSet& rows) {
    std::vector<std::string> out;
    ForEachRow(rows, [&](RowSet& row) { out.emplace_back(row["OIDR"].Text()); });
    return out;
  };
  const auto whole = references(*rowsIn(list("")));
  ASSERT_GT(whole.size(), 20U);
  for (const std::size_t size : {std::size_t{1}, std::size_t{7}, whole.size()}) {
    std::vector<std::string> joined;
    int after = 0;
    for (bool full = true; full;) {
      const auto page = references(
          *rowsIn(list(",'page:" + std::to_string(after) + ";" + std::to_string(size) + "'")));
      joined.insert(joined.end(), page.begin(), page.end());
      full = page.size() == size;
      if (full) after = idOf(page.back());
    }
    EXPECT_EQ(joined, whole) << size;
  }
  for (const char* bad : {",'page:0'", ",'page:0;0'", ",'page:x;5'"})
    EXPECT_EQ(list(bad).Code, kWrongParameters) << bad;
}

TEST_P(Lists, AFilterThatCannotBeReadIsRefused) {
  EXPECT_EQ(session().list("O0000100", "'Name ~~ 5'", "", "").Code, kWrongParameters);
  EXPECT_EQ(session().list("O0000100", "'NoSuchColumn = 5'", "", "").Code, kWrongParameters);
}

TEST_P(Lists, AListTooLongForATreeIsRefusedWithAdvice) {
  if (GetParam() != Store::Memory) return;
  run(db(),
      "INSERT INTO firm (name) WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n"
      " WHERE i < 100001) SELECT 'Įmonė ' || CAST(i AS VARCHAR(9)) FROM n");
  const HostResult refused = session().list("O0000100", "", "", "");
  EXPECT_EQ(refused.Code, kWrongParameters);
  EXPECT_NE(refused.Text.find("susiaurinkite"), std::string::npos);
  EXPECT_EQ(rowsIn(session().list("O0000100", "'Name = 'Įmonė 777''", "", ""))->RecordCount(), 1U);
  run(db(),
      "INSERT INTO oper (otype, group_id, day) WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL"
      " SELECT i + 1 FROM n WHERE i < 100001) SELECT 'O0201500', 3, 20040131 FROM n");
  EXPECT_EQ(session().list("O0201400", "'O02014003','page:0;200'", "", "").Code, kWrongParameters)
      << "with its first page already";
}

TOLVEX_ALL_STORES(Lists);

}  // namespace
}  // namespace tolvex::store
