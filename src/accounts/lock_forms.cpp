#include "accounts/lock_forms.h"

#include "accounts/frmBRLock.h"
#include "accounts/frmBRLockDate.h"
#include "platform/host.h"

namespace tolvex {

void registerLockForms(FormRegistry& forms) {
  forms.add<LockListRequest>(kLockScreen, [](const LockListRequest& request) {
    return std::make_shared<frmBRLock>(request);
  });
  forms.add<LockDateRequest>(kLockDateScreen, [](const LockDateRequest& request) {
    return std::make_shared<frmBRLockDate>(request);
  });
}

std::shared_ptr<ui::Form> makeLockScreen(const FormRegistry& forms, HostContext& host,
                                         std::string_view lock) {
  if (host.rights().of(kLockRights).view == 0) return nullptr;
  return forms.make(kLockScreen, LockListRequest{host, std::string(lock)});
}

}  // namespace tolvex
