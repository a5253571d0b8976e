#include "host/script/script_engine.h"

#include "framework/references.h"
#include "host/script/lua_state.h"
#include "host/script/prelude.h"

namespace tolvex::script {
namespace {

constexpr const char* kActs[] = {
    "open",   "close",   "leave",   "activate",    "enter",        "choose",      "date",
    "check",  "uncheck", "click",   "select",      "double_click", "right_click", "pick",
    "answer", "tick",    "shot",    "login",       "restart",      "insert_key",  "delete_key",
    "expand", "drop",    "save_as", "save_report", "print_list",   "export_list", "close_report"};

// The script goes on after its act: an act that could not be done is an error at the script's line.
int afterAct(lua_State* lua, int, lua_KContext) {
  if (lua_type(lua, -1) == LUA_TSTRING) raise(lua, lua_tostring(lua, -1));
  return 0;
}

int yieldAct(lua_State* lua) {
  if (lua != engineOf(lua).thread())
    return luaL_error(lua, "acts work in the test itself only, not inside a coroutine");
  lua_pushvalue(lua, lua_upvalueindex(1));
  lua_insert(lua, 1);
  return lua_yieldk(lua, lua_gettop(lua), 0, afterAct);
}

int defineTest(lua_State* lua) {
  luaL_checktype(lua, 2, LUA_TFUNCTION);
  std::string name = textAt(lua, 1);
  lua_pushvalue(lua, 2);
  engineOf(lua).addTest(std::move(name), luaL_ref(lua, LUA_REGISTRYINDEX));
  return 0;
}

void stopEndless(lua_State* lua, lua_Debug* at) {
  lua_getinfo(lua, "Sl", at);
  luaL_error(lua, "%s:%d: the script takes too many steps", at->short_src, at->currentline);
}

Variant argument(lua_State* lua, int index) {
  switch (lua_type(lua, index)) {
    case LUA_TBOOLEAN:
      return Variant(lua_toboolean(lua, index) != 0);
    case LUA_TNUMBER:
      return Variant(lua_tonumber(lua, index));
    case LUA_TSTRING:
      return Variant(textAt(lua, index));
    default:
      return {};
  }
}

// The yielded values: the act's name and its arguments.
Act readAct(lua_State* lua, int count) {
  Act act;
  const int first = lua_gettop(lua) - count + 1;
  act.name = lua_tostring(lua, first);
  for (int i = 1; i < count; ++i) {
    const int index = first + i;
    if (lua_type(lua, index) != LUA_TTABLE) {
      act.arguments.push_back(argument(lua, index));
      continue;
    }
    lua_pushnil(lua);
    while (lua_next(lua, index)) {
      if (lua_type(lua, -2) == LUA_TSTRING)
        act.options[lua_tostring(lua, -2)] = argument(lua, -1).Show();
      lua_pop(lua, 1);
    }
  }
  return act;
}

void openLibraries(lua_State* lua) {
  const luaL_Reg libraries[] = {{LUA_GNAME, luaopen_base},
                                {LUA_STRLIBNAME, luaopen_string},
                                {LUA_TABLIBNAME, luaopen_table},
                                {LUA_MATHLIBNAME, luaopen_math},
                                {LUA_UTF8LIBNAME, luaopen_utf8}};
  for (const luaL_Reg& library : libraries) {
    luaL_requiref(lua, library.name, library.func, 1);
    lua_pop(lua, 1);
  }
  // A script reads no files and loads no code but its own.
  for (const char* name : {"dofile", "loadfile", "load", "collectgarbage"}) {
    lua_pushnil(lua);
    lua_setglobal(lua, name);
  }
}

}  // namespace

void raise(lua_State* lua, const std::string& text) {
  std::string where;
  lua_Debug at;
  for (int level = 1; where.empty() && lua_getstack(lua, level, &at); ++level) {
    lua_getinfo(lua, "Sl", &at);
    if (*at.source == '@') where = std::string(at.short_src) + ":" + std::to_string(at.currentline);
  }
  push(lua, (where.empty() ? where : where + ": ") + text);
  lua_error(lua);
  std::terminate();  // lua_error does not return
}

Engine::Engine(ScriptWorld& world, Limits limits) : world_(world), limits_(limits) {
  lua_ = luaL_newstate();
  *static_cast<Engine**>(lua_getextraspace(lua_)) = this;
  openLibraries(lua_);
  for (const char* act : kActs) {
    lua_pushstring(lua_, act);
    lua_pushcclosure(lua_, yieldAct, 1);
    lua_setglobal(lua_, act);
  }
  lua_pushcfunction(lua_, defineTest);
  lua_setglobal(lua_, "test");
  addReads(lua_);
  addObjects(lua_);
  addBooks(lua_);
  if (luaL_dostring(lua_, kPrelude)) throw std::runtime_error(lua_tostring(lua_, -1));
}

Engine::~Engine() { lua_close(lua_); }

bool Engine::load(const std::string& text, const std::string& name) {
  if (luaL_loadbufferx(lua_, text.data(), text.size(), ("@" + name).c_str(), "t") == LUA_OK) {
    mainReference_ = luaL_ref(lua_, LUA_REGISTRYINDEX);
    return true;
  }
  outcomes_.push_back({"", lua_tostring(lua_, -1)});
  lua_pop(lua_, 1);
  return false;
}

void Engine::start(int function, std::string name) {
  if (threadReference_) luaL_unref(lua_, LUA_REGISTRYINDEX, threadReference_);
  thread_ = lua_newthread(lua_);
  threadReference_ = luaL_ref(lua_, LUA_REGISTRYINDEX);
  lua_sethook(thread_, stopEndless, LUA_MASKCOUNT, limits_.steps);
  lua_rawgeti(thread_, LUA_REGISTRYINDEX, function);
  testName_ = std::move(name);
  running_ = true;
  waiting_ = false;
}

bool Engine::nextTest() {
  if (!mainReference_) return false;
  if (!mainDone_) {
    mainDone_ = true;
    start(mainReference_, "");
    return true;
  }
  while (world_.playground().closeReport()) continue;  // previews that the last part left
  if (nextTest_ == tests_.size()) return false;
  world_.trace().clear();
  const Test& test = tests_[nextTest_++];
  start(test.function, test.name);
  return true;
}

bool Engine::step() {
  if (!running_) return false;
  if (inScript_) {
    // The script itself called what waits here, so it cannot answer: the loop takes it back.
    if (const std::string open = boxText(); !open.empty()) shown_.push_back(open);
    return false;
  }
  const unsigned mine = ++resumes_;
  int given = 0;
  if (std::exchange(waiting_, false)) {
    if (reply_.empty())
      lua_pushnil(thread_);
    else
      push(thread_, reply_);
    given = 1;
  }
  reply_.clear();
  int yielded = 0;
  inScript_ = true;
  const int status = lua_resume(thread_, lua_, given, &yielded);
  inScript_ = false;
  if (status != LUA_YIELD) {
    finish(status);
    return false;
  }
  const Act act = readAct(thread_, yielded);
  lua_pop(thread_, yielded);
  waiting_ = true;
  std::string why;
  try {
    why = perform(act);
  } catch (const std::exception& error) {
    why = error.what();
  }
  // When a nested loop went on with the script meanwhile, nobody waits for this act's result.
  if (resumes_ == mine) reply_ = why;
  return true;
}

std::string Engine::boxText() {
  const Message* box = world_.playground().openMessage();
  return box ? box->text : std::string();
}

void Engine::finish(int status) {
  running_ = false;
  std::string failure;
  if (status != LUA_OK) {
    const char* text = lua_tostring(thread_, -1);
    failure = text ? text : "an error without a text";
    if (const std::string open = boxText(); !open.empty()) failure += "\nopen message: " + open;
  } else if (const std::string open = boxText(); !open.empty()) {
    failure = "the script ended before an open message: " + open;
  }
  outcomes_.push_back({testName_, failure});
}

ui::Form& Engine::front() {
  if (ui::Form* modal = world_.playground().modalForm()) return *modal;
  if (!world_.isOpen()) throw ScriptError("no books are open");
  return *world_.workspace().current();
}

ui::Control& Engine::control(const std::string& name) {
  ui::Form& form = front();
  if (ui::Control* found = form.find(name)) return *found;
  // The tree stands beside whatever is in front, unless that is modal.
  if (!world_.playground().modalForm() && world_.isOpen())
    if (ui::Control* found = world_.workspace().tree().find(name)) return *found;
  throw ScriptError("no control " + name + " in " + form.name());
}

}  // namespace tolvex::script
