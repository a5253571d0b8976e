#include "host/store/plan_swap.h"

#include <optional>
#include <string>
#include <vector>

#include "framework/text.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

constexpr int kOpeningPlan = -9;  // of the account "0", which belongs to every plan

struct Node {
  int id = 0, plan = 0;
  std::optional<std::int64_t> parent, mark;
  std::string code, name, type, path;
  int group = 0, tracked = 0;
};

std::vector<Node> readNodes(Database& db) {
  std::vector<Node> nodes;
  auto rows = db.prepare(
      "SELECT id, plan, parent_id, mark_id, code, name, type, path, group_flag, track_items"
      " FROM account WHERE plan IN (0, 1)");
  const auto optional = [&](int column) {
    return rows->isNull(column) ? std::nullopt : std::optional(rows->integer(column));
  };
  while (rows->step()) {
    nodes.push_back({rows->whole(0), rows->whole(1), optional(2), optional(3),
                     std::string(rows->text(4)), std::string(rows->text(5)),
                     std::string(rows->text(6)), std::string(rows->text(7)), rows->whole(8),
                     rows->whole(9)});
  }
  return nodes;
}

// Every former plan takes the place of the next older one, the oldest first.
void moveFormerPlans(Database& db) {
  std::vector<int> plans;
  {
    auto rows = db.prepare("SELECT DISTINCT plan FROM account WHERE plan < 0 ORDER BY plan");
    while (rows->step()) plans.push_back(rows->whole(0));
  }
  for (const int plan : plans) {
    if (plan == kOpeningPlan) continue;
    const int older = plan - 1 == kOpeningPlan ? plan - 2 : plan - 1;
    run(db, "UPDATE account SET plan = $2 WHERE plan = $1", plan, older);
  }
}

class Ids {
 public:
  explicit Ids(const std::map<int, int>& heirs) {
    for (const auto& [heir, old] : heirs) {
      swapped_[heir] = old;
      swapped_[old] = heir;
    }
  }
  int of(std::int64_t id) const {
    const auto found = swapped_.find(static_cast<int>(id));
    return found == swapped_.end() ? static_cast<int>(id) : found->second;
  }
  std::optional<int> of(const std::optional<std::int64_t>& id) const {
    return id ? std::optional(of(*id)) : std::nullopt;
  }
  // A path of ids.
  std::string of(const std::string& path) const {
    std::string out;
    for (const std::string& id : split(path, '*')) {
      if (!out.empty()) out += '*';
      if (!id.empty()) out += std::to_string(of(std::stoll(id)));
    }
    return out;
  }

 private:
  std::map<int, int> swapped_;
};

}  // namespace

void swapPlans(Database& db, const std::map<int, int>& heirs) {
  const std::vector<Node> nodes = readNodes(db);
  const Ids ids(heirs);
  moveFormerPlans(db);
  // Numbers that no account can have, while rows of both plans stand half changed.
  run(db, "UPDATE account SET code = '#' || id, new_id = NULL WHERE plan IN (0, 1)");
  auto update = db.prepare(
      "UPDATE account SET plan = $2, parent_id = $3, code = $4, name = $5, type = $6,"
      " group_flag = $7, mark_id = $8, path = $9, track_items = $10,"
      " row_version = row_version + 1 WHERE id = $1");
  for (const Node& node : nodes) {
    update->bind(1, ids.of(node.id)).bind(2, node.plan == 1 ? 0 : -1).bind(3, ids.of(node.parent));
    update->bind(4, node.code).bind(5, node.name).bind(6, node.type).bind(7, node.group);
    update->bind(8, node.mark).bind(9, ids.of(node.path)).bind(10, node.tracked);
    update->run();
  }
}

}  // namespace tolvex::store
