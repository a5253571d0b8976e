// The steps of the schema, each one text for both engines.
//
// Tokens: @ID@ a running id; @KEY@ a running id that is never given twice, for records that screens
// hold by their id (a stale screen must not write onto a newcomer); @WR@ a table kept in the order
// of its key.
#pragma once

#include <string>

namespace tolvex::store {

std::string schemaOne();
std::string administrationSchema();
std::string recordLogSchema();
std::string differenceSchema();

}  // namespace tolvex::store
