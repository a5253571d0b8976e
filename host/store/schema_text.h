// The steps of the schema, each one text for both engines; schema.h tells their tokens.
#pragma once

#include <string>

namespace tolvex::store {

std::string schemaOne();
std::string administrationSchema();
std::string recordLogSchema();
std::string differenceSchema();

}  // namespace tolvex::store
