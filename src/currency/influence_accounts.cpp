#include "currency/influence_accounts.h"

#include "operations/UIO0201500.h"
#include "operations/screen/preset_accounts.h"

namespace tolvex {
namespace {

constexpr const char* kLastGain = "Clone536";
constexpr const char* kLastLoss = "Clone636";

}  // namespace

InfluenceAccounts readInfluenceAccounts(HostContext& host) {
  const ParamDictionary marked = presetAccounts(host);
  const auto of = [&](const char* mark) {
    const Variant* account = marked.Find(mark);
    return account ? account->AsText() : std::string();
  };
  InfluenceAccounts accounts{of("536"), of("636")};
  if (accounts.gain.empty() || accounts.loss.empty()) {
    warn(host, "Sąskaitų žinyne nepažymėta valiutos kursų pasikeitimo įtakos sąskaita!");
  }
  accounts.loss = host.settings().get(kOperationKind, kLastLoss, accounts.loss);
  accounts.gain = host.settings().get(kOperationKind, kLastGain, accounts.gain);
  return accounts;
}

void rememberInfluenceAccounts(HostContext& host, const InfluenceAccounts& accounts) {
  host.settings().set(kOperationKind, kLastLoss, accounts.loss);
  host.settings().set(kOperationKind, kLastGain, accounts.gain);
}

}  // namespace tolvex
