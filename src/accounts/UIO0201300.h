// UIO0201300: the lock dates of one account. Every account has its record, with or without dates;
// that of "0" closes the opening balances.
#pragma once

#include <string>

#include "accounts/lock_forms.h"
#include "framework/object_contract.h"
#include "framework/param_dictionary.h"

namespace tolvex {

class UIO0201300 final : public ForwardingUIO {
 public:
  explicit UIO0201300(std::shared_ptr<const FormRegistry> forms)
      : ForwardingUIO(kLockKind), forms_(std::move(forms)) {}

  // "Parent": the account above, by the record's own ParentID. "EnabledAddressee" and any other
  // name read the kind's own set of that name. "AccountList": a dictionary of account and name,
  // "0" first; read once. "GetObjectForm": the screen of locks on this account. A failure is shown.
  MethodResult Properties(std::string key, std::string parameters) override;
  // Every name is an action of the store with the first argument as given. A failure is returned.
  MethodResult Methods(std::string key, std::span<const Variant> par) override;
  using ForwardingUIO::Methods;

 private:
  std::shared_ptr<const FormRegistry> forms_;
  DictionaryPtr accounts_;
};

}  // namespace tolvex
