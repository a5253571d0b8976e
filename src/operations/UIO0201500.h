// UIO0201500: one financial operation, of whatever document kind.
//
// Wraps a generic object of the host; its own are the keyed reads and actions of operations, three
// lists that it keeps, and a save that does not lose what was typed.
#pragma once

#include <memory>
#include <string>

#include "framework/form_registry.h"
#include "framework/method_table.h"
#include "framework/object_contract.h"

namespace tolvex {

class UIO0201500;

inline constexpr const char* kOperationKind = "O0201500";

// What operations need of the rest of the module; filled once when it is loaded.
struct OperationTables {
  FormRegistry forms;
  MethodTable<UIO0201500> methods;
};
using OperationTablesPtr = std::shared_ptr<const OperationTables>;

class UIO0201500 final : public ForwardingUIO {
 public:
  explicit UIO0201500(OperationTablesPtr tables);

  // Keys are compared as exact text, in this order: reads without parameters, reads with the
  // caller's parameters, the three lists kept here ("CurrencyList", "AddresseeList" and
  // "AccountList", the last a dictionary of account and name), "GetObjectForm"; any other key goes
  // to the store as it is. A failure of the store is shown.
  MethodResult Properties(std::string key, std::string parameters) override;
  // Dispatches by the module's table of actions; an unknown key does nothing and succeeds.
  MethodResult Methods(std::string key, std::span<const Variant> par) override;
  using ForwardingUIO::Methods;
  // A failed save of a new operation leaves a fresh record with all that was typed, but without the
  // identities that the attempt gave out; RsFields and Fields are then other sets than before.
  SaveResult Save(RowSetPtr second, RowSetPtr third) override;

  const OperationTables& tables() const { return *tables_; }

 private:
  MethodResult property(const std::string& key, const std::string& parameters);
  MethodResult currencyList(const std::string& date);
  MethodResult addresseeList();
  MethodResult accountList();
  MethodResult objectForm(const std::string& parameters);
  void rescue(const RowSetPtr& typed);

  OperationTablesPtr tables_;
  DictionaryPtr accounts_;  // null until first asked for; a failed first read leaves it empty
  RowSetPtr currencies_, addressees_;
};

// Copies every row of `from`, nested sets included, as new rows of `to`: absent values and the
// identities in ID are left out. Filters of `from` are cleared.
void copyAsNew(RowSet& from, RowSet& to);

}  // namespace tolvex
