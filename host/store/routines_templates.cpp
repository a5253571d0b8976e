// Templates of operations and of payments: the tree of them, their lines and instalments.
#include <map>
#include <set>

#include "framework/references.h"
#include "framework/text.h"
#include "host/store/answer.h"
#include "host/store/records.h"
#include "host/store/routine_table.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

constexpr std::string_view kTemplateKind = "O0201600";

constexpr ColumnSpec kTemplates[] = {col::text("ParentCode", 20),   col::text("OwnCode", 20),
                                     col::text("Preview", 200),     col::integer("GroupFlag"),
                                     col::text("AccPreview", 1000), col::text("OIDR", 30)};

struct TemplateNode {
  int id = 0, parent = 0;
  bool group = false;
  std::string name;
};

std::map<int, TemplateNode> templatesById(Database& db) {
  std::map<int, TemplateNode> nodes;
  auto select = bound(db, "SELECT id, parent_id, group_flag, name FROM template");
  while (select->step()) {
    TemplateNode node{select->whole(0), select->whole(1), select->integer(2) != 0,
                      std::string(select->text(3))};
    nodes.emplace(node.id, std::move(node));
  }
  return nodes;
}

// "450-2711, 2441-450" of the lines of each template; "*" where the user chooses.
std::map<int, std::string> accountsOfTemplates(Database& db) {
  std::map<int, std::string> texts;
  auto lines = bound(db,
                     "SELECT l.template_id, COALESCE(d.code, '*'), COALESCE(c.code, '*')"
                     " FROM template_line l LEFT JOIN account d ON d.id = l.account_d"
                     " LEFT JOIN account c ON c.id = l.account_c ORDER BY l.id");
  while (lines->step()) {
    std::string& text = texts[lines->whole(0)];
    if (!text.empty()) text += ", ";
    text += std::string(lines->text(1)) + "-" + std::string(lines->text(2));
  }
  return texts;
}

// Templates that a group of operations has taken into its set.
std::vector<int> templatesOfSets(Database& db, int templateGroup) {
  std::vector<int> ids;
  auto select = bound(db,
                      "SELECT DISTINCT s.template_id FROM template_set s"
                      " JOIN oper_group g ON g.id = s.group_id WHERE g.template_group_id = $1"
                      " ORDER BY s.template_id",
                      templateGroup);
  while (select->step()) ids.push_back(select->whole(0));
  return ids;
}

// The templates below a template group (0: all); of a template, those of the group it stands in.
Variant GetTemplateList(Session& session, const Arguments& arguments, std::string_view) {
  const std::map<int, TemplateNode> nodes = templatesById(session.db());
  const std::map<int, std::string> accounts = accountsOfTemplates(session.db());
  const std::string letter = arguments[1].absent() ? "K" : arguments[1].str();
  int root = arguments[0].integer();
  if (const auto given = nodes.find(root); given != nodes.end() && !given->second.group)
    root = given->second.parent;
  std::multimap<int, const TemplateNode*> children;
  for (const auto& [id, node] : nodes) children.emplace(node.parent, &node);

  Answer answer(kTemplates);
  std::set<int> listed;
  const auto add = [&](const TemplateNode& node, int parent) {
    if (!listed.insert(node.id).second) return;
    const auto text = accounts.find(node.id);
    answer.row()
        .text(letter + std::to_string(parent))
        .text(letter + std::to_string(node.id))
        .text(node.name)
        .integer(node.group ? 1 : 0)
        .text(text == accounts.end() ? std::string() : text->second)
        .text(refOf(kTemplateKind, node.id));
  };
  const auto addBelow = [&](const auto& self, int parent) -> void {
    const auto [first, last] = children.equal_range(parent);
    for (auto child = first; child != last; ++child) {
      add(*child->second, parent);
      self(self, child->second->id);
    }
  };
  addBelow(addBelow, root);
  if (arguments[0].integer() != 0)
    for (const int id : templatesOfSets(session.db(), arguments[0].integer()))
      if (const auto node = nodes.find(id); node != nodes.end()) add(node->second, root);
  return answer.done();
}

constexpr ColumnSpec kRequired[] = {col::text("GUID", 40), col::text("BRTemplateAccGUID", 40),
                                    col::text("FOID", 8), col::text("FOIDR", 30),
                                    col::small("Sign")};
constexpr ColumnSpec kLines[] = {col::integer("ID"),
                                 col::text("GUID", 40),
                                 col::text("AccountD", 20),
                                 col::text("AccountC", 20),
                                 col::number("Factor"),
                                 col::rows("BRTemplateAddr", kRequired),
                                 col::rows("RequiredAddr", kRequired)};

void addRequired(Database& db, std::int64_t line, std::string_view guid, RowSetPtr rows) {
  auto select =
      bound(db, "SELECT foid, foidr, sign FROM template_addr WHERE line_id = $1 ORDER BY id", line);
  Answer answer(std::move(rows));
  while (select->step())
    answer.row()
        .text(guid)
        .text(guid)
        .text(select->text(0))
        .textOrNull(select->text(1))
        .integer(select->integer(2));
  answer.done();
}

// The lines from which a template makes entries, with the addressees that it requires; these are
// given under both names, that of the template and that of the entry.
Variant GetTemplateAccAndAddr(Session& session, const Arguments& arguments, std::string_view) {
  const int id = arguments[0].id().value_or(0);
  if (!anyRow(session.db(), "SELECT 1 FROM template WHERE id = $1", id)) refuseGone();
  auto lines = bound(session.db(),
                     "SELECT l.id, l.guid, COALESCE(d.code, '*'), COALESCE(c.code, '*'), l.factor"
                     " FROM template_line l LEFT JOIN account d ON d.id = l.account_d"
                     " LEFT JOIN account c ON c.id = l.account_c"
                     " WHERE l.template_id = $1 ORDER BY l.id",
                     id);
  Answer answer(kLines);
  while (lines->step()) {
    answer.row()
        .integer(lines->integer(0))
        .text(lines->text(1))
        .text(lines->text(2))
        .text(lines->text(3))
        .number(lines->real(4));
    addRequired(session.db(), lines->integer(0), lines->text(1), answer.nested());
    addRequired(session.db(), lines->integer(0), lines->text(1), answer.nested());
  }
  return answer.done();
}

int heldGroup(Session& session, const Argument& argument) {
  const int group = argument.id().value_or(0);
  if (!session.rights("CBROperGroupRights" + std::to_string(group)).edit) refuseSave();
  return group;
}

// A template belongs to a group's set once, however often it is added.
Variant AddBRTemplateSet(Session& session, const Arguments& arguments, std::string_view) {
  run(session.db(),
      "INSERT INTO template_set (group_id, mode, template_id) VALUES ($1, $2, $3)"
      " ON CONFLICT (group_id, mode, template_id) DO NOTHING",
      heldGroup(session, arguments[0]), arguments[1].str(), arguments[2].integer());
  return {};
}

Variant DeleteTemplateSet(Session& session, const Arguments& arguments, std::string_view) {
  run(session.db(),
      "DELETE FROM template_set WHERE group_id = $1 AND mode = $2 AND template_id = $3",
      heldGroup(session, arguments[0]), arguments[1].str(), arguments[2].integer());
  return {};
}

constexpr ColumnSpec kItems[] = {col::integer("ID"), col::integer("PaymentTemplateID"),
                                 col::small("Days"), col::small("Percent")};

Variant GetItemsList(Session& session, const Arguments& arguments, std::string_view) {
  const auto id = arguments[0].id();
  if (!id) throw Refusal(kWrongParameters, "GetItemsList: '" + arguments[0].str() + "'");
  auto items = bound(session.db(),
                     "SELECT id, template_id, days, percent FROM pay_template_item"
                     " WHERE template_id = $1 ORDER BY days, id",
                     *id);
  return rowsOf(*items, kItems);
}

constexpr Routine kRoutines[] = {
    {"O0201400 O0201500", "GetTemplateList", "iT", false, GetTemplateList},
    {"O0201500 O0201600", "GetTemplateAccAndAddr", "r", false, GetTemplateAccAndAddr},
    {"O0201600", "AddBRTemplateSet", "rti", true, AddBRTemplateSet},
    {"O0201600", "DeleteTemplateSet", "rti", true, DeleteTemplateSet},
    {"O0201700", "GetItemsList", "r", false, GetItemsList},
};

}  // namespace

std::span<const Routine> templateRoutines() { return kRoutines; }

}  // namespace tolvex::store
