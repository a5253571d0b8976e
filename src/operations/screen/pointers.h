// Pointers of an entry: the flat list of triples (sign, reference, shown text) that names the
// operation an entry settles and the addressees on either side.
#pragma once

#include <string_view>

#include "operations/new_entry.h"
#include "platform/objects.h"

namespace tolvex {

// The same pointers on the other side.
Variant::Array negated(const Variant::Array& triples);
// As they are, and once more on the other side: of an entry both sides of which speak for them.
Variant::Array onBothSides(const Variant::Array& triples);

// What a screen tells that makes no entries without them.
inline constexpr const char* kUnreadAddressees = "Nepavyko perskaityti skolos adresatų !";

// Adds the addressees of the debt's own entries: of operation OIDR on the debt's account, opposite
// to `sign`, the side on which the debt is settled. One of a kind that the list names already is
// passed over; a failed read leaves the list as it is and gives false.
[[nodiscard]] bool AddDebtAddressees(VXObjectUIO& object, Variant::Array& triples,
                                     std::string_view OIDR, std::string_view account,
                                     std::string_view addressee, int sign);

}  // namespace tolvex
