// What the parts of the script engine share: access to Lua, and C++ failures as Lua errors.
#pragma once

#include <exception>
#include <lua.hpp>
#include <string>
#include <string_view>

namespace tolvex::script {

class Engine;

inline Engine& engineOf(lua_State* lua) { return **static_cast<Engine**>(lua_getextraspace(lua)); }

// An error at the script's own line, also when it came through functions of the prelude.
[[noreturn]] void raise(lua_State* lua, const std::string& text);

// A function for scripts: its C++ exceptions become errors at the script's own line.
template <int (*F)(lua_State*, Engine&)>
int guarded(lua_State* lua) {
  std::string text;
  try {
    return F(lua, engineOf(lua));
  } catch (const std::exception& error) {
    text = error.what();
  }
  raise(lua, text);
}

inline void push(lua_State* lua, std::string_view text) {
  lua_pushlstring(lua, text.data(), text.size());
}
inline std::string textAt(lua_State* lua, int index) {
  std::size_t size = 0;
  const char* text = luaL_checklstring(lua, index, &size);
  return {text, size};
}
inline void setField(lua_State* lua, const char* name, std::string_view text) {
  push(lua, text);
  lua_setfield(lua, -2, name);
}

struct Function {
  const char* name;
  lua_CFunction function;
};

// Filled in by the parts.
void addReads(lua_State* lua);    // script_reads.cpp
void addObjects(lua_State* lua);  // script_objects.cpp
void addBooks(lua_State* lua);    // script_books.cpp

}  // namespace tolvex::script
