// Values of the object contract in Lua and back.
//
// Empty and null are the globals `empty` and `null`, kept apart; dates are texts "yyyy.mm.dd";
// record sets are read in place: rows[i].Field, #rows, rows[i]:rows("BRCurrency").
#pragma once

#include "framework/recordset.h"
#include "host/script/lua_state.h"

namespace tolvex::script {

void addValues(lua_State* lua);  // the classes and the globals `empty` and `null`
void pushValue(lua_State* lua, const Variant& value);
void pushRows(lua_State* lua, RowSetPtr rows);
void pushRow(lua_State* lua, RowSetPtr rows, const Variant& bookmark);
Variant valueAt(lua_State* lua, int index);
// As valueAt, read as the column wants it: a text for a date column becomes a date.
Variant valueFor(lua_State* lua, int index, FieldType type);
// Writes the named fields of the table at `index` into the current row.
void setFields(lua_State* lua, int index, RowSet& rows);

}  // namespace tolvex::script
