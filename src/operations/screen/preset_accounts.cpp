#include "operations/screen/preset_accounts.h"

#include "framework/parameters.h"
#include "framework/recordset.h"

namespace tolvex {

ParamDictionary presetAccounts(HostContext& host) {
  ParamDictionary accounts;
  const std::shared_ptr<VXObjectUI> groups = host.objects().kind("O0201400");
  if (!groups) return accounts;
  HostResult read;
  groups->BO()->CallBO("GetPresetAccounts", kNoParameters, nullptr, read);
  if (read.Code != kDone) {
    warn(host, read.Text);
  } else if (read.Data.IsRows()) {
    ForEachRow(*read.Data.AsRows(), [&](RowSet& row) {
      if (accounts.Exists(row["Code"].Text())) return;
      accounts.Add(std::string(row["Code"].Text()), std::string(row["Account"].Text()));
    });
  }
  return accounts;
}

}  // namespace tolvex
