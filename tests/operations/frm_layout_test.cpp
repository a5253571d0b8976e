// The screens as text: every control stands in its layout once, and what a user sees of a new, a
// stored and a read-only operation is kept beside this test.
#include "operations/screen/currency_sides.h"
#include "operations/screen/operation_rows.h"
#include "tests/operations/screen_fixture.h"
#include "tests/support/screen_text.h"

namespace tolvex::test {
namespace {

class ScreenTexts : public ScreenTest {};

TEST_F(ScreenTexts, OperationNewStoredAndReadOnly) {
  auto fresh = open(newOperation());
  EXPECT_NO_THROW(fresh->layout());
  expectScreen(*fresh, "frmBROper_new");

  auto object = newOperation();
  (*object->RsFields())["DateD"] = DateTime::Of(2003, 2, 9);
  (*object->RsFields())["Comment"] = "Prekės pagal sąskaitą SS 10482";
  add(*object, "240", "500", 345.28);
  writeCurrencySides(*entriesOf(*object), {"EUR", 3.4528, 100}, {});
  add(*object, "?", "?", 0);
  auto form = open(object);
  ui::Input user(*form);
  DO(user.enter(form->header.txtNumber, "7"));
  DO(user.click(form->cmdWrite));
  expectScreen(*form, "frmBROper_stored");
  host.rights().table["CBROperRights3"] = {1, 0, 0, 0, 0};
  expectScreen(*open(object), "frmBROper_readonly");
}

TEST_F(ScreenTexts, EntryEditorNewStoredAndReadOnly) {
  auto object = newOperation();
  (*object->RsFields())["DateD"] = DateTime::Of(2003, 2, 9);
  const std::string bare = add(*object, "?", "?", 0);
  auto fresh = edit(object, bare);
  EXPECT_NO_THROW(fresh->layout());
  expectScreen(*fresh, "frmBROperRecord_new");

  const std::string guid = add(*object, "240", "500", 345.28);
  const RowSetPtr entry = entryOf(*object, guid);
  writeCurrencySides(*entry, {"EUR", 3.4528, 100}, {});
  SetBRAddressee(entry.get(), 1, "O000010012", "UAB „Žaliasis krantas“", false);
  expectScreen(*edit(object, guid, false, 1), "frmBROperRecord_stored");
  expectScreen(*edit(object, guid, true), "frmBROperRecord_readonly");
}

}  // namespace
}  // namespace tolvex::test
