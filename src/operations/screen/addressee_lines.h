// The addressees of one side of an entry: a line for each kind that the accounts require and for
// each addressee attached.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "framework/recordset.h"

namespace tolvex {

struct AddresseeLine {
  std::string kind;  // eight characters
  bool required = false;
  std::string reference;  // "" while there is none
  std::string showString;
  Variant place;  // of the row that it was read from; empty for a line without one

  bool filled() const;
  bool operator==(const AddresseeLine& other) const;
};

// The lines of the entry at the cursor: required kinds first, then what is attached beyond them.
std::vector<AddresseeLine> readAddresseeLines(RowSet& BR, int sign);

// Makes BRProperties of the entry at the cursor say what the lines say: a filled line updates the
// row that it was read from or adds one, the row of an emptied line is deleted. A row that says the
// same already is not touched.
void writeAddresseeLines(RowSet& BR, int sign, const std::vector<AddresseeLine>& lines);

// The line that takes an addressee of that kind: the first of the kind, else a new one at the end.
AddresseeLine& lineFor(std::vector<AddresseeLine>& lines, std::string_view kind);

// Whether a kind may be changed: the list names kinds of eight characters without separators, and
// an empty list names all.
bool kindAllowed(std::string_view list, std::string_view kind);

}  // namespace tolvex
