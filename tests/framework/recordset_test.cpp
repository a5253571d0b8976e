// What a record set promises, case by case; recordset_model_test checks the same at random.
#include "framework/recordset.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>

#include "tests/support/rows.h"

namespace tolvex {
namespace {

using test::As;
using test::column;
using test::rowsOf;

constexpr const char* kEntries =
    "N:int|GUID|AccountD|CurrCode|SumA:double|DateD:date|Tag\n"
    "1|{a}|271|   |100.5|2004.02.10|x\n"
    "2|{b}|2710|EUR|-3|2004.02.11|-\n"
    "3|{C}|240|USD|-|-|\n"
    "4|{d}|šilas||0|2004.03.01|X\n"
    "5|-|ČIA|EUR|100.5|2004.02.10 12:00|~\n";

RowSetError::Kind errorOf(const std::function<void()>& act) {
  try {
    act();
  } catch (const RowSetError& error) {
    return static_cast<RowSetError::Kind>(error.Number);
  }
  return RowSetError::Unexpected;
}

struct FilterCase {
  const char* filter;
  const char* want;
};

TEST(RowSetFilter, LetsThrough) {
  const FilterCase cases[] = {
      {"", "1 2 3 4 5"},
      {"   ", "1 2 3 4 5"},
      {"GUID = '{c}'", "3"},
      {"guid='{A}'", "1"},
      {"GUID  =  '{b}'", "2"},
      {"AccountD = 'ŠILAS'", "4"},
      {"AccountD = 'cia'", ""},
      {"AccountD Like '27%'", "1 2"},
      {"AccountD LIKE '271*'", "1 2"},
      {"AccountD like '%LA%'", "4"},
      {"AccountD like '%0'", "2 3"},
      {"AccountD Like '2*1*'", "1 2"},
      {"AccountD Like '271'", "1"},
      {"AccountD Like '%'", "1 2 3 4 5"},
      {"AccountD = 271", "1"},
      {"AccountD > '271'", "2 4 5"},
      {"CurrCode = '   '", "1"},
      {"CurrCode = ''", "4"},
      {"CurrCode <> 'eur'", "1 3 4"},
      {"Tag <> 'x'", "2 3 5"},
      {"Tag = ''", "3"},
      {"GUID <> '{never seen}'", "1 2 3 4 5"},
      {"SumA <> 0", "1 2 5"},
      {"SumA = 0", "4"},
      {"SumA >= 100.5", "1 5"},
      {"SumA <= 1.005e2 And SumA >= -3", "1 2 4 5"},
      {"SumA = '100.5'", "1 5"},
      {" DateD>'1900.01.01'", "1 2 4 5"},
      {"DateD = '2004.02.10'", "1"},
      {"DateD <= '2004.02.11'", "1 2 5"},
      {"N = 1 OR N = 2 AND SumA = 7", "1"},
      {"(CurrCode = 'EUR' AND  SumA <> -3) OR (CurrCode = 'USD' And N = 3)", "3 5"},
      {"(N=4)or N=5", "4 5"},
      {"N = 5 OR N = 1", "1 5"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.filter);
    const RowSetPtr rows = rowsOf(kEntries);
    rows->SetFilter(c.filter);
    EXPECT_EQ(column(*rows, "N"), c.want);
    EXPECT_EQ(rows->RecordCount(), std::string(c.want).size() / 2 + (*c.want != '\0'));
  }
}

TEST(RowSetFilter, RefusesWithoutChange) {
  const struct {
    const char* filter;
    RowSetError::Kind error;
  } cases[] = {
      {"N", RowSetError::BadFilter},
      {"N =", RowSetError::BadFilter},
      {"N = x", RowSetError::BadFilter},
      {"N = 100,5", RowSetError::BadFilter},
      {"N = 1 2", RowSetError::BadFilter},
      {"N = 1 AND", RowSetError::BadFilter},
      {"N = 1 XOR N = 2", RowSetError::BadFilter},
      {"N == 1", RowSetError::BadFilter},
      {"N Like '1%'", RowSetError::BadFilter},
      {"GUID = {a}", RowSetError::BadFilter},
      {"GUID = 'it's'", RowSetError::BadFilter},
      {"GUID = 'a' or 'b'", RowSetError::BadFilter},
      {"GUID = 'open", RowSetError::BadFilter},
      {"DateD = '2004.02.30'", RowSetError::BadFilter},
      {"DateD = 2004", RowSetError::BadFilter},
      {"SumA = 'x'", RowSetError::BadFilter},
      {"(N = 1 OR N = 2)", RowSetError::BadFilter},
      {"(N = 1) AND N = 2", RowSetError::BadFilter},
      {"((N = 1))", RowSetError::BadFilter},
      {"(N = 1", RowSetError::BadFilter},
      {"SumA = nan", RowSetError::BadFilter},
      {"None = 1", RowSetError::UnknownColumn},
  };
  const RowSetPtr rows = rowsOf(kEntries);
  rows->SetFilter("N >= 2");
  rows->MoveNext();
  for (const auto& c : cases) {
    SCOPED_TRACE(c.filter);
    EXPECT_EQ(errorOf([&] { rows->SetFilter(c.filter); }), c.error);
    EXPECT_EQ(rows->Filter(), "N >= 2");
    EXPECT_EQ((*rows)["N"].Number(), 3);
    EXPECT_EQ(rows->RecordCount(), 4u);
  }
}

TEST(RowSetFilter, IsLive) {
  const RowSetPtr rows = rowsOf(kEntries);
  const RowSetPtr other = rows->Clone();
  rows->SetFilter("AccountD = 'new'");
  EXPECT_TRUE(rows->Eof());
  other->MoveLast();
  (*other)["AccountD"] = "NEW";  // a text that the filter had never seen
  EXPECT_EQ(rows->RecordCount(), 1u);
  rows->MoveFirst();
  EXPECT_EQ((*rows)["N"].Number(), 5);
  (*rows)["AccountD"] = "old";
  EXPECT_EQ((*rows)["AccountD"].Text(), "old") << "stays current";
  EXPECT_EQ(rows->RecordCount(), 0u);
  EXPECT_TRUE(rows->Eof());
  EXPECT_TRUE(rows->Bof());

  rows->SetFilter("N >= 2");
  rows->MoveNext();
  (*rows)["N"] = 0;
  rows->MovePrevious();
  EXPECT_EQ((*rows)["N"].Number(), 2);
  rows->MoveNext();
  EXPECT_EQ((*rows)["N"].Number(), 4);
}

TEST(RowSetCursor, NewRowUnderAFilterIsCurrent) {
  const RowSetPtr rows = rowsOf(kEntries);
  rows->SetFilter("N = 2");
  rows->AddNew();
  (*rows)["N"] = 6;
  EXPECT_EQ(rows->RecordCount(), 1u);
  EXPECT_EQ((*rows)["N"].Number(), 6);
  rows->MoveNext();
  EXPECT_TRUE(rows->Eof());
  EXPECT_EQ(errorOf([&] { rows->MoveNext(); }), RowSetError::NoCurrentRow);
}

TEST(RowSetCursor, DeletedRowKeepsThePlace) {
  const RowSetPtr rows = rowsOf(kEntries);
  const RowSetPtr other = rows->Clone();
  rows->Move(2);
  other->Move(2);
  rows->Delete();
  EXPECT_EQ(rows->RecordCount(), 4u);
  for (RowSet* set : {rows.get(), other.get()}) {
    EXPECT_EQ(errorOf([&] { (*set)["N"].Value(); }), RowSetError::NoCurrentRow);
    EXPECT_EQ(errorOf([&] { set->Delete(); }), RowSetError::NoCurrentRow);
  }
  rows->MoveNext();
  EXPECT_EQ((*rows)["N"].Number(), 4);
  other->MovePrevious();
  EXPECT_EQ((*other)["N"].Number(), 2);
  for (const char* left : {"1", "2", "4", "5"}) {
    rows->MoveFirst();
    EXPECT_EQ((*rows)["N"].Value().Show(), left);
    rows->Delete();
  }
  EXPECT_TRUE(rows->Eof());
  EXPECT_TRUE(rows->Bof());
  rows->MoveNext();  // from the deleted row: no error
  EXPECT_EQ(errorOf([&] { rows->MoveNext(); }), RowSetError::NoCurrentRow);
  rows->MoveFirst();
  EXPECT_TRUE(rows->Eof());
}

TEST(RowSetCursor, MovesStopAtTheEnds) {
  const RowSetPtr rows = rowsOf(kEntries);
  rows->Move(100);
  EXPECT_TRUE(rows->Eof());
  EXPECT_EQ(errorOf([&] { rows->Move(1); }), RowSetError::NoCurrentRow);
  rows->Move(-1);
  EXPECT_EQ((*rows)["N"].Number(), 5);
  rows->Move(-100);
  EXPECT_TRUE(rows->Bof());
  EXPECT_FALSE(rows->Eof());
  EXPECT_EQ(errorOf([&] { rows->MovePrevious(); }), RowSetError::NoCurrentRow);
  rows->MoveNext();
  EXPECT_EQ((*rows)["N"].Number(), 1);
  rows->SetFilter("N > 9");
  EXPECT_EQ(errorOf([&] { rows->MovePrevious(); }), RowSetError::NoCurrentRow);
}

TEST(RowSetCursor, BookmarksOutliveFilters) {
  const RowSetPtr rows = rowsOf(kEntries);
  rows->Move(3);
  const Variant fourth = rows->Bookmark();
  rows->SetFilter("N = 1");
  rows->SetBookmark(fourth);
  EXPECT_EQ((*rows)["N"].Number(), 4) << "a hidden row becomes current";
  rows->MovePrevious();
  EXPECT_EQ((*rows)["N"].Number(), 1);
  const RowSetPtr other = rows->Clone();
  other->SetBookmark(fourth);
  other->Delete();
  EXPECT_EQ(errorOf([&] { rows->SetBookmark(fourth); }), RowSetError::BadBookmark);
  EXPECT_EQ(errorOf([&] { rows->SetBookmark(99); }), RowSetError::BadBookmark);
  EXPECT_EQ(errorOf([&] { rows->SetBookmark("x"); }), RowSetError::BadBookmark);
  EXPECT_EQ(errorOf([&] { other->Bookmark(); }), RowSetError::NoCurrentRow);
}

TEST(RowSetCursor, KeepPlaceRestores) {
  const RowSetPtr rows = rowsOf(kEntries);
  rows->SetFilter("N > 2");
  rows->MoveNext();
  {
    KeepPlace keep(*rows);
    rows->SetFilter("N = 1");
  }
  EXPECT_EQ(rows->Filter(), "N > 2");
  EXPECT_EQ((*rows)["N"].Number(), 4);
  {
    KeepPlace keep(*rows);
    rows->Delete();
  }
  rows->MoveNext();
  EXPECT_EQ((*rows)["N"].Number(), 5);
}

TEST(RowSetSort, Orders) {
  const struct {
    const char* sort;
    const char* want;
  } cases[] = {
      {"", "1 2 3 4 5"},      {"SumA", "3 2 4 1 5"},     {"suma desc", "1 5 4 2 3"},
      {"DateD", "3 1 5 2 4"}, {"AccountD", "3 1 2 5 4"}, {"CurrCode,SumA DESC", "4 1 5 2 3"},
      {"Tag", "2 5 3 1 4"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.sort);
    const RowSetPtr rows = rowsOf(kEntries);
    rows->SetSort(c.sort);
    EXPECT_EQ(column(*rows, "N"), c.want);
  }
  EXPECT_EQ(errorOf([] { rowsOf(kEntries)->SetSort("nope"); }), RowSetError::UnknownColumn);
  EXPECT_EQ(errorOf([] { rowsOf(kEntries)->SetSort("N UP"); }), RowSetError::BadFilter);
}

TEST(RowSetSort, IsTakenOnce) {
  const RowSetPtr rows = rowsOf("N:int\n3\n1\n2\n");
  rows->SetSort("N");
  ForEachRow(*rows, [](RowSet& row) { row["N"] = 10 - row["N"].Number(); });
  EXPECT_EQ(column(*rows, "N"), "9 8 7") << "edits move nothing";
  rows->AddNew();
  (*rows)["N"] = 1;
  rows->SetFilter("N <> 8");
  EXPECT_EQ(column(*rows, "N"), "9 7 1") << "new rows stand last";
  rows->SetSort("N");
  EXPECT_EQ(column(*rows, "N"), "1 7 9");
  rows->SetSort("");
  EXPECT_EQ(column(*rows, "N"), "7 9 1");
}

// Long sets are sorted digit by digit: negative and absent numbers, equal ones in their order.
TEST(RowSetSort, LongSetsByNumber) {
  for (const int count : {63, 64, 1000, 20000}) {
    SCOPED_TRACE(count);
    const RowSetPtr rows = rowsOf("N:int|SumA:double\n");
    for (int i = 0; i < count; ++i) {
      rows->LoadRow();
      (*rows)["N"] = i;
      if (i % 10 != 0) (*rows)["SumA"] = static_cast<double>(i * 7919 % 1013 - 500) / 100;
    }
    for (const char* sort : {"SumA", "SumA DESC"}) {
      rows->SetSort(sort);
      const bool isFalling = std::string(sort) != "SumA";
      std::pair<double, double> before{isFalling ? 1e9 : -1e10, -1};
      std::size_t seen = 0;
      ForEachRow(*rows, [&](RowSet& row) {
        const double sum = row["SumA"].IsNull() ? -1e9 : row["SumA"].Number();
        ASSERT_TRUE(isFalling ? sum <= before.first : sum >= before.first);
        if (sum == before.first) {
          ASSERT_GT(row["N"].Number(), before.second);
        }
        before = {sum, row["N"].Number()};
        ++seen;
      });
      EXPECT_EQ(seen, static_cast<std::size_t>(count));
    }
  }
}

constexpr ColumnSpec kSide[] = {{"Sign", FieldType::SmallInt}, {"Code", FieldType::Text, 10}};
constexpr ColumnSpec kEntry[] = {{"GUID", FieldType::Text, 50},
                                 {"SumA", FieldType::Double},
                                 {"Sides", FieldType::Nested, 0, kSide, 2}};

TEST(RowSetNested, BelongsToItsRow) {
  const RowSetPtr rows = RowSet::make(kEntry);
  rows->AddNew();
  (*rows)["GUID"] = "{1}";
  const RowSetPtr first = (*rows)["Sides"].Rows();
  EXPECT_EQ(first->RecordCount(), 0u);
  first->AddNew();
  (*first)["Code"] = "EUR";
  rows->AddNew();
  EXPECT_EQ((*rows)["Sides"].Rows()->RecordCount(), 0u);
  const RowSetPtr other = rows->Clone();
  EXPECT_EQ((*other)["Sides"].Value().AsRows(), first) << "one object for all readers";
  EXPECT_EQ((*first)["Code"].Text(), "EUR");
  EXPECT_EQ(dump(*rows), "GUID|SumA\n{1}|~\n  Sides\n    Sign|Code\n    ~|EUR\n~|~\n");
}

TEST(RowSetChanges, EmptyAndNullAreKeptApart) {
  const RowSetPtr rows = RowSet::make(kEntry);
  rows->AddNew();
  EXPECT_TRUE((*rows)["GUID"].IsEmpty());
  EXPECT_FALSE((*rows)["GUID"].IsNull());
  EXPECT_EQ((*rows)["SumA"].Number(), 0);
  rows->LoadRow();
  EXPECT_TRUE((*rows)["SumA"].IsNull());
  EXPECT_FALSE((*rows)["SumA"].IsEmpty());
  (*rows)["SumA"] = Variant();
  EXPECT_TRUE((*rows)["SumA"].IsEmpty());
}

// Three stored entries; the first edited, the second deleted, a fourth added, and the third only
// through its side.
RowSetPtr editedEntries() {
  RowSetPtr rows = RowSet::make(kEntry);
  for (const char* guid : {"{1}", "{2}", "{3}"}) {
    rows->LoadRow();
    (*rows)["GUID"] = guid;
    (*rows)["SumA"] = 5;
  }
  const RowSetPtr sides = (*rows)["Sides"].Rows();
  for (const char* code : {"EUR", "USD"}) {
    sides->LoadRow();
    (*sides)["Code"] = code;
  }
  (*sides)["Code"] = "SEK";  // still loading
  EXPECT_FALSE(rows->HasChanges());
  sides->MoveFirst();
  (*sides)["Code"] = "GBP";
  rows->MoveFirst();
  (*rows)["SumA"] = 7;
  (*rows)["SumA"] = 8;
  rows->MoveNext();
  (*rows)["SumA"] = 9;
  rows->Delete();
  rows->AddNew();
  (*rows)["GUID"] = "{4}";
  rows->AddNew();
  rows->Delete();
  EXPECT_TRUE(rows->HasChanges());
  return rows;
}

TEST(RowSetChanges, TravelWithOriginals) {
  const RowSetPtr rows = editedEntries();
  rows->SetFilter("GUID = 'none'");
  const RowSetPtr changes = rows->Changes();
  EXPECT_EQ(column(*changes, "GUID"), "{1} {2} {3} {4}");
  const RowState states[] = {RowState::Changed, RowState::Deleted, RowState::Unchanged,
                             RowState::Added};
  const double sums[] = {8, 9, 5, 0};
  int i = 0;
  ForEachRow(*changes, [&](RowSet& row) {
    SCOPED_TRACE(row["GUID"].Text());
    EXPECT_EQ(row.State(), states[i]);
    EXPECT_EQ(row["SumA"].Number(), sums[i]);
    EXPECT_EQ(row["SumA"].OriginalValue(), i < 3 ? Variant(5) : Variant());
    if (row.State() != RowState::Deleted) {
      rows->SetBookmark(row.Bookmark());
      EXPECT_EQ((*rows)["GUID"].Text(), row["GUID"].Text());
    }
    ++i;
  });
  changes->SetFilter("GUID = '{3}'");
  const RowSetPtr sides = (*changes)["Sides"].Rows();
  EXPECT_EQ(column(*sides, "Code"), "GBP");
  sides->MoveFirst();
  EXPECT_EQ((*sides)["Code"].OriginalValue(), Variant("EUR"));
}

TEST(RowSetChanges, AreUndone) {
  const RowSetPtr rows = editedEntries();
  rows->SetFilter("SumA = 5");
  rows->CancelBatch();
  EXPECT_FALSE(rows->HasChanges());
  EXPECT_EQ(column(*rows, "GUID"), "{1} {2} {3}");
  rows->MoveLast();
  EXPECT_EQ(column(*(*rows)["Sides"].Rows(), "Code"), "EUR SEK");
}

TEST(RowSetChanges, AreAccepted) {
  const RowSetPtr rows = editedEntries();
  rows->AcceptChanges();
  EXPECT_FALSE(rows->HasChanges());
  rows->CancelBatch();
  EXPECT_EQ(column(*rows, "GUID"), "{1} {3} {4}");
  rows->MoveFirst();
  EXPECT_EQ((*rows)["SumA"].OriginalValue(), Variant(8));
  EXPECT_EQ(rows->Changes()->RecordCount(), 0u);
}

TEST(RowSetFields, Convert) {
  const RowSetPtr rows = rowsOf("S|D:double|I:int|T:date|B:bool\n-|-|-|-|-\n");
  const struct {
    const char* column;
    Variant value;
    Variant want;  // empty: TypeMismatch, null: OutOfRange
  } cases[] = {
      {"S", 12.5, "12.5"},
      {"S", DateTime::Of(2004, 2, 9), "2004.02.09"},
      {"S", true, {}},
      {"D", "12.50", 12.5},
      {"D", "12,50", {}},
      {"D", "", {}},
      {"D", true, 1.0},
      {"D", DateTime::Of(2004, 2, 9), {}},
      {"I", 2.5, 2},
      {"I", 3.5, 4},
      {"I", 3e9, Null{}},
      {"I", "-7", -7},
      {"T", "2004.02.09", DateTime::Of(2004, 2, 9)},
      {"T", "2004.02.30", {}},
      {"T", 5, {}},
      {"B", 3, true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.column) + " = " + c.value.Show());
    Field field = (*rows)[c.column];
    field = Variant(Null{});
    const auto error = errorOf([&] { field = c.value; });
    if (c.want.IsAbsent()) {
      EXPECT_EQ(error, c.want.IsNull() ? RowSetError::OutOfRange : RowSetError::TypeMismatch);
      EXPECT_TRUE(field.IsNull()) << "unchanged";
    } else {
      EXPECT_EQ(field.Value(), c.want);
    }
  }
  EXPECT_EQ(errorOf([&] { (*rows)["S"].Number(); }), RowSetError::TypeMismatch);
  EXPECT_EQ(errorOf([&] { (*rows)["D"].Text(); }), RowSetError::TypeMismatch);
  EXPECT_EQ(errorOf([&] { (*rows)["D"].Rows(); }), RowSetError::TypeMismatch);
}

TEST(RowSetLife, OpensAndCloses) {
  const RowSetPtr rows = RowSet::make();
  rows->Fields().Append("GUID", FieldType::Text, 50);
  EXPECT_EQ(errorOf([&] { (*rows)["GUID"]; }), RowSetError::NotOpen);
  EXPECT_EQ(errorOf([&] { rows->AddNew(); }), RowSetError::NotOpen);
  EXPECT_EQ(errorOf([&] { rows->Fields().Append("guid", FieldType::Text, 1); }),
            RowSetError::DuplicateKey);
  rows->Open();
  EXPECT_EQ(errorOf([&] { rows->Fields().Append("X", FieldType::Double); }), RowSetError::NotOpen);
  EXPECT_TRUE(rows->Eof() && rows->Bof());
  rows->MoveFirst();
  rows->AddNew();
  rows->Update();
  rows->Close();
  EXPECT_EQ(errorOf([&] { rows->RecordCount(); }), RowSetError::NotOpen);
  EXPECT_EQ(errorOf([&] { rows->Eof(); }), RowSetError::NotOpen);
}

TEST(RowSetLife, AViewThatPointsNowhereIsATextOfNoLength) {
  const RowSetPtr rows = RowSet::make();
  rows->Fields().Append("Info", FieldType::Text, 10);
  rows->Open();
  for (int i = 0; i < 2; ++i) {
    rows->AddNew();
    (*rows)["Info"] = std::string_view();
  }
  rows->SetFilter("Info = ''");
  EXPECT_EQ(rows->RecordCount(), 2u);
}

TEST(RowSetLife, LongNamesAreTold) {
  const RowSetPtr rows = RowSet::make();
  rows->Fields().Append("TradeOperationTypeCode", FieldType::Text, 10);
  rows->Fields().Append("TradeOpeXXXXXTypeCode", FieldType::Text, 10);
  rows->Fields().Append("TradeOpeYYYYYTypeCode", FieldType::Text, 10);
  rows->Open();
  EXPECT_TRUE(rows->Fields().contains("tradeoperationtypecode"));
  EXPECT_FALSE(rows->Fields().contains("TradeOpeZZZZZTypeCode"));
  EXPECT_EQ((*rows)["tradeopeyyyyytypecode"].Name(), "TradeOpeYYYYYTypeCode");
}

}  // namespace
}  // namespace tolvex
