// The acts of a script: each is one gesture of a user on the form in front.
#include <algorithm>

#include "framework/references.h"
#include "framework/text.h"
#include "host/objects/kinds.h"
#include "host/objects/list_report.h"
#include "host/objects/object_rows.h"
#include "host/script/run_files.h"
#include "host/script/script_engine.h"
#include "platform/input.h"

namespace tolvex::script {
namespace {

using ui::Input;

std::string textOf(const Act& act, std::size_t index) {
  return index < act.arguments.size() ? act.arguments[index].Show() : std::string();
}

const Variant& argumentAt(const Act& act, std::size_t index) {
  if (index >= act.arguments.size()) throw ScriptError("an argument is missing");
  return act.arguments[index];
}

template <class T>
T& as(ui::Control& control, const char* what) {
  T* wanted = dynamic_cast<T*>(&control);
  if (!wanted) throw ScriptError(control.name + " is not " + what);
  return *wanted;
}

// A row by its number (from 1), its key, or the text of one of its cells.
int rowOf(const ui::ListView& list, const Variant& wanted) {
  if (wanted.IsNumber()) return wanted.AsInt() - 1;
  const std::string text = wanted.Show();
  if (const int row = list.find(text); row >= 0) return row;
  for (std::size_t i = 0; i < list.rows().size(); ++i)
    for (const ui::Cell& cell : list.rows()[i].cells)
      if (trim(cell.text) == text) return static_cast<int>(i);
  throw ScriptError("no row \"" + text + "\" in " + list.name);
}

// A node by its key or its text.
std::string nodeOf(const ui::TreeView& tree, const std::string& wanted) {
  if (tree.find(wanted)) return wanted;
  for (const ui::TreeNode& node : tree.nodes())
    if (node.text == wanted) return node.key;
  throw ScriptError("no node \"" + wanted + "\" in " + tree.name);
}

std::string choose(Input& input, ui::Control& control, const std::string& text) {
  if (auto* option = dynamic_cast<ui::OptionButton*>(&control)) return input.choose(*option);
  if (auto* combo = dynamic_cast<ui::ComboBox*>(&control)) {
    int index = combo->find(text);
    if (index < 0) index = combo->findKey(text);
    if (index < 0) return "no item \"" + text + "\" in " + combo->name;
    return input.choose(*combo, index);
  }
  auto& strip = as<ui::TabStrip>(control, "a combo box or a tab strip");
  for (const auto& tab : strip.tabs())
    if (tab.caption == text) return input.choose(strip, tab.key);
  return input.choose(strip, text);
}

std::string check(Input& input, ui::Control& control, const Act& act, bool on) {
  if (auto* list = dynamic_cast<ui::ListView*>(&control))
    return input.check(*list, rowOf(*list, argumentAt(act, 1)), on);
  return input.check(as<ui::CheckBox>(control, "a check box"), on);
}

std::string select(Input& input, ui::Control& control, const Act& act) {
  if (auto* tree = dynamic_cast<ui::TreeView*>(&control))
    return input.select(*tree, nodeOf(*tree, textOf(act, 1)));
  auto& list = as<ui::ListView>(control, "a list or a tree");
  return input.select(list, rowOf(list, argumentAt(act, 1)));
}

std::string doubleClick(Input& input, ui::Control& control, const Act& act) {
  if (act.arguments.size() < 2) return input.doubleClick(control);
  if (auto* tree = dynamic_cast<ui::TreeView*>(&control))
    return input.activate(*tree, nodeOf(*tree, textOf(act, 1)));
  auto& list = as<ui::ListView>(control, "a list or a tree");
  return input.activate(list, rowOf(list, act.arguments[1]));
}

std::string rightClick(Input& input, ui::Control& control, const Act& act) {
  if (act.arguments.size() > 1)
    if (std::string why = select(input, control, act); !why.empty()) return why;
  return input.rightClick(control);
}

std::string pick(Engine& engine, const std::string& wanted) {
  Playground& playground = engine.world().playground();
  const auto fits = [&](const ui::MenuItem& item) {
    return item.name == wanted || ui::withoutAccessKey(item.caption()) == wanted;
  };
  const ui::Menu* menu = playground.openMenu();
  if (!menu) return "no menu is open";
  for (ui::MenuItem* item : menu->items) {
    if (!item || !fits(*item)) continue;
    playground.closeMenu();
    ui::Form& owner = item->form;  // the tree's menu is not the front form's
    return Input(owner).pick(*item);
  }
  return "no entry \"" + wanted + "\" in the menu";
}

std::string answerBox(Engine& engine, const std::string& text) {
  const Message* box = engine.world().playground().openMessage();
  if (!box) return "no message is open";
  const std::pair<const char*, Answer> answers[] = {
      {"ok", Answer::Ok}, {"cancel", Answer::Cancel}, {"yes", Answer::Yes}, {"no", Answer::No}};
  for (const auto& [name, reply] : answers) {
    if (text != name) continue;
    const bool yesNo = reply == Answer::Yes || reply == Answer::No;
    const bool offered = yesNo == (box->buttons == Buttons::YesNo) &&
                         (reply != Answer::Cancel || box->buttons == Buttons::OkCancel);
    if (!offered) return "the message has no button \"" + text + "\"";
    engine.world().playground().answer(reply);
    return {};
  }
  return "no such answer: " + text;
}

std::string activate(Engine& engine, const std::string& wanted) {
  Workspace& workspace = engine.world().workspace();
  if (engine.world().playground().modalForm()) return "a modal form is open";
  if (workspace.list().name() == wanted) {
    workspace.activate(workspace.list());
    return {};
  }
  for (const auto& form : workspace.screens()) {
    if (form->name() != wanted && form->title() != wanted && form->objectReference() != wanted)
      continue;
    workspace.activate(*form);
    return {};
  }
  return "no open screen " + wanted;
}

// open("O0201500", {group = "Pirkimai"}): a new document of the kind in a group, by name or the
// first one for documents of the kind; for another kind its empty card. open("O02015005"): the
// stored object.
std::string openObject(Engine& engine, const Act& act) {
  HostContext& host = engine.world().workspace().context();
  const std::string wanted = textOf(act, 0);
  if (isRef(wanted)) {
    return host.desktop().putObject(wanted) ? std::string() : "no screen for " + wanted;
  }
  const auto named = act.options.find("group");
  const auto groups = host.objects().kind("O0201400");
  const auto rows = groupRows(host, "O0201400");
  if (!rows) return "the groups cannot be read";
  for (const ObjectRow& row : *rows) {
    if (row.group) continue;
    if (named != act.options.end() && row.row.cells[0].text != named->second) continue;
    const auto group = host.objects().open(row.row.key);
    if (!group || group->Fields()["FormOID"].Text() != wanted) continue;
    for (const MenuEntry& entry : groups->GetMenu(row.row.key, row.row.tag, row.parent)) {
      if (!entry.caption.starts_with("Nauja ") && !entry.caption.starts_with("Naujas ")) continue;
      const MenuAction action = groups->ClickMenu(row.row.key, row.row.tag,
                                                  entry.id.empty() ? entry.caption : entry.id, "");
      if (auto form = action.Value.As<ui::Form>(); form && !form->isOpen())
        host.screens().show(std::move(form));
      return {};
    }
  }
  if (host.objects().kind(wanted)->AddToDeskTopVXObject("")) return {};  // a card of the program
  return "no group for documents of kind " + wanted;
}

std::string writeReport(Engine& engine, const ReportDocument& report, const std::string& path) {
  ReportOutput* output = engine.world().output();
  if (!output) return "reports cannot be written here";
  const auto format = formatOf(path);
  if (!format) return "not a kind of file that reports are written to: " + path;
  return output->write(report, *format, placeInRun(path), {});
}

std::string saveReport(Engine& engine, const std::string& path) {
  const ReportDocument* report = engine.world().playground().lastReport();
  return report ? writeReport(engine, *report, path) : "no report was shown";
}

// print_list(list), export_list(list, path): what keys and menus offer on any list.
std::string onList(Engine& engine, const Act& act) {
  const auto& list = as<ui::ListView>(engine.control(textOf(act, 0)), "a list");
  if (!list.shown()) return "hidden: " + list.name;
  if (act.name == "print_list") {
    printList(list);
    return {};
  }
  const auto report = reportOf(list);
  return report ? writeReport(engine, *report, textOf(act, 1)) : "nothing to write";
}

std::string onControl(Engine& engine, const Act& act) {
  ui::Control& control = engine.control(textOf(act, 0));
  Input input(control.form);
  const std::string text = textOf(act, 1);
  if (act.name == "enter") return input.enter(control, text);
  if (act.name == "choose") return choose(input, control, text);
  if (act.name == "date") return input.enter(as<ui::DatePicker>(control, "a date box"), text);
  if (act.name == "check" || act.name == "uncheck")
    return check(input, control, act, act.name == "check");
  if (act.name == "click") return input.click(control);
  if (act.name == "select") return select(input, control, act);
  if (act.name == "double_click") return doubleClick(input, control, act);
  if (act.name == "right_click") return rightClick(input, control, act);
  if (act.name == "tick") return input.tick(as<ui::Timer>(control, "a timer"));
  if (act.name == "insert_key") return input.insertKey(as<ui::ListView>(control, "a list"));
  if (act.name == "delete_key") return input.deleteKey(as<ui::ListView>(control, "a list"));
  if (act.name == "drop") return input.drop(control, text);
  if (act.name == "expand") {
    auto& tree = as<ui::TreeView>(control, "a tree");
    return input.expand(tree, nodeOf(tree, text), true);
  }
  return "unknown act " + act.name;
}

std::string gestureOf(Engine& engine, const Act& act) {
  Workspace* workspace = engine.world().isOpen() ? &engine.world().workspace() : nullptr;
  if (!workspace && (act.name == "open" || act.name == "activate")) return "nobody is logged in";
  if (act.name == "open") return openObject(engine, act);
  if (act.name == "activate") return activate(engine, textOf(act, 0));
  if (act.name == "pick") return pick(engine, textOf(act, 0));
  if (act.name == "save_report") return saveReport(engine, textOf(act, 0));
  if (act.name == "print_list" || act.name == "export_list") return onList(engine, act);
  Input input(engine.front());
  if (act.name == "leave") return input.leave();
  if (act.name == "close") {
    if (workspace && &engine.front() == &workspace->list()) return "no screen is open";
    return input.close();
  }
  return onControl(engine, act);
}

}  // namespace

std::string Engine::perform(const Act& act) {
  Playground& playground = world_.playground();
  if (act.name == "shot") {
    const std::string path = placeInRun(textOf(act, 0));
    return playground.shot(path) ? std::string() : "the picture cannot be written: " + path;
  }
  if (act.name == "close_report") {
    return playground.closeReport() ? std::string() : "no report is open";
  }
  if (act.name == "save_as") {
    playground.replyFile(placeInRun(textOf(act, 0)));
    return {};
  }
  if (act.name == "answer") return answerBox(*this, textOf(act, 0));
  if (const Message* box = playground.openMessage()) return "a message is open: " + box->text;
  if (act.name == "restart" || act.name == "login") {
    if (playground.modalForm()) return "a modal form is open";
    if (!world_.workspace().closeAll()) return "a screen refused to close";
    world_.restart(act.name == "login");
    return {};
  }
  const auto gesture = [&]() -> std::string {
    try {
      return gestureOf(*this, act);
    } catch (const ScriptError& error) {
      return error.what();  // no box: the program is not at fault
    }
  };
  return world_.isOpen() ? world_.workspace().gesture(gesture) : gesture();
}

}  // namespace tolvex::script
