// Tests of the entries of one operation, for single entries and for the list on a screen.
//
// The accounts come from Properties("AccountList") of the operation, which keeps them; a store that
// refuses has told the user already, and its code is passed on.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "framework/results.h"
#include "operations/entry_rules.h"
#include "platform/objects.h"

namespace tolvex {

enum class Strict { No, Yes };

// Value says whether entries may be posted to the account. "0" is no account, and always may.
MethodResult TestAccount(VXObjectUIO& operation, std::string_view account);

// Tests the entry `guid`, or with an empty one every entry that the filter of BR lets through, up
// to the first failure; its code is 777 or, if not strict, 999. On success Value is true.
// The filter on `guid` stays; the cursor is left on the failing entry, else on the first.
MethodResult TestOper(VXObjectUIO& operation, std::string_view guid, Strict strict);

// One line of the list of entries. Texts are as shown.
struct EntryLine {
  std::string guid;
  std::string date, accountD, accountC;
  std::string sum;                   // litas, as FormatSum
  std::string currencyD, currencyC;  // "100,00 USD", or ""
  std::string pointer;               // text of the first operation that the entry refers to
  std::string addressees;            // AddresseeKeyString
  std::int32_t code = kDone;         // of the strict test
  std::string hint;                  // why the test failed, or ""
};

// Every entry with the result of its strict test, whatever filter stands on BR; filter and cursor
// of BR stay as they are.
std::vector<EntryLine> TestAllEntries(VXObjectUIO& operation);

}  // namespace tolvex
