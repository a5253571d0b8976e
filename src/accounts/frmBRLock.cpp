#include "accounts/frmBRLock.h"

#include <algorithm>

#include "accounts/frmBRLockDate.h"
#include "accounts/lock_dates.h"
#include "framework/kind_menu.h"
#include "framework/references.h"

namespace tolvex {
namespace {

constexpr const char* kOnlyLocked = " DateToLow>'1900.01.01'";

std::string dateText(const std::optional<DateTime>& date) {
  return date ? date->Text() : std::string();
}

}  // namespace

frmBRLock::frmBRLock(const LockListRequest& request)
    : Form(request.host, kLockScreen), wanted_(request.lock) {
  setTitle("Sąskaitų blokavimas");
  const RightFlags rights = host().rights().of(kLockRights);
  cmdDates.visible = rights.change != 0;
  cmdDelete.visible = rights.remove != 0;
  SSCClose.onClick = [this] { close(); };
  chkOnlyLocked.onClick = [this] { fill(); };
  lsvBRLock.onActivate = cmdDates.onClick = [this] { editDates(); };
  lsvBRLock.onDelete = cmdDelete.onClick = [this] { removeLock(); };
  lsvBRLock.onInsert = [this] { editDates(); };
}

const char* frmBRLock::picture() const {
  return R"(
chkOnlyLocked
lsvBRLock>
SSCClose | >> | cmdDelete | cmdDates
)";
}

// One screen shows the locks of all accounts.
std::string frmBRLock::objectReference() const { return refOf(kLockKind, 0); }

void frmBRLock::InitForm() {
  if (const ui::Row* row = lsvBRLock.currentRow()) wanted_ = row->key;
  const auto kind = host().objects().kind(kLockKind);
  locks_ = kind->GetVXObjectList("", "", "");
  fill();
  setFocus(lsvBRLock);
}

void frmBRLock::fill() {
  if (const ui::Row* row = lsvBRLock.currentRow()) wanted_ = row->key;
  std::vector<ui::Row> shown;
  if (locks_) {
    locks_->SetFilter(chkOnlyLocked.on() ? kOnlyLocked : "");
    ForEachRow(*locks_, [&](RowSet& lock) {
      const LockDates dates = lockDatesOf(lock);
      ui::Row row;
      row.key = lock["OIDR"].Text();
      row.cells = {std::string(lock["Account"].Text()), std::string(lock["Preview"].Text()),
                   dateText(dates.high), dateText(dates.low)};
      shown.push_back(std::move(row));
    });
  }
  const bool any = !shown.empty();
  lsvBRLock.setRows(std::move(shown));
  lsvBRLock.current = any ? std::max(lsvBRLock.find(wanted_), 0) : -1;
  cmdDates.enabled = any;
  cmdDelete.enabled = any;
}

bool frmBRLock::onRow() {
  const ui::Row* row = lsvBRLock.currentRow();
  if (!row || !locks_) return false;
  locks_->MoveFirst();
  while (!locks_->Eof() && (*locks_)["OIDR"].Text() != row->key) locks_->MoveNext();
  return !locks_->Eof();
}

void frmBRLock::editDates() {
  if (!cmdDates.visible || !onRow()) return;
  frmBRLockDate dates({host(), locks_});
  host().screens().runModal(dates);
  // Read again also when nothing was written: somebody else's dates may be why.
  InitForm();
}

void frmBRLock::removeLock() {
  if (!cmdDelete.visible || !onRow() || !lockDatesOf(*locks_).any()) return;
  const auto kind = host().objects().kind(kLockKind);
  (void)clickDelete(*kind, lsvBRLock.currentRow()->key);
  InitForm();
}

}  // namespace tolvex
