// The lines of a template: the accounts of an entry, its factor, and what each side requires.
//
// A template's record keeps lines and required addressees in two sets side by side, linked by the
// line's GUID. These functions keep the two together; nothing is stored until the record is.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "framework/param_dictionary.h"
#include "framework/recordset.h"

namespace tolvex {

// Accounts of a line beyond those of the plan.
inline constexpr const char* kOpeningAccount = "0";  // the side has no account
inline constexpr const char* kAnyAccount = "*";      // chosen when the template is used

struct RequiredAddressee {
  std::string kind;       // object code
  int sign = 1;           // 1 debit, -1 credit
  std::string reference;  // the one addressee that is meant, or ""
  bool operator==(const RequiredAddressee&) const = default;
};

struct TemplateLine {
  std::string guid;
  std::string accountD, accountC;
  double factor = 1;
  std::vector<RequiredAddressee> required;
};

// The accounts that a line may name: those of the plan, before them "0" and "*".
ParamDictionary templateAccounts(const ParamDictionary& plan);

// The line with that GUID; a line of defaults with an empty GUID when there is none.
TemplateLine templateLine(RowSet& record, std::string_view guid);

// Writes a line that is there already, or adds it. What it requires and the set lacks is added,
// what it no longer requires goes; a kind stands once a side.
void writeTemplateLine(RowSet& record, const TemplateLine& line);

// Takes a line out, with what it requires. True when there was one.
bool removeTemplateLine(RowSet& record, std::string_view guid);

}  // namespace tolvex
