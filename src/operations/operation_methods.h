// The keyed actions of an operation that need nothing above the entries.
#pragma once

#include "framework/method_table.h"
#include "operations/UIO0201500.h"

namespace tolvex {

// Adds one row a key. Subjects above add their own keys ("Debts", "BROperSelect").
void addOperationMethods(MethodTable<UIO0201500>& methods);

// The rates of a day: currency code to litas per unit, without the base currency.
MethodResult GetCurrencyList(VXObjectUIO& operation, Arguments par);

// For any object: the rates of a day, asked of an operation. Null when they cannot be read,
// which has been told, and when the books have no currency.
DictionaryPtr GetCurrencyDictionary(VXObjectUIO& object, DateTime date);

// Entries of other operations that name `reference` as addressee; null when they cannot be read,
// which has been told.
RowSetPtr GetRelatedBR(VXObjectUIO& object, std::string_view reference);

}  // namespace tolvex
