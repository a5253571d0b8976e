// Who may name an addressee: records of these kinds are deleted only when nobody does.
#pragma once

#include "host/store/record_map.h"

namespace tolvex::store {

// Date and number of operation o, as users read them.
#define TOLVEX_OPER_NAME                               \
  "SUBSTR(CAST(o.day AS VARCHAR(8)), 1, 4) || '.' || " \
  "SUBSTR(CAST(o.day AS VARCHAR(8)), 5, 2) || '.' || " \
  "SUBSTR(CAST(o.day AS VARCHAR(8)), 7, 2) || ' ' || o.serija || o.number"

inline constexpr const char* kNamedByOperation = "Objektas nurodytas operacijoje: ";

// Names of an addressee by its reference. The set of addressees that a deleted operation leaves
// behind names nobody.
inline constexpr Referrer kAddresseeReferrers[] = {
    {kNamedByOperation, "SELECT " TOLVEX_OPER_NAME " FROM oper o WHERE o.client_ref = $1 LIMIT 1",
     true},
    {kNamedByOperation,
     "SELECT " TOLVEX_OPER_NAME " FROM dimset_ref r"
     " JOIN posting p ON p.dimset_id = r.dimset_id AND p.dimset_id <> 0"
     " JOIN oper o ON o.id = p.oper_id WHERE r.foidr = $1 LIMIT 1",
     true},
    {kNamedByOperation,
     "SELECT " TOLVEX_OPER_NAME " FROM entry_ref r JOIN entry e ON e.id = r.entry_id"
     " JOIN oper o ON o.id = e.oper_id WHERE r.role = 2 AND r.foidr = $1 LIMIT 1",
     true},
    {kNamedByOperation,
     "SELECT " TOLVEX_OPER_NAME " FROM oper_doc d JOIN oper o ON o.id = d.oper_id"
     " WHERE d.client_ref = $1 OR d.client_account_ref = $1 OR d.my_account_ref = $1 LIMIT 1",
     true},
    {"Objektas turi banko sąskaitą: ",
     "SELECT account_number FROM bank_account WHERE owner_ref = $1 LIMIT 1", true},
    {"Objektas nurodytas šablone: ",
     "SELECT m.name FROM template_addr a JOIN template_line l ON l.id = a.line_id"
     " JOIN template m ON m.id = l.template_id WHERE a.foidr = $1 LIMIT 1",
     true},
};

}  // namespace tolvex::store
