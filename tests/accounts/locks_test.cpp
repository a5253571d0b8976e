// Locks of accounts: how the two dates follow each other, which rows are written, what a refusal
// leaves, what is offered to whom.
#include <gtest/gtest.h>

#include "accounts/UI0201300.h"
#include "accounts/UIO0201300.h"
#include "accounts/frmBRLock.h"
#include "accounts/frmBRLockDate.h"
#include "accounts/lock_dates.h"
#include "platform/input.h"
#include "tests/support/fake_host.h"
#include "tests/support/rows.h"
#include "tests/support/screen_text.h"

namespace tolvex::test {
namespace {

std::optional<DateTime> day(int dayOfMonth) {
  if (dayOfMonth == 0) return std::nullopt;
  return DateTime::Of(2004, 2, static_cast<unsigned>(dayOfMonth));
}

struct Moved {
  const char* name;
  bool highMoved;
  int high, low;          // as the user left them; 0: none
  int wantHigh, wantLow;  // as they stand then
};
const Moved kMoved[] = {
    {"the head's date passes the other one", true, 20, 10, 20, 20},
    {"the head's date comes first", true, 20, 0, 20, 20},
    {"the head's date stays before", true, 5, 10, 5, 10},
    {"the same day is in order", true, 10, 10, 10, 10},
    {"no head's date", true, 0, 10, 0, 10},
    {"the other date falls before the head's", false, 20, 10, 10, 10},
    {"the other date goes", false, 20, 0, 0, 0},
    {"the other date moves on", false, 5, 20, 5, 20},
    {"the other date alone", false, 0, 20, 0, 20},
};

TEST(LockDates, FollowTheOneThatWasMoved) {
  for (const Moved& c : kMoved) {
    const LockDates typed{day(c.high), day(c.low)};
    const LockDates settled = c.highMoved ? afterHighMoved(typed) : afterLowMoved(typed);
    EXPECT_EQ(settled, (LockDates{day(c.wantHigh), day(c.wantLow)})) << c.name;
  }
}

class LockScreens : public testing::Test {
 protected:
  LockScreens() {
    adoptHostContext(nullptr);
    adoptHostContext(&host);
    registerLockForms(*forms);
    kind->VXS(host);
    host.objects().kinds[kLockKind] = kind;
    host.shelf().lists[kLockKind] = rowsOf(
        "OIDR|Account|Preview|DateToHigh:date|DateToLow:date|UserOIDR\n"
        "O02013000|0|Likutis|-|-|-\n"
        "O020130024|240|Pirkėjų skolos|2004.01.31|2004.02.29|O00014012\n"
        "O020130050|500|Pajamos|-|2004.01.31|O00014012\n"
        "O020130060|6001|Savikaina|-|-|-\n");
    const RowSetPtr record = emptyRecord(kLockKind);
    record->AddNew();
    for (const int id : {0, 24, 50, 60}) (void)host.shelf().put(kLockKind, id, *record);
  }
  ~LockScreens() override { adoptHostContext(nullptr); }

  // The list as the screens see it, its cursor on the account.
  RowSetPtr locks(const char* account) {
    const RowSetPtr rows = host.shelf().lists[kLockKind]->Clone();
    while ((*rows)["Account"].Text() != account) rows->MoveNext();
    return rows;
  }
  // Accounts that a save would send, with their dates.
  static std::string changes(RowSet& rows) {
    std::string text;
    const RowSetPtr changed = rows.Changes();
    ForEachRow(*changed, [&](RowSet& row) {
      text.append(row["Account"].Text()).append(" ").append(row["DateToHigh"].Value().Show());
      text.append("-").append(row["DateToLow"].Value().Show()).append(" ");
      text.append(row["UserOIDR"].Text()).append(";");
    });
    return text;
  }

  FakeHost host;
  std::shared_ptr<FormRegistry> forms = std::make_shared<FormRegistry>();
  std::shared_ptr<UI0201300> kind = std::make_shared<UI0201300>(forms);
};

TEST_F(LockScreens, OneAccountOrAllThatAreShownAreWritten) {
  const auto write = [&](RowSetPtr rows, bool all, bool lock) {
    frmBRLockDate form({host, rows});
    form.markOpen(true);
    ui::Input user(form);
    if (all) (void)user.choose(form.optAllAccounts);
    if (lock) {
      (void)user.date(form.dtpUser, DateTime::Of(2004, 3, 31));
    } else {
      (void)user.choose(form.optNotLock);
    }
    EXPECT_EQ(user.click(form.cmdWrite), "");
    EXPECT_EQ(form.result, 1);
    return changes(*rows);
  };
  EXPECT_EQ(write(locks("500"), false, true), "500 -2004.03.31 O00014017;");
  host.shelf().lists[kLockKind]->CancelBatch();
  const RowSetPtr shown = locks("240");
  shown->SetFilter(" DateToLow>'1900.01.01'");
  EXPECT_EQ(write(shown, true, true),
            "240 2004.01.31-2004.03.31 O00014017;500 2004.01.31-2004.03.31 O00014017;");
  host.shelf().lists[kLockKind]->CancelBatch();
  EXPECT_EQ(write(locks("240"), false, false), "240 - O00014017;");
}

TEST_F(LockScreens, ARefusalLeavesTheScreenAsTypedAndTheListAsRead) {
  const RowSetPtr rows = locks("240");
  frmBRLockDate form({host, rows});
  form.markOpen(true);
  ui::Input user(form);
  (void)user.choose(form.optAllAccounts);
  (void)user.date(form.dtpAdmin, DateTime::Of(2004, 3, 15));
  host.shelf().saves = {{1201, "Įrašą pakeitė kitas vartotojas: sąskaita 500"}};
  (void)user.click(form.cmdWrite);
  EXPECT_EQ(host.dialogs().shown.back().text,
            "Klaida!\r\n\r\nĮrašą pakeitė kitas vartotojas: sąskaita 500");
  EXPECT_EQ(host.dialogs().shown.back().icon, Icon::Stop);
  EXPECT_TRUE(form.isOpen());
  EXPECT_EQ(form.dtpUser.value(), DateTime::Of(2004, 3, 15));
  EXPECT_FALSE(rows->HasChanges());
  EXPECT_EQ((*rows)["Account"].Text(), "240");
  EXPECT_EQ(user.click(form.cmdWrite), "");
  EXPECT_EQ(form.result, 1) << "a second try writes";
}

TEST_F(LockScreens, MenusAndScreensFollowTheRight) {
  const auto menu = [&](const char* id) {
    std::string shown;
    for (const MenuEntry& entry : kind->GetMenu(id, kLockKind, "")) shown += entry.caption + "|";
    return shown;
  };
  EXPECT_EQ(menu("O020130050"), "Padėti ant darbo stalo|Panaikinti|Atrinkti|");
  EXPECT_EQ(menu(kLockKind), "Padėti ant darbo stalo|Atrinkti|");
  host.rights().table[kLockRights] = {1, 0, 0, 0, 0};
  EXPECT_TRUE(kind->AddToDeskTopVXObject("O020130050"));
  auto& form = dynamic_cast<frmBRLock&>(*host.desktop().forms.back());
  form.opened();
  EXPECT_EQ(form.lsvBRLock.currentRow()->key, "O020130050");
  ui::Input user(form);
  (void)user.activate(form.lsvBRLock, 2);
  (void)user.deleteKey(form.lsvBRLock);
  EXPECT_TRUE(host.screens().modals.empty());
  EXPECT_TRUE(host.dialogs().shown.empty());
  host.rights().table[kLockRights] = {};
  EXPECT_FALSE(kind->AddToDeskTopVXObject("O020130050"));
  EXPECT_EQ(menu("O020130050"), "Atrinkti|");
}

TEST_F(LockScreens, TheKeyedReadsOfALock) {
  const auto lock = kind->GetVXObject("");
  EXPECT_EQ(lock->OID(), "O02013000") << "locks are not made new";
  host.store().failNext(1299, "nėra ryšio");
  EXPECT_EQ(lock->Properties("AccountList", "").Code, 1299);
  host.store().serve("GetAccountList", rowsOf("Account|Name\n240|Pirkėjų skolos\n500|Pajamos\n"));
  const auto accounts = lock->Properties("AccountList", "").Value.AsDictionary();
  EXPECT_EQ(accounts->Keys(), (std::vector<std::string>{"0", "240", "500"}));
  EXPECT_EQ(accounts->Item("0"), Variant("Likutis"));
  host.store().serve("DO0201300_GetEnabledAddressee", rowsOf("FOID|Name\n"));
  EXPECT_EQ(lock->Properties("EnabledAddressee", "x").Code, kDone);
  EXPECT_EQ(host.store().calls.back().parameters, "None");
  EXPECT_EQ(lock->Properties("GetObjectForm", "").Value.As<ui::Form>()->name(), "frmBRLock");
  EXPECT_EQ(host.dialogs().takeTexts(), std::vector<std::string>{"nėra ryšio"});
}

TEST_F(LockScreens, AsText) {
  frmBRLock list({host, "O020130050"});
  list.opened();
  expectScreen(list, "frmBRLock");
  expectScreen(*std::make_unique<frmBRLockDate>(LockDateRequest{host, locks("240")}),
               "frmBRLockDate");
}

}  // namespace
}  // namespace tolvex::test
