#include <gtest/gtest.h>

#include "host/store/items.h"
#include "host/store/sql.h"
#include "tests/store/oper_books.h"

namespace tolvex::store {
namespace {

// "cur/set: rest litas, rest currency, full litas, full currency, head entry"
std::string shown(const std::vector<ItemRow>& rows) {
  std::string text;
  for (const ItemRow& row : rows) {
    if (!text.empty()) text += "; ";
    text += row.cur + "/" + std::to_string(row.dimsetId) + ": " + centsText(row.restLt) + " " +
            std::to_string(row.restCur / 10000) + " of " + centsText(row.fullLt) + " " +
            std::to_string(row.fullCur / 10000) + " head " + std::to_string(row.headEntryId);
  }
  return text;
}

constexpr int kItem = 4;

struct Case {
  const char* name;
  int until;
  std::vector<ItemPosting> postings;  // entry, sign, operation, day, cents, currency, sum, set
  const char* want;
};

const std::vector<ItemPosting> kLitas = {{1, -1, 4, 20040110, 100000, "LTL", 0, 7},
                                         {2, -1, 4, 20040110, 18000, "LTL", 0, 7},
                                         {3, 1, 5, 20040205, 50000, "LTL", 0, 7},
                                         {4, 1, 6, 20040301, 68000, "LTL", 0, 7}};
const std::vector<ItemPosting> kDollars = {{1, -1, 4, 20040110, 280000, "USD", 10000000, 7},
                                           {2, 1, 5, 20040210, 10000, "USD", 0, 7},
                                           {3, 1, 5, 20040210, 108000, "USD", 4000000, 7},
                                           {4, -1, 6, 20040310, 3000, "USD", 0, 7},
                                           {5, 1, 6, 20040310, 165000, "USD", 6000000, 7}};

const Case kCases[] = {
    {"an invoice before its payments", 20040131, kLitas, "LTL/7: -1180,00 0 of -1180,00 0 head 1"},
    {"a part is paid", 20040228, kLitas, "LTL/7: -680,00 0 of -1180,00 0 head 1"},
    {"paid in full", 20040331, kLitas, "LTL/7: 0,00 0 of -1180,00 0 head 1"},
    {"in dollars, nothing paid", 20040131, kDollars,
     "USD/7: -2800,00 -1000 of -2800,00 -1000 head 1"},
    {"a gain revalues the whole rest", 20040228, kDollars,
     "USD/7: -1620,00 -600 of -2800,00 -1000 head 1"},
    {"paid at other rates leaves nothing", 20040331, kDollars,
     "USD/7: 0,00 0 of -2800,00 -1000 head 1"},
    {"a difference in litas counts in the document's dollars, its litas alone",
     20041231,
     {{1, -1, 4, 20040110, 280000, "USD", 10000000, 7}, {2, 1, 5, 20040210, 280000, "LTL", 0, 7}},
     "USD/7: 0,00 -1000 of -2800,00 -1000 head 1"},
    {"a payment that forgot the client stays with the document",
     20041231,
     {{1, 1, 4, 20040110, 100, "LTL", 0, 7}, {2, -1, 5, 20040111, 40, "LTL", 0, 0}},
     "LTL/7: 0,60 0 of 1,00 0 head 1"},
    {"of two workers each keeps his own rest",
     20041231,
     {{1, -1, 4, 20040110, 100, "LTL", 0, 7},
      {2, -1, 4, 20040110, 200, "LTL", 0, 8},
      {3, 1, 5, 20040111, 200, "LTL", 0, 8}},
     "LTL/7: -1,00 0 of -1,00 0 head 1; LTL/8: 0,00 0 of -2,00 0 head 2"},
    {"a set that shares the firm is taken before a set of its own",
     20041231,
     {{1, -1, 4, 20040110, 100, "LTL", 0, 7},
      {2, -1, 4, 20040110, 200, "LTL", 0, 8},
      {3, 1, 5, 20040111, 200, "LTL", 0, 18},
      {4, 1, 5, 20040111, 5, "LTL", 0, 99}},
     "LTL/7: -1,00 0 of -1,00 0 head 1; LTL/8: 0,00 0 of -2,00 0 head 2;"
     " LTL/99: 0,05 0 of 0,00 0 head 4"},
    {"of two currencies a litas difference goes to the litas",
     20041231,
     {{1, -1, 4, 20040110, 100, "LTL", 0, 7},
      {2, -1, 4, 20040110, 280, "USD", 10000, 7},
      {3, 1, 5, 20040111, 30, "EUR", 10000, 7},
      {4, 1, 5, 20040111, 280, "USD", 10000, 7}},
     "LTL/7: -0,70 0 of -1,00 0 head 1; USD/7: 0,00 0 of -2,80 -1 head 2"},
    {"a pointer at an operation that never used the account",
     20041231,
     {{3, 1, 5, 20040111, 30, "EUR", 10000, 7}},
     "EUR/7: 0,30 1 of 0,00 0 head 3"},
    {"a document's own cancelling side is no follower",
     20041231,
     {{1, 1, 4, 20040110, 100, "LTL", 0, 7}, {1, -1, 4, 20040110, 100, "LTL", 0, 7}},
     "LTL/7: 0,00 0 of 0,00 0 head 1"},
    {"originating postings after the day fix nothing yet",
     20040110,
     {{1, 1, 5, 20040110, 100, "EUR", 10000, 7}, {2, -1, 4, 20040111, 100, "USD", 10000, 8}},
     "EUR/7: 1,00 1 of 0,00 0 head 1"},
};

TEST(Items, RowsOfAnItem) {
  const auto sharesLastDigit = [](int a, int b) { return a % 10 == b % 10; };
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(shown(itemRows(kItem, c.postings, sharesLastDigit, c.until)), c.want);
  }
}

std::string storedItems(Database& db, const char* account) {
  std::string text;
  auto select = bound(db,
                      "SELECT i.item_id, i.rest_lt, i.is_open FROM open_item i"
                      " JOIN account a ON a.id = i.account_id WHERE a.code = $1 ORDER BY 1, 2",
                      account);
  while (select->step()) {
    if (!text.empty()) text += ", ";
    text += std::to_string(select->integer(0)) + ": " + centsText(select->integer(1)) +
            (select->integer(2) != 0 ? " open" : " closed");
  }
  return text;
}

TEST(Items, ACoverMovesARestFromPrepaymentToInvoice) {
  const auto session = memoryBooks();
  const int prepaid = savedId(*session, {20040101, {{"450", "2711", 300, {{1, kFirmB}}}}});
  const int invoice = savedId(*session, {20040102, {{"204", "450", 500, {{-1, kFirmB}}}}});
  const std::string first = std::to_string(prepaid), second = std::to_string(invoice);
  EXPECT_EQ(storedItems(session->db(), "450"),
            first + ": 300,00 open, " + second + ": -500,00 open");
  const TestEntry cover{"450", "450", 300, {{1, operRef(invoice)}, {-1, operRef(prepaid)}}};
  const int covering = savedId(*session, {20040103, {cover}});
  EXPECT_EQ(storedItems(session->db(), "450"),
            first + ": 0,00 closed, " + second + ": -200,00 open");

  ASSERT_EQ(session->erase("O0201500", operRef(covering)).Code, kDone);
  EXPECT_EQ(storedItems(session->db(), "450"),
            first + ": 300,00 open, " + second + ": -500,00 open");
  EXPECT_EQ(findingsText(session->db()), "");
}

// An opening balance of many buyers: one pays, the next returns what he had, a third is taken out.
TEST(Items, EachOfManyBuyersKeepsHisOwnShare) {
  const auto session = memoryBooks();
  TestOper opening{20040101, {}};
  for (const char* buyer : {kFirmA, kFirmB, "O000010078"})
    opening.entries.push_back({"240", "500", 10, {{1, buyer}}});
  const int id = savedId(*session, opening);
  const auto pay = [&](int day, const char* buyer, double sum) {
    return savedId(*session, {day, {{"2711", "240", sum, {{-1, buyer}, {-1, operRef(id)}}}}});
  };
  pay(20040105, kFirmB, 4);
  EXPECT_EQ(findingsText(session->db()), "");
  const int late = pay(20040301, "O000010079", 1);
  EXPECT_EQ(findingsText(session->db()), "");
  ASSERT_EQ(session->erase("O0201500", operRef(late)).Code, kDone);
  EXPECT_EQ(findingsText(session->db()), "");
  const RowSetPtr record = loaded(*session, id);
  (*record)["BR"].Rows()->Delete();
  ASSERT_EQ(save(*session, *record).Code, kDone);
  EXPECT_EQ(findingsText(session->db()), "");
  const std::string item = std::to_string(id);
  EXPECT_EQ(storedItems(session->db(), "240"), item + ": 6,00 open, " + item + ": 10,00 open");
}

TEST(Items, AnEditedInvoiceCarriesItsPaymentsAlong) {
  const auto session = memoryBooks();
  const int invoice = savedId(*session, {20040102, {{"240", "500", 500, {{1, kFirmA}}}}});
  savedId(*session, {20040103, {{"2711", "240", 200, {{-1, kFirmA}, {-1, operRef(invoice)}}}}});
  const RowSetPtr record = loaded(*session, invoice);
  RowSet& BR = *(*record)["BR"].Rows();
  BR["SumA"] = 150.0;
  (*BR["BRProperties"].Rows())["FOIDR"] = kFirmB;
  ASSERT_EQ(save(*session, *record).Code, kDone);
  EXPECT_EQ(storedItems(session->db(), "240"), std::to_string(invoice) + ": -50,00 open");
  EXPECT_EQ(findingsText(session->db()), "");
}

}  // namespace
}  // namespace tolvex::store
