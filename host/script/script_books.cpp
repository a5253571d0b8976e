// The table `books`: what stands in the books, read past the workspace.
#include "framework/parameters.h"
#include "framework/references.h"
#include "host/script/lua_values.h"
#include "host/script/script_engine.h"
#include "platform/numbers.h"

namespace tolvex::script {
namespace {

constexpr std::string_view kOperations = "O0201500";

std::string plainSum(double sum) { return formatNumber(sum, 2, {}, false); }

RowSetPtr rowsOrThrow(const HostResult& result) {
  if (result.Code != kDone)
    throw std::runtime_error(std::to_string(result.Code) + ": " + result.Text);
  return result.Data.IsRows() ? result.Data.AsRows() : nullptr;
}

// books.balances(date): account -> rest on the account's own side; the date is today unless given.
int balances(lua_State* lua, Engine& engine) {
  DateTime date = engine.world().today();
  if (!lua_isnoneornil(lua, 1)) {
    const auto given = DateTime::Parse(textAt(lua, 1));
    if (!given) throw std::runtime_error("no date: " + textAt(lua, 1));
    date = *given;
  }
  const RowSetPtr rows = rowsOrThrow(engine.world().books().call(
      kOperations, "GetAccountsTotal", Parameters().date(date).text("").str()));
  lua_newtable(lua);
  if (!rows) return 1;
  ForEachRow(*rows, [&](RowSet& row) {
    push(lua, row["Account"].Text());
    lua_pushnumber(lua, row["SumA"].Number());
    lua_rawset(lua, -3);
  });
  return 1;
}

// The text of an entry's sums: the litas sum, then "sum code" of each side in a currency.
std::string sumsOf(RowSet& entry) {
  std::string text = plainSum(entry["SumA"].Number());
  for (const double sign : {1.0, -1.0}) {
    ForEachRow(*entry["BRCurrency"].Rows(), [&](RowSet& side) {
      if (side["Sign"].Number() != sign) return;
      text += " " + plainSum(side["SumCurr"].Number()) + " " +
              std::string(side["FCurrencyCode"].Text());
    });
  }
  return text;
}

// books.entries(reference): {debit, credit, sum, text, info, date, addressees} each.
int entries(lua_State* lua, Engine& engine) {
  const std::string reference = textAt(lua, 1);
  const RowSetPtr header = rowsOrThrow(engine.world().books().load(kOperations, reference));
  lua_newtable(lua);
  if (!header || !header->HasCurrent() || (*header)["OIDR"].IsAbsent()) return 1;
  lua_Integer index = 0;
  ForEachRow(*(*header)["BR"].Rows(), [&](RowSet& entry) {
    lua_newtable(lua);
    setField(lua, "debit", entry["AccountD"].Text());
    setField(lua, "credit", entry["AccountC"].Text());
    setField(lua, "info", entry["Info"].Text());
    setField(lua, "date", entry["DateD"].Value().Show());
    setField(lua, "text", sumsOf(entry));
    lua_pushnumber(lua, entry["SumA"].Number());
    lua_setfield(lua, -2, "sum");
    lua_newtable(lua);
    lua_Integer place = 0;
    ForEachRow(*entry["BRProperties"].Rows(), [&](RowSet& addressee) {
      push(lua,
           (addressee["Sign"].Number() > 0 ? "D " : "C ") + std::string(addressee["FOIDR"].Text()));
      lua_rawseti(lua, -2, ++place);
    });
    lua_setfield(lua, -2, "addressees");
    lua_rawseti(lua, -2, ++index);
  });
  return 1;
}

int verify(lua_State* lua, Engine& engine) {
  lua_newtable(lua);
  lua_Integer index = 0;
  for (const std::string& finding : engine.world().verify()) {
    push(lua, finding);
    lua_rawseti(lua, -2, ++index);
  }
  return 1;
}

// books.call("DO0201500_GetDebts1", "'0','240',…"): {code, text, value}.
int call(lua_State* lua, Engine& engine) {
  const std::string parameters = lua_isnoneornil(lua, 2) ? kNoParameters : textAt(lua, 2);
  const HostResult result = engine.world().books().call(kOperations, textAt(lua, 1), parameters);
  lua_newtable(lua);
  lua_pushinteger(lua, result.Code);
  lua_setfield(lua, -2, "code");
  setField(lua, "text", result.Text);
  pushValue(lua, result.Data);
  lua_setfield(lua, -2, "value");
  return 1;
}

int saved(lua_State* lua, Engine& engine) {
  lua_newtable(lua);
  lua_Integer index = 0;
  for (const std::string& reference : engine.world().trace().saved()) {
    push(lua, reference);
    lua_rawseti(lua, -2, ++index);
  }
  return 1;
}

int sumText(lua_State* lua, Engine&) {
  push(lua, plainSum(luaL_checknumber(lua, 1)));
  return 1;
}

}  // namespace

void addBooks(lua_State* lua) {
  const Function functions[] = {{"balances", guarded<balances>}, {"entries", guarded<entries>},
                                {"verify", guarded<verify>},     {"call", guarded<call>},
                                {"saved", guarded<saved>},       {"text", guarded<sumText>}};
  lua_newtable(lua);
  for (const Function& function : functions) {
    lua_pushcfunction(lua, function.function);
    lua_setfield(lua, -2, function.name);
  }
  lua_setglobal(lua, "books");
}

}  // namespace tolvex::script
