// The tables of the first schema, in one text for both engines; schema.h tells its tokens.
#pragma once

#include <string>

namespace tolvex::store {

std::string schemaOne();

}  // namespace tolvex::store
