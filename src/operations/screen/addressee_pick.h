// The choice of an addressee of an entry through the host's pickers.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/host.h"

namespace tolvex {

struct PickedAddressee {
  std::string reference;  // "" means that the user cleared the value
  std::string showString;
  std::string bankReference, bankName;  // of a bank account
};

// Offers objects of the kinds. Groups and the operation itself are refused with a message; an
// operation is shown by date, number and comment, a bank account by its number. Nothing when
// nothing was chosen.
std::optional<PickedAddressee> pickAddressee(HostContext& host, VXObjectUIO& operation,
                                             std::vector<std::string> kinds,
                                             const std::string& current);

}  // namespace tolvex
