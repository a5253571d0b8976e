#include "accounts/frmBRLockDate.h"

#include "accounts/account_messages.h"

namespace tolvex {

frmBRLockDate::frmBRLockDate(const LockDateRequest& request)
    : Form(request.host, kLockDateScreen),
      locks_(request.locks),
      OIDR((*locks_)["OIDR"].Text()),
      place_(locks_->Bookmark()) {
  setTitle("Blokavimas");
  dtpAdmin.mayBeEmpty = dtpUser.mayBeEmpty = true;
  cmdWrite.shortcut = "Ctrl+S";
  cmdWrite.isDefault = true;
  cmdCancel.isCancel = true;
  optOneAccount.onChange = optAllAccounts.onChange = [this] { applyOptions(); };
  optLock.onChange = optNotLock.onChange = [this] { applyOptions(); };
  dtpAdmin.onChange = [this] { showDates(afterHighMoved(dates())); };
  dtpUser.onChange = [this] { showDates(afterLowMoved(dates())); };
  cmdWrite.onClick = [this] { write(); };
  cmdCancel.onClick = [this] { close(); };
  optOneAccount.choose();
  optLock.choose();
  showDates(lockDatesOf(*locks_));
  applyOptions();
  setFocus(dtpUser);
}

const char* frmBRLockDate::picture() const {
  return R"(
optOneAccount | optAllAccounts | >>
lblAccounts>
optLock | optNotLock | >>
[fraDates]
  dtpAdmin | >>
  dtpUser | >>
>> | cmdCancel | cmdWrite
)";
}

void frmBRLockDate::showDates(const LockDates& dates) {
  dtpAdmin.value = dates.high;
  dtpUser.value = dates.low;
}

void frmBRLockDate::applyOptions() {
  fraDates.enabled = optLock.on();
  RowSet& account = *locks_;
  lblAccounts.caption =
      optOneAccount.on()
          ? std::string(account["Account"].Text()) + " " + std::string(account["Preview"].Text())
          : "Sąskaitų sąraše: " + std::to_string(locks_->RecordCount());
}

void frmBRLockDate::write() {
  const LockDates wanted = optNotLock.on() ? LockDates{} : dates();
  if (optLock.on() && !wanted.any()) {
    warn(host(), "Nenurodyta blokavimo data!");
    setFocus(dtpUser);
    return;
  }
  const auto user = host().user().row();
  const std::string reference = user ? user->reference : std::string();
  if (optAllAccounts.on()) {
    writeLocks(*locks_, wanted, reference);
  } else {
    writeLock(*locks_, wanted, reference);
  }
  // The list travels as one save under the lock of its current account.
  const auto lock = host().objects().open(OIDR);
  const SaveResult saved =
      lock ? lock->Save(locks_, nullptr) : SaveResult{kRefused, "Blokavimo įrašas neperskaitytas!"};
  if (saved.Code != kDone) {
    locks_->CancelBatch();
    locks_->SetBookmark(place_);
    return showFailedWrite(host(), saved.Text);
  }
  result = 1;
  close();
}

}  // namespace tolvex
