#include "operations/screen/preset_accounts.h"

#include "framework/parameters.h"
#include "framework/told.h"

namespace tolvex {

ParamDictionary presetAccounts(HostContext& host) {
  ParamDictionary accounts;
  const std::shared_ptr<VXObjectUI> groups = host.objects().kind("O0201400");
  if (!groups) return accounts;
  if (const RowSetPtr rows = toldRows(*groups->BO(), "GetPresetAccounts", kNoParameters)) {
    ForEachRow(*rows, [&](RowSet& row) {
      if (accounts.Exists(row["Code"].Text())) return;
      accounts.Add(std::string(row["Code"].Text()), std::string(row["Account"].Text()));
    });
  }
  return accounts;
}

InfluenceAccounts markedInfluenceAccounts(HostContext& host) {
  const ParamDictionary marked = presetAccounts(host);
  const auto of = [&](const char* mark) {
    const Variant* account = marked.Find(mark);
    return account ? account->AsText() : std::string();
  };
  InfluenceAccounts accounts{of("536"), of("636")};
  if (accounts.gain.empty() || accounts.loss.empty()) {
    warn(host, "Sąskaitų žinyne nepažymėta valiutos kursų pasikeitimo įtakos sąskaita!");
  }
  return accounts;
}

}  // namespace tolvex
