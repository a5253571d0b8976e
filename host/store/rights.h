// Rights of roles: the components, what a role is granted of each, and what must always hold.
//
// Who administers is who has the admin flag of "CUsers". He makes users and roles; the grants of
// a component are changed by who has the admin flag of that very component besides.
#pragma once

#include <span>
#include <string_view>

#include "host/store/session.h"
#include "platform/registration.h"

namespace tolvex::store {

inline constexpr const char* kAdministration = "CUsers";

// Throws `refusal` unless the user of the session administers; then holds off other administrators
// until the end of the transaction, so that two cannot take the right from each other.
void beginAdministration(Session& session, StoreCode refusal = kNoSaveRight);
// Throws 1204 when nobody who may log in would administer any more.
void requireAdministrator(Database& db);

// Writes the changed rows of a role's rights (columns of GetRoleRights): a granted row as it is,
// a row that is not granted any more loses its grant. What changed goes to the protocol.
void saveGrants(Session& session, int roleId, std::string_view roleName, RowSet& rights);

// Adds components that the books do not know yet; every role that administers is granted them.
// Components that the books know stay as they are, whoever brought them. Asks for no right: it is
// the program that brings them, whoever opens the books first.
HostResult registerComponents(Session& session, std::span<const SecurityEntry> components);

}  // namespace tolvex::store
