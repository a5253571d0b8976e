#include "currency/influence_accounts.h"

#include "operations/UIO0201500.h"

namespace tolvex {
namespace {

constexpr const char* kLastGain = "Clone536";
constexpr const char* kLastLoss = "Clone636";

}  // namespace

InfluenceAccounts readInfluenceAccounts(HostContext& host) {
  InfluenceAccounts accounts = markedInfluenceAccounts(host);
  accounts.loss = host.settings().get(kOperationKind, kLastLoss, accounts.loss);
  accounts.gain = host.settings().get(kOperationKind, kLastGain, accounts.gain);
  return accounts;
}

void rememberInfluenceAccounts(HostContext& host, const InfluenceAccounts& accounts) {
  host.settings().set(kOperationKind, kLastLoss, accounts.loss);
  host.settings().set(kOperationKind, kLastGain, accounts.gain);
}

}  // namespace tolvex
