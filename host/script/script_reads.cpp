// The reads of a script: the state of the screen in front, of its controls, menu and message.
#include "framework/text.h"
#include "host/script/lua_state.h"
#include "host/script/script_engine.h"
#include "platform/layout.h"

namespace tolvex::script {
namespace {

constexpr const char* kLazyRows = "tolvex.listrows";

template <class T>
T& controlAt(lua_State* lua, Engine& engine, const char* what) {
  ui::Control& control = engine.control(textAt(lua, 1));
  T* wanted = dynamic_cast<T*>(&control);
  if (!wanted) throw std::runtime_error(control.name + " is not " + what);
  return *wanted;
}

int readScreen(lua_State* lua, Engine& engine) {
  push(lua, engine.front().name());
  return 1;
}

int readTitle(lua_State* lua, Engine& engine) {
  push(lua, engine.front().title());
  return 1;
}

int readText(lua_State* lua, Engine& engine) {
  ui::Control& control = engine.control(textAt(lua, 1));
  if (auto* box = dynamic_cast<ui::TextBox*>(&control)) {
    push(lua, box->text());
  } else if (auto* combo = dynamic_cast<ui::ComboBox*>(&control)) {
    push(lua, combo->text());
  } else if (auto* picker = dynamic_cast<ui::DatePicker*>(&control)) {
    push(lua, picker->value() ? picker->value()->Text() : std::string());
  } else if (auto* strip = dynamic_cast<ui::TabStrip*>(&control)) {
    push(lua, strip->currentKey());
  } else {
    push(lua, control.caption());
  }
  return 1;
}

int readCaption(lua_State* lua, Engine& engine) {
  push(lua, ui::withoutAccessKey(engine.control(textAt(lua, 1)).caption()));
  return 1;
}

int readEnabled(lua_State* lua, Engine& engine) {
  lua_pushboolean(lua, engine.control(textAt(lua, 1)).usable());
  return 1;
}

int readVisible(lua_State* lua, Engine& engine) {
  lua_pushboolean(lua, engine.control(textAt(lua, 1)).shown());
  return 1;
}

int readChecked(lua_State* lua, Engine& engine) {
  ui::Control& control = engine.control(textAt(lua, 1));
  bool on = false;
  if (auto* box = dynamic_cast<ui::CheckBox*>(&control))
    on = box->on();
  else if (auto* option = dynamic_cast<ui::OptionButton*>(&control))
    on = option->on();
  else if (auto* item = dynamic_cast<ui::MenuItem*>(&control))
    on = item->ticked();
  else
    throw std::runtime_error(control.name + " has no tick");
  lua_pushboolean(lua, on);
  return 1;
}

void pushTexts(lua_State* lua, const std::vector<std::string>& texts) {
  lua_newtable(lua);
  lua_Integer index = 0;
  for (const std::string& text : texts) {
    push(lua, text);
    lua_rawseti(lua, -2, ++index);
  }
}

int readItems(lua_State* lua, Engine& engine) {
  ui::Control& control = engine.control(textAt(lua, 1));
  std::vector<std::string> texts;
  if (auto* combo = dynamic_cast<ui::ComboBox*>(&control)) {
    for (const auto& item : combo->items()) texts.push_back(item.text);
  } else if (auto* tree = dynamic_cast<ui::TreeView*>(&control)) {
    for (const auto& node : tree->nodes()) texts.push_back(node.text);
  } else if (auto* strip = dynamic_cast<ui::TabStrip*>(&control)) {
    for (const auto& tab : strip->tabs())
      if (tab.visible) texts.push_back(tab.caption);
  } else {
    throw std::runtime_error(control.name + " has no items");
  }
  pushTexts(lua, texts);
  return 1;
}

int readFocus(lua_State* lua, Engine& engine) {
  if (const ui::Control* control = engine.front().focus())
    push(lua, control->name);
  else
    lua_pushnil(lua);
  return 1;
}

int readCount(lua_State* lua, Engine& engine) {
  const auto& list = controlAt<ui::ListView>(lua, engine, "a list");
  lua_pushinteger(lua, static_cast<lua_Integer>(list.rows().size()));
  return 1;
}

int readCurrent(lua_State* lua, Engine& engine) {
  ui::Control& control = engine.control(textAt(lua, 1));
  if (auto* tree = dynamic_cast<ui::TreeView*>(&control)) {
    push(lua, tree->current());
    return 1;
  }
  const auto& list = controlAt<ui::ListView>(lua, engine, "a list or a tree");
  if (list.current() < 0)
    lua_pushnil(lua);
  else
    lua_pushinteger(lua, list.current() + 1);
  return 1;
}

// r[1], r["Suma, Lt"], r.key, r.tag, r.hint, r.bold, r.checked, r.mark.
void pushListRow(lua_State* lua, const ui::ListView& list, std::size_t index) {
  const ui::Row& row = list.rows()[index];
  lua_newtable(lua);
  for (std::size_t i = 0; i < row.cells.size(); ++i) {
    push(lua, row.cells[i].text);
    lua_pushvalue(lua, -1);
    lua_rawseti(lua, -3, static_cast<lua_Integer>(i + 1));
    if (i < list.columns.size() && !list.columns[i].caption.empty())
      lua_setfield(lua, -2, list.columns[i].caption.c_str());
    else
      lua_pop(lua, 1);
  }
  setField(lua, "key", row.key);
  setField(lua, "tag", row.tag);
  setField(lua, "hint", row.hint);
  const char* const marks[] = {"none", "good", "bad", "grey"};
  setField(lua, "mark", marks[static_cast<std::size_t>(row.mark)]);
  lua_pushboolean(lua, row.bold);
  lua_setfield(lua, -2, "bold");
  lua_pushboolean(lua, row.checked);
  lua_setfield(lua, -2, "checked");
}

int readRow(lua_State* lua, Engine& engine) {
  const auto& list = controlAt<ui::ListView>(lua, engine, "a list");
  const lua_Integer index =
      lua_isnoneornil(lua, 2) ? list.current() + 1 : luaL_checkinteger(lua, 2);
  if (index < 1 || index > static_cast<lua_Integer>(list.rows().size()))
    lua_pushnil(lua);
  else
    pushListRow(lua, list, static_cast<std::size_t>(index - 1));
  return 1;
}

// rows(list) makes no tables of rows: it is asked by # and index, and reads the list then.
int readRows(lua_State* lua, Engine& engine) {
  (void)controlAt<ui::ListView>(lua, engine, "a list");
  lua_newtable(lua);
  push(lua, textAt(lua, 1));
  lua_rawsetp(lua, -2, &engine);
  luaL_setmetatable(lua, kLazyRows);
  return 1;
}

const ui::ListView& lazyList(lua_State* lua, Engine& engine) {
  lua_rawgetp(lua, 1, &engine);
  const std::string name = textAt(lua, -1);
  lua_pop(lua, 1);
  return dynamic_cast<const ui::ListView&>(engine.control(name));
}

int lazyIndex(lua_State* lua, Engine& engine) {
  const ui::ListView& list = lazyList(lua, engine);
  const lua_Integer index = luaL_checkinteger(lua, 2);
  if (index < 1 || index > static_cast<lua_Integer>(list.rows().size()))
    lua_pushnil(lua);
  else
    pushListRow(lua, list, static_cast<std::size_t>(index - 1));
  return 1;
}

int lazyLength(lua_State* lua, Engine& engine) {
  lua_pushinteger(lua, static_cast<lua_Integer>(lazyList(lua, engine).rows().size()));
  return 1;
}

// Captions of the open menu's entries; "-" for separators, "-" before a disabled one.
int readMenu(lua_State* lua, Engine& engine) {
  const ui::Menu* menu = engine.world().playground().openMenu();
  if (!menu) {
    lua_pushnil(lua);
    return 1;
  }
  std::vector<std::string> texts;
  for (const ui::MenuItem* item : menu->items) {
    if (!item)
      texts.push_back("-");
    else if (item->visible())
      texts.push_back((item->enabled() ? "" : "-") + ui::withoutAccessKey(item->caption()));
  }
  pushTexts(lua, texts);
  return 1;
}

int readMessage(lua_State* lua, Engine& engine) {
  const Message* box = engine.world().playground().openMessage();
  if (!box) {
    lua_pushnil(lua);
    return 1;
  }
  const char* const icons[] = {"none", "info", "question", "exclamation", "stop"};
  const char* const buttons[] = {"ok", "ok cancel", "yes no"};
  const char* const answers[] = {"ok", "cancel", "yes", "no"};
  lua_newtable(lua);
  setField(lua, "text", box->text);
  setField(lua, "title", box->title.value_or(""));
  setField(lua, "icon", icons[static_cast<std::size_t>(box->icon)]);
  setField(lua, "buttons", buttons[static_cast<std::size_t>(box->buttons)]);
  setField(lua, "preset", answers[static_cast<std::size_t>(box->preset)]);
  return 1;
}

int readDump(lua_State* lua, Engine& engine) {
  push(lua, ui::describe(engine.front()));
  return 1;
}

int readScreens(lua_State* lua, Engine& engine) {
  std::vector<std::string> titles;
  for (const auto& form : engine.world().workspace().screens()) titles.push_back(form->title());
  pushTexts(lua, titles);
  return 1;
}

int readShown(lua_State* lua, Engine& engine) {
  pushTexts(lua, engine.takeShown());
  return 1;
}

int readStatus(lua_State* lua, Engine& engine) {
  const Workspace::Status& status = engine.world().workspace().status();
  lua_newtable(lua);
  const std::pair<const char*, const std::string&> fields[] = {{"firm", status.firm},
                                                               {"user", status.user},
                                                               {"books", status.books},
                                                               {"period", status.period},
                                                               {"locked", status.locked}};
  for (const auto& [name, value] : fields) {
    push(lua, value);
    lua_setfield(lua, -2, name);
  }
  return 1;
}

// The report that was shown last, as text.
int readReport(lua_State* lua, Engine& engine) {
  if (const ReportDocument* report = engine.world().playground().lastReport())
    push(lua, dump(*report));
  else
    lua_pushnil(lua);
  return 1;
}

int readToday(lua_State* lua, Engine& engine) {
  push(lua, engine.world().today().Text());
  return 1;
}

}  // namespace

void addReads(lua_State* lua) {
  const Function reads[] = {
      {"screen", guarded<readScreen>},   {"title", guarded<readTitle>},
      {"text", guarded<readText>},       {"caption", guarded<readCaption>},
      {"enabled", guarded<readEnabled>}, {"visible", guarded<readVisible>},
      {"checked", guarded<readChecked>}, {"items", guarded<readItems>},
      {"focus", guarded<readFocus>},     {"count", guarded<readCount>},
      {"current", guarded<readCurrent>}, {"row", guarded<readRow>},
      {"rows", guarded<readRows>},       {"menu", guarded<readMenu>},
      {"message", guarded<readMessage>}, {"dump", guarded<readDump>},
      {"screens", guarded<readScreens>}, {"today", guarded<readToday>},
      {"shown", guarded<readShown>},     {"status", guarded<readStatus>},
      {"report", guarded<readReport>},
  };
  for (const Function& read : reads) lua_register(lua, read.name, read.function);
  luaL_newmetatable(lua, kLazyRows);
  lua_pushcfunction(lua, guarded<lazyIndex>);
  lua_setfield(lua, -2, "__index");
  lua_pushcfunction(lua, guarded<lazyLength>);
  lua_setfield(lua, -2, "__len");
  lua_pop(lua, 1);
}

}  // namespace tolvex::script
