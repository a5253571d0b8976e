// Entries: how rows of BR are made, marked and deleted inside one operation.
//
// Every function works on the BR set of the operation's own header row and shows no message. Tests
// come before the first write: a refusal changes nothing. Sign is 1 for debit, -1 for credit.
// Codes: 0 done, 777 refused; any other comes from the store.
#pragma once

#include <string>
#include <string_view>

#include "framework/recordset.h"
#include "framework/results.h"
#include "operations/new_entry.h"
#include "platform/objects.h"

namespace tolvex {

inline constexpr std::size_t kShowStringLength = 800;  // of an addressee's text, in characters

// The BR set of an operation's header row.
RowSetPtr entriesOf(VXObjectUIO& operation);
// A cursor of its own on one entry, with all its fields; null when there is none.
RowSetPtr entryOf(VXObjectUIO& operation, std::string_view guid);

// --- adding --------------------------------------------------------------------------------------

// Adds one entry with its currency rows and addressees; Value is its GUID, "" on a refusal. The
// entry takes the operation's date unless it has its own; an operation without a date takes today.
// The cursor stands on the new entry.
MethodResult AddBR(VXObjectUIO& operation, const NewEntry& entry);

// Adds an entry for each line of a template, each with the line's share of the litas sum; currency
// sums are not shared out. An addressee that a line fixes is attached unless one was given.
MethodResult AddTemplate(VXObjectUIO& operation, const TemplateEntries& entries);

// Adds a bare entry: date, sum, debit, credit, comment, mark; the last two may be missing. Neither
// rounds nor tests.
MethodResult CreateBR(VXObjectUIO& operation, Arguments par);

// --- addressees -------------------------------------------------------------------------------

// Attaches an addressee to the entry at the cursor of BR, or replaces the one of the same kind on
// the same side. With `checkRequired` only one that the entry's accounts demand is taken. Anything
// but a reference with sign 1 or -1 is passed over.
void SetBRAddressee(RowSet* BR, int sign, std::string_view reference, std::string_view shown,
                    bool checkRequired);

// The first addressee of each side that is no operation, as a key of the entry's line:
// "D<reference>#<text>#C<reference>#<text>", a missing side left out.
std::string AddresseeKeyString(RowSet& BRProperties);

// --- deleting ---------------------------------------------------------------------------------

// Deletes, from the cursor on, the rows that were never stored.
void ClearNewChildRows(RowSet& rows);

// Deletes entries. An empty `guidOrAccount` means all; otherwise `sign` says what it is: 9 the GUID
// of one entry, 1 a debit account, -1 a credit account, 0 an account on either side. With a
// reference, entries with a sum and with addressees go only if one of these is it (on that side,
// unless the sign is 0); entries without sum or addressees go in any case. The filter of BR is
// cleared. Children that are stored go with their entry when the operation is saved.
MethodResult DeleteBR(VXObjectUIO& operation, std::string_view guidOrAccount, int sign,
                      std::string_view reference);

}  // namespace tolvex
