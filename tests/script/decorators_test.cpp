// The decorators of the store: what they note and what they let through.
#include <gtest/gtest.h>

#include "host/script/trace_store.h"

namespace tolvex {
namespace {

// Answers everything and counts what arrives.
class CountingStore final : public store::StorePort {
 public:
  int arrived = 0;
  HostResult call(std::string_view, std::string_view, std::string_view) override {
    return answer();
  }
  HostResult load(std::string_view, std::string_view) override { return answer(); }
  HostResult create(std::string_view, std::string_view) override { return answer(); }
  store::SaveOutcome save(std::string_view, std::string_view, RowSet&, RowSet*, RowSet*) override {
    ++arrived;
    return {kDone, "", "O02015007"};
  }
  HostResult erase(std::string_view, std::string_view) override { return answer(); }
  HostResult list(std::string_view, std::string_view, std::string_view, std::string_view) override {
    return answer();
  }

 private:
  HostResult answer() {
    ++arrived;
    return {kDone, "", Variant("data")};
  }
};

TEST(FaultStore, OnlyTheArmedCallFailsAndDoesNotArrive) {
  CountingStore inner;
  FaultStore store;
  store.setInner(&inner);
  store.arm(2, 1205, "busy");
  EXPECT_EQ(store.call("O0201500", "GetAccountList", "None").Code, kDone);
  const HostResult failed = store.load("O0201500", "O02015001");
  EXPECT_EQ(failed.Code, 1205);
  EXPECT_EQ(failed.Text, "busy");
  EXPECT_EQ(store.list("O0201400", "", "", "").Code, kDone);
  EXPECT_EQ(inner.arrived, 2);
  EXPECT_EQ(store.calls(), 3);
  EXPECT_EQ(store.fired(), "load");
  EXPECT_EQ(store.failedCall(), "load O0201500 O02015001");
}

TEST(FaultStore, ASaveFailsWithACodeAndNeverForLackOfData) {
  CountingStore inner;
  FaultStore store;
  store.setInner(&inner);
  const RowSetPtr header = RowSet::make();
  store.arm(1, kDone, "");
  EXPECT_EQ(store.save("O0201500", "O0201500", *header, nullptr, nullptr).reference, "O02015007");
  EXPECT_TRUE(store.load("O0201500", "O02015007").Data.IsAbsent());  // the next call lacks it
  EXPECT_EQ(inner.arrived, 2) << "and was made all the same";
  store.arm(1, 1299, "lost");
  EXPECT_EQ(store.save("O0201500", "O0201500", *header, nullptr, nullptr).Code, 1299);
  EXPECT_EQ(store.fired(), "save");
  store.armThrow(1, "gone");
  EXPECT_THROW((void)store.save("O0201500", "O0201500", *header, nullptr, nullptr),
               std::runtime_error);
  EXPECT_EQ(inner.arrived, 2);
}

TEST(TraceStore, NotesCallsAndWhatStandsSaved) {
  CountingStore inner;
  TraceStore store(inner);
  const RowSetPtr header = RowSet::make();
  (void)store.call("O0201500", "GetDebts1", "'0','240'");
  (void)store.save("O0201500", "O0201500", *header, nullptr, nullptr);
  (void)store.save("O0201500", "O0201500", *header, nullptr, nullptr);
  ASSERT_EQ(store.calls().size(), 3u);
  EXPECT_EQ(store.calls()[0].name, "GetDebts1");
  EXPECT_EQ(store.calls()[0].parameters, "'0','240'");
  EXPECT_EQ(store.saved(), std::vector<std::string>{"O02015007"});
  (void)store.erase("O0201500", "O02015007");
  EXPECT_TRUE(store.saved().empty());
}

}  // namespace
}  // namespace tolvex
