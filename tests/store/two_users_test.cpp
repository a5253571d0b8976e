// Two users at work in the same books at the same time, each on a connection of his own.
#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <thread>

#include "framework/references.h"
#include "host/store/numbering.h"
#include "host/store/sql.h"
#include "tests/store/oper_books.h"

namespace tolvex::store {
namespace {

enum class Where { File, Postgres };

class TwoUsers : public testing::TestWithParam<Where> {
 protected:
  void SetUp() override {
    place_ = GetParam() == Where::File ? OperPlace::file() : OperPlace::postgres();
    if (!place_) GTEST_SKIP() << "no PostgreSQL server (TOLVEX_TEST_PG)";
    first_ = place_->open();
    second_ = place_->open();
  }

  template <class FirstWork, class SecondWork>
  void together(FirstWork a, SecondWork b) {
    std::atomic<int> ready{0};
    const auto start = [&ready] {
      ++ready;
      while (ready < 2) std::this_thread::yield();
    };
    std::thread other([&] {
      start();
      b(*second_);
    });
    start();
    a(*first_);
    other.join();
  }

  std::unique_ptr<OperPlace> place_;
  std::unique_ptr<Session> first_, second_;
};

const TestOper kInvoice{20040115, {{"240", "500", 20, {{1, kFirmA}}}}};

TEST_P(TwoUsers, OneOfTwoSavesOfTheSameOperationIsTold) {
  for (int round = 0; round < 10; ++round) {
    const int id = savedId(*first_, kInvoice);
    const RowSetPtr records[] = {loaded(*first_, id), loaded(*second_, id)};
    int codes[2] = {-1, -1};
    const auto work = [&](int who) {
      return [&, who](Session& session) {
        RowSet& record = *records[who];
        (*record["BR"].Rows())["SumA"] = 100.0 + who;
        codes[who] = save(session, record).Code;
      };
    };
    together(work(0), work(1));
    EXPECT_EQ(std::set<int>({codes[0], codes[1]}), (std::set<int>{kDone, kChangedByOther}));
    const int winner = codes[0] == kDone ? 0 : 1;
    EXPECT_EQ((*(*loaded(*first_, id))["BR"].Rows())["SumA"].Number(), 100.0 + winner);
  }
  EXPECT_EQ(findingsText(first_->db()), "");
}

TEST_P(TwoUsers, NumbersAreDrawnWithoutDoublesAndGaps) {
  constexpr int kEach = 15;
  std::set<int> drawn[2];
  const auto work = [&](int who) {
    return [&, who](Session& session) {
      for (int i = 0; i < kEach; ++i) {
        const RowSetPtr record = newOperation(session, {20040115, {{"2711", "500", 1}}, 4});
        const int number =
            offerNumber(session, *readNumberRules(session.db(), 4), 1, "AD", "O0201500", 20040115);
        (*record)["AutoNumber"] = static_cast<double>(number);
        (*record)["Number"] = session.offer().text;
        const SaveOutcome saved = save(session, *record);
        ASSERT_EQ(saved.Code, kDone) << saved.Text;
        drawn[who].insert(static_cast<int>((*record)["AutoNumber"].Number()));
      }
    };
  };
  together(work(0), work(1));
  std::set<int> all = drawn[0];
  all.merge(drawn[1]);
  EXPECT_EQ(all.size(), 2u * kEach);
  EXPECT_EQ(*all.rbegin(), 2 * kEach);
  EXPECT_EQ(integerFrom(first_->db(), "SELECT COUNT(DISTINCT number) FROM oper"), 2 * kEach);
  EXPECT_EQ(findingsText(first_->db()), "");
}

// Both point at the two invoices in opposite order and meet on the same roll-ups and items.
TEST_P(TwoUsers, PaymentsOfTheSameInvoicesAllCount) {
  constexpr int kEach = 10;
  const int invoices[] = {savedId(*first_, {20040115, {{"240", "500", 1000, {{1, kFirmA}}}}}),
                          savedId(*first_, {20040116, {{"240", "500", 1000, {{1, kFirmB}}}}})};
  const auto work = [&](int who) {
    return [&, who](Session& session) {
      for (int i = 0; i < kEach; ++i) {
        const TestEntry one{"2711", "240", 1, {{-1, operRef(invoices[who])}}};
        const TestEntry two{"2711", "240", 2, {{-1, operRef(invoices[1 - who])}}};
        savedId(session, {20040201, {one, two}});
      }
    };
  };
  together(work(0), work(1));
  for (const int invoice : invoices) {
    EXPECT_EQ(
        integerFrom(first_->db(), "SELECT rest_lt FROM open_item WHERE item_id = $1", invoice),
        100000 - kEach * 300);
  }
  EXPECT_EQ(findingsText(first_->db()), "");
}

TEST_P(TwoUsers, AnInvoiceIsNotDeletedUnderItsPayment) {
  for (int round = 0; round < 10; ++round) {
    const int id = savedId(*first_, kInvoice);
    int erased = -1, paid = -1;
    together([&](Session& s) { erased = s.erase("O0201500", operRef(id)).Code; },
             [&](Session& s) {
               const RowSetPtr record =
                   newOperation(s, {20040201, {{"2711", "240", 5, {{-1, operRef(id)}}}}});
               paid = save(s, *record).Code;
             });
    EXPECT_TRUE((erased == kDone && paid == kReferred) || (erased == kReferred && paid == kDone))
        << erased << " " << paid;
  }
  EXPECT_EQ(findingsText(first_->db()), "");
}

INSTANTIATE_TEST_SUITE_P(Engines, TwoUsers, testing::Values(Where::File, Where::Postgres),
                         [](const auto& param) {
                           return param.param == Where::File ? "File" : "Postgres";
                         });

}  // namespace
}  // namespace tolvex::store
