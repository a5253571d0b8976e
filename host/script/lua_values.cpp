#include "host/script/lua_values.h"

#include <cmath>
#include <new>

#include "framework/param_dictionary.h"
#include "framework/recordset.h"

namespace tolvex::script {
namespace {

constexpr const char* kRowsClass = "tolvex.rows";
constexpr const char* kRowClass = "tolvex.row";
int emptyMark = 0, nullMark = 0;  // their addresses stand for the two states

// Rows are found by bookmarks taken once, so that reading a row is no walk.
struct Rows {
  RowSetPtr set;
  std::vector<Variant> bookmarks;
};
struct OneRow {
  RowSetPtr set;
  Variant bookmark;
};

template <class T>
T& objectAt(lua_State* lua, int index, const char* name) {
  return *static_cast<T*>(luaL_checkudata(lua, index, name));
}

template <class T>
int destroy(lua_State* lua) {
  static_cast<T*>(lua_touserdata(lua, 1))->~T();
  return 0;
}

template <class T>
T& pushObject(lua_State* lua, T object, const char* name) {
  T* place = new (lua_newuserdatauv(lua, sizeof(T), 0)) T(std::move(object));
  luaL_setmetatable(lua, name);
  return *place;
}

// Does `work` with the row current, and leaves the set's own place as it was.
template <class Work>
void atRow(OneRow& row, Work work) {
  const Variant place = row.set->HasCurrent() ? row.set->Bookmark() : Variant();
  row.set->SetBookmark(row.bookmark);
  work(*row.set);
  if (!place.IsAbsent()) row.set->SetBookmark(place);
}

int rowsIndex(lua_State* lua, Engine&) {
  Rows& rows = objectAt<Rows>(lua, 1, kRowsClass);
  const lua_Integer index = luaL_checkinteger(lua, 2);
  if (index < 1 || index > static_cast<lua_Integer>(rows.bookmarks.size())) {
    lua_pushnil(lua);
    return 1;
  }
  pushRow(lua, rows.set, rows.bookmarks[static_cast<std::size_t>(index - 1)]);
  return 1;
}

int rowsLength(lua_State* lua, Engine&) {
  lua_pushinteger(lua,
                  static_cast<lua_Integer>(objectAt<Rows>(lua, 1, kRowsClass).bookmarks.size()));
  return 1;
}

int rowRows(lua_State* lua, Engine&) {
  OneRow& row = objectAt<OneRow>(lua, 1, kRowClass);
  const std::string name = textAt(lua, 2);
  RowSetPtr nested;
  atRow(row, [&](RowSet& set) { nested = set[name].Rows(); });
  pushRows(lua, nested);
  return 1;
}

int rowAdd(lua_State* lua, Engine&) {
  OneRow& row = objectAt<OneRow>(lua, 1, kRowClass);
  const std::string name = textAt(lua, 2);
  RowSetPtr nested;
  atRow(row, [&](RowSet& set) { nested = set[name].Rows(); });
  nested->AddNew();
  if (lua_istable(lua, 3)) setFields(lua, 3, *nested);
  nested->Update();
  pushRow(lua, nested, nested->Bookmark());
  return 1;
}

int rowDelete(lua_State* lua, Engine&) {
  OneRow& row = objectAt<OneRow>(lua, 1, kRowClass);
  row.set->SetBookmark(row.bookmark);
  row.set->Delete();
  return 0;
}

int rowIndex(lua_State* lua, Engine&) {
  OneRow& row = objectAt<OneRow>(lua, 1, kRowClass);
  const std::string name = textAt(lua, 2);
  const Function methods[] = {
      {"rows", guarded<rowRows>}, {"addrow", guarded<rowAdd>}, {"delete", guarded<rowDelete>}};
  for (const Function& method : methods) {
    if (name != method.name) continue;
    lua_pushcfunction(lua, method.function);
    return 1;
  }
  Variant value;
  atRow(row, [&](RowSet& set) { value = set[name].Value(); });
  pushValue(lua, value);
  return 1;
}

int rowNewIndex(lua_State* lua, Engine&) {
  OneRow& row = objectAt<OneRow>(lua, 1, kRowClass);
  const std::string name = textAt(lua, 2);
  atRow(row, [&](RowSet& set) {
    Field field = set[name];
    field.SetValue(valueFor(lua, 3, field.Type()));
  });
  return 0;
}

void addClass(lua_State* lua, const char* name, const std::vector<Function>& functions) {
  luaL_newmetatable(lua, name);
  for (const Function& row : functions) {
    lua_pushcfunction(lua, row.function);
    lua_setfield(lua, -2, row.name);
  }
  lua_pushstring(lua, name);
  lua_setfield(lua, -2, "__metatable");  // scripts may not look inside
  lua_pop(lua, 1);
}

}  // namespace

void addValues(lua_State* lua) {
  lua_pushlightuserdata(lua, &emptyMark);
  lua_setglobal(lua, "empty");
  lua_pushlightuserdata(lua, &nullMark);
  lua_setglobal(lua, "null");
  addClass(
      lua, kRowsClass,
      {{"__index", guarded<rowsIndex>}, {"__len", guarded<rowsLength>}, {"__gc", destroy<Rows>}});
  addClass(lua, kRowClass,
           {{"__index", guarded<rowIndex>},
            {"__newindex", guarded<rowNewIndex>},
            {"__gc", destroy<OneRow>}});
}

void pushRows(lua_State* lua, RowSetPtr rows) {
  Rows object{std::move(rows), {}};
  // A second cursor over the same rows: the module's own place and filter stay as they are.
  const RowSetPtr walk = object.set->Clone();
  ForEachRow(*walk, [&](RowSet& set) { object.bookmarks.push_back(set.Bookmark()); });
  object.set = walk;
  pushObject(lua, std::move(object), kRowsClass);
}

void pushRow(lua_State* lua, RowSetPtr rows, const Variant& bookmark) {
  pushObject(lua, OneRow{std::move(rows), bookmark}, kRowClass);
}

void pushValue(lua_State* lua, const Variant& value) {
  if (value.IsEmpty()) {
    lua_pushlightuserdata(lua, &emptyMark);
  } else if (value.IsNull()) {
    lua_pushlightuserdata(lua, &nullMark);
  } else if (value.IsBool()) {
    lua_pushboolean(lua, value.AsBool());
  } else if (value.IsNumber()) {
    const double number = value.AsDouble();
    lua_Integer whole = 0;
    if (lua_numbertointeger(std::trunc(number), &whole) && static_cast<double>(whole) == number)
      lua_pushinteger(lua, whole);
    else
      lua_pushnumber(lua, number);
  } else if (value.IsRows()) {
    pushRows(lua, value.AsRows());
  } else if (value.IsArray()) {
    lua_newtable(lua);
    lua_Integer index = 0;
    for (const Variant& item : value.AsArray()) {
      pushValue(lua, item);
      lua_rawseti(lua, -2, ++index);
    }
  } else if (value.IsDictionary()) {
    lua_newtable(lua);
    const DictionaryPtr dictionary = value.AsDictionary();
    for (const std::string& key : dictionary->Keys()) {
      push(lua, key);
      pushValue(lua, dictionary->Item(key));
      lua_rawset(lua, -3);
    }
  } else if (value.IsObject()) {
    push(lua, "object");
  } else {
    push(lua, value.Show());
  }
}

Variant valueAt(lua_State* lua, int index) {
  switch (lua_type(lua, index)) {
    case LUA_TBOOLEAN:
      return Variant(lua_toboolean(lua, index) != 0);
    case LUA_TNUMBER:
      if (lua_isinteger(lua, index)) {
        const lua_Integer whole = lua_tointeger(lua, index);
        if (whole >= INT32_MIN && whole <= INT32_MAX) return Variant(static_cast<int>(whole));
      }
      return Variant(lua_tonumber(lua, index));
    case LUA_TSTRING:
      return Variant(textAt(lua, index));
    case LUA_TLIGHTUSERDATA:
      return lua_touserdata(lua, index) == &nullMark ? Variant(Null{}) : Variant();
    case LUA_TTABLE: {
      Variant::Array items;
      const lua_Integer count = luaL_len(lua, index);
      const int table = lua_absindex(lua, index);
      for (lua_Integer i = 1; i <= count; ++i) {
        lua_rawgeti(lua, table, i);
        items.push_back(valueAt(lua, -1));
        lua_pop(lua, 1);
      }
      return Variant(std::move(items));
    }
    case LUA_TUSERDATA:
      if (auto* rows = static_cast<Rows*>(luaL_testudata(lua, index, kRowsClass)))
        return Variant(rows->set);
      [[fallthrough]];
    default:
      return {};
  }
}

Variant valueFor(lua_State* lua, int index, FieldType type) {
  Variant value = valueAt(lua, index);
  if (type == FieldType::Date && value.IsText()) {
    const auto date = DateTime::Parse(value.AsText());
    if (!date) throw std::runtime_error("no date: " + value.AsText());
    return Variant(*date);
  }
  if (type == FieldType::Double && value.IsNumber()) return Variant(value.AsDouble());
  return value;
}

void setFields(lua_State* lua, int index, RowSet& rows) {
  const int table = lua_absindex(lua, index);
  lua_pushnil(lua);
  while (lua_next(lua, table)) {
    Field field = rows[textAt(lua, -2)];
    field.SetValue(valueFor(lua, -1, field.Type()));
    lua_pop(lua, 1);
  }
}

}  // namespace tolvex::script
