#include "operations/screen/balance_list.h"

#include <map>
#include <utility>

#include "framework/conversions.h"
#include "framework/rounding.h"
#include "framework/told.h"
#include "operations/screen/operation_rows.h"

namespace tolvex {
namespace {

std::string accountName(const DictionaryPtr& accounts, const std::string& account) {
  const Variant* name = accounts ? accounts->Find(account) : nullptr;
  return name ? name->Show() : std::string();
}

}  // namespace

double AccountBalance::balanceLt() const { return roundHalfEven(debitLt - creditLt, 2); }

std::vector<AccountBalance> operationBalance(RowSet& BR) {
  std::map<std::string, AccountBalance> byAccount;
  const RowSetPtr walk = BR.Clone();
  ForEachRow(*walk, [&](RowSet& entry) {
    const double sum = entry["SumA"].Number();
    if (sum == 0) return;
    const std::string debit(entry["AccountD"].Text());
    const std::string credit(entry["AccountC"].Text());
    if (debit != "0") byAccount[debit].debitLt += sum;
    if (credit != "0") byAccount[credit].creditLt += sum;
  });
  std::vector<AccountBalance> balances;
  balances.reserve(byAccount.size());
  for (auto& [account, balance] : byAccount) {
    balance.account = account;
    balances.push_back(std::move(balance));
  }
  return balances;
}

void showOperationBalance(ui::ListView& list, VXObjectUIO& object) {
  const NumberFormat numbers = list.form.host().numbers();
  const DictionaryPtr accounts = toldDictionary(object.Properties("AccountList", ""));
  std::vector<ui::Row> lines;
  AccountBalance total;
  const auto add = [&](const AccountBalance& balance, std::string name) {
    ui::Row row;
    row.key = balance.account;
    row.cells = {balance.account, std::move(name), FormatSum(balance.debitLt, numbers),
                 FormatSum(balance.creditLt, numbers), FormatSum(balance.balanceLt(), numbers)};
    lines.push_back(std::move(row));
  };
  for (const AccountBalance& balance : operationBalance(*entriesOf(object))) {
    total.debitLt += balance.debitLt;
    total.creditLt += balance.creditLt;
    add(balance, accountName(accounts, balance.account));
  }
  if (!lines.empty()) {
    add(total, "Iš viso");
    lines.back().bold = true;
  }
  list.setRows(std::move(lines));
}

}  // namespace tolvex
