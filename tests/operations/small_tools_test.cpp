// The small tools around an operation: the copy of today, the choice of a stock comment, how their
// screens look.
#include "operations/comment_list.h"
#include "operations/copy_operation.h"
#include "operations/frmBRCopyByMonthes.h"
#include "operations/frmCommentList.h"
#include "operations/screen/currency_sides.h"
#include "operations/screen/entry_list.h"
#include "operations/screen/operation_rows.h"
#include "tests/operations/screen_fixture.h"
#include "tests/support/screen_text.h"

namespace tolvex::test {
namespace {

class SmallTools : public ScreenTest {};

TEST_F(SmallTools, ACopyIsOfTodayAndPaysNothingTwice) {
  auto object = newOperation();
  RowSet& header = *object->RsFields();
  header["DateD"] = DateTime::Of(2002, 5, 6);
  header["Number"] = "P-7";
  header["Comment"] = "Nuoma";
  const std::string main = add(*object, "450", "2711", 345.28);
  writeCurrencySides(*entriesOf(*object), {"EUR", 3.4528, 100}, {});
  SetBRAddressee(entryOf(*object, main).get(), 1, "O00001001", "UAB Alfa", false);
  SetBRAddressee(entryOf(*object, main).get(), 1, "O02015009", "2002.01.01 Nr. 9", false);
  const std::string follower = add(*object, "6302", "450", 1);
  (*entryOf(*object, follower))["FGUID"] = main;

  const auto copy = copyOperation(host, *object);
  ASSERT_NE(copy, nullptr);
  EXPECT_FALSE(isStored(*copy));
  RowSet& its = *copy->RsFields();
  EXPECT_EQ(its["DateD"].Value().AsDate().Text(), "2003.02.09");
  EXPECT_EQ(its["Number"].Text(), "");
  EXPECT_EQ(its["Comment"].Text(), "Nuoma");
  RowSet& BR = *entriesOf(*copy);
  ASSERT_EQ(BR.RecordCount(), 2);
  BR.MoveFirst();
  const std::string copied(BR["GUID"].Text());
  EXPECT_NE(copied, main);
  EXPECT_EQ(BR["DateD"].Value().AsDate().Text(), "2003.02.09");
  EXPECT_EQ(BR["BRCurrency"].Rows()->RecordCount(), 1);
  RowSet& addressees = *BR["BRProperties"].Rows();
  ASSERT_EQ(addressees.RecordCount(), 1) << "the paid operation is not named again";
  addressees.MoveFirst();
  EXPECT_EQ(addressees["FOIDR"].Text(), "O00001001");
  BR.MoveNext();
  EXPECT_EQ(BR["FGUID"].Text(), copied);
}

TEST_F(SmallTools, CommentParametersHaveNoQuotesAndChoicesStandBehindABlank) {
  EXPECT_EQ(commentListParameters("UAB 'Alfa'", "O0201500"), "'UAB  Alfa ',0,'O0201500'");
  EXPECT_EQ(withComment("Kovo", "nuoma"), "Kovo nuoma");
  EXPECT_EQ(withComment("", "nuoma"), "nuoma");
}

TEST_F(SmallTools, Looks) {
  SpreadTerms terms;
  frmBRCopyByMonthes spreading({host, {DateTime::Of(2003, 1, 31), 100, {}, {}}, terms});
  ui::Input user(spreading);
  spreading.markOpen(true);
  spreading.opened();
  DO(user.enter(spreading.txtMonthCount, "3"));
  DO(user.leave());
  expectScreen(spreading, "frmBRCopyByMonthes");

  host.store().serve(
      "GetCommentList",
      table({{"ID", FieldType::Integer}, {"Name", FieldType::Text}}, {{1, "Grąža"}, {2, "Nuoma"}}));
  std::string chosen;
  frmCommentList comments({host, newOperation(), "", chosen});
  comments.markOpen(true);
  comments.opened();
  expectScreen(comments, "frmCommentList");
}

}  // namespace
}  // namespace tolvex::test
