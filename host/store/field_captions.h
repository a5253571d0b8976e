// What users call the fields of records, for refusals and protocols.
#pragma once

#include <string>
#include <string_view>

namespace tolvex::store {

// The field's own name when users have no word for it.
std::string fieldCaption(std::string_view field);

}  // namespace tolvex::store
