// The object contract for scripts: object(kind or reference) and what can be asked of it. Results
// of the contract are tables {code, text, value}.
#include "framework/references.h"
#include "host/script/lua_values.h"
#include "host/script/script_engine.h"

namespace tolvex::script {
namespace {

constexpr const char* kObjectClass = "tolvex.object";
using Held = std::shared_ptr<VXObjectUIO>;

VXObjectUIO& objectAt(lua_State* lua) {
  return **static_cast<Held*>(luaL_checkudata(lua, 1, kObjectClass));
}

int destroyObject(lua_State* lua) {
  static_cast<Held*>(lua_touserdata(lua, 1))->~Held();
  return 0;
}

// A field of a failed result. Whoever reads its code or text has been told of the failure.
int readFailure(lua_State* lua, Engine& engine) {
  const int plain = lua_upvalueindex(1);
  const std::string name = textAt(lua, 2);
  if (name == "code" || name == "text") {
    lua_getfield(lua, plain, "text");
    engine.noteSeen(textAt(lua, -1));
  }
  lua_getfield(lua, plain, name.c_str());
  return 1;
}

int pushResult(lua_State* lua, int code, const std::string& text, const Variant& value) {
  lua_newtable(lua);
  lua_pushinteger(lua, code);
  lua_setfield(lua, -2, "code");
  setField(lua, "text", text);
  pushValue(lua, value);
  lua_setfield(lua, -2, "value");
  if (code == kDone) return 1;
  lua_newtable(lua);
  lua_newtable(lua);
  lua_rotate(lua, -3, -1);
  lua_pushcclosure(lua, guarded<readFailure>, 1);
  lua_setfield(lua, -2, "__index");
  lua_setmetatable(lua, -2);
  return 1;
}

// object("O02015005"): nil when there is no such object. object("O0201504"): a new one.
int makeObject(lua_State* lua, Engine& engine) {
  const std::string wanted = textAt(lua, 1);
  ObjectFactory& objects = engine.world().workspace().context().objects();
  Held object = isRef(wanted) ? objects.open(wanted) : objects.create(wanted);
  if (!object) {
    lua_pushnil(lua);
    return 1;
  }
  new (lua_newuserdatauv(lua, sizeof(Held), 0)) Held(std::move(object));
  luaL_setmetatable(lua, kObjectClass);
  return 1;
}

int objectProperties(lua_State* lua, Engine&) {
  VXObjectUIO& object = objectAt(lua);
  const std::string parameters = lua_isnoneornil(lua, 3) ? std::string() : textAt(lua, 3);
  const MethodResult result = object.Properties(textAt(lua, 2), parameters);
  return pushResult(lua, result.Code, result.Text, result.Value);
}

int objectMethods(lua_State* lua, Engine&) {
  VXObjectUIO& object = objectAt(lua);
  Variant::Array arguments;
  if (lua_istable(lua, 3)) arguments = valueAt(lua, 3).AsArray();
  const MethodResult result =
      object.Methods(textAt(lua, 2), std::span<const Variant>(arguments.data(), arguments.size()));
  return pushResult(lua, result.Code, result.Text, result.Value);
}

int objectRead(lua_State* lua, Engine&) {
  const SaveResult result = objectAt(lua).Read();
  return pushResult(lua, result.Code, result.Text, {});
}

int objectSave(lua_State* lua, Engine&) {
  const SaveResult result = objectAt(lua).Save(nullptr, nullptr);
  return pushResult(lua, result.Code, result.Text, {});
}

int objectGet(lua_State* lua, Engine&) {
  pushValue(lua, objectAt(lua).Fields()[textAt(lua, 2)].Value());
  return 1;
}

int objectSet(lua_State* lua, Engine&) {
  Field field = objectAt(lua).Fields()[textAt(lua, 2)];
  field.SetValue(valueFor(lua, 3, field.Type()));
  return 0;
}

int objectRows(lua_State* lua, Engine&) {
  pushRows(lua, objectAt(lua).Fields()[textAt(lua, 2)].Rows());
  return 1;
}

int objectAddRow(lua_State* lua, Engine&) {
  const RowSetPtr rows = objectAt(lua).Fields()[textAt(lua, 2)].Rows();
  rows->AddNew();
  if (lua_istable(lua, 3)) setFields(lua, 3, *rows);
  rows->Update();
  pushRow(lua, rows, rows->Bookmark());
  return 1;
}

int objectReference(lua_State* lua, Engine&) {
  push(lua, objectAt(lua).OID());
  return 1;
}

int objectGuid(lua_State* lua, Engine&) {
  push(lua, objectAt(lua).GetGUID());
  return 1;
}

int objectType(lua_State* lua, Engine&) {
  VXObjectUIO& object = objectAt(lua);
  if (!lua_isnoneornil(lua, 2)) object.OType(textAt(lua, 2));
  push(lua, object.OType());
  return 1;
}

// trace(): the store calls since the test began: name, kind, parameters, code, what.
int readTrace(lua_State* lua, Engine& engine) {
  lua_newtable(lua);
  lua_Integer index = 0;
  for (const StoreCall& call : engine.world().trace().calls()) {
    lua_newtable(lua);
    setField(lua, "what", call.what);
    setField(lua, "kind", call.kind);
    setField(lua, "name", call.name);
    setField(lua, "parameters", call.parameters);
    lua_pushinteger(lua, call.code);
    lua_setfield(lua, -2, "code");
    lua_rawseti(lua, -2, ++index);
  }
  return 1;
}

// fault(n, code, text): the n-th store call from now fails.
int armFault(lua_State* lua, Engine& engine) {
  const lua_Integer n = luaL_checkinteger(lua, 1);
  const lua_Integer code = luaL_optinteger(lua, 2, 1299);
  luaL_argcheck(lua, n >= 1 && n <= 1'000'000, 1, "a count from 1");
  const std::string text = lua_isnoneornil(lua, 3) ? "Duomenų bazės klaida!" : textAt(lua, 3);
  engine.world().faults().arm(static_cast<int>(n), static_cast<std::int32_t>(code), text);
  return 0;
}

}  // namespace

void addObjects(lua_State* lua) {
  addValues(lua);
  const Function methods[] = {
      {"properties", guarded<objectProperties>},
      {"methods", guarded<objectMethods>},
      {"read", guarded<objectRead>},
      {"save", guarded<objectSave>},
      {"get", guarded<objectGet>},
      {"set", guarded<objectSet>},
      {"rows", guarded<objectRows>},
      {"addrow", guarded<objectAddRow>},
      {"reference", guarded<objectReference>},
      {"guid", guarded<objectGuid>},
      {"otype", guarded<objectType>},
  };
  luaL_newmetatable(lua, kObjectClass);
  lua_newtable(lua);
  for (const Function& method : methods) {
    lua_pushcfunction(lua, method.function);
    lua_setfield(lua, -2, method.name);
  }
  lua_setfield(lua, -2, "__index");
  lua_pushcfunction(lua, destroyObject);
  lua_setfield(lua, -2, "__gc");
  lua_pushstring(lua, kObjectClass);
  lua_setfield(lua, -2, "__metatable");
  lua_pop(lua, 1);
  lua_register(lua, "object", guarded<makeObject>);
  lua_register(lua, "trace", guarded<readTrace>);
  lua_register(lua, "fault", guarded<armFault>);
}

}  // namespace tolvex::script
