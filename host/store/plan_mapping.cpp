#include "host/store/plan_mapping.h"

#include <map>
#include <set>

#include "host/store/sql.h"

namespace tolvex::store {
namespace {

struct Unmatched {
  int id;
  std::string code;
};

std::vector<Unmatched> unmatched(Database& db, int branch) {
  std::vector<Unmatched> accounts;
  std::set<int> within{branch};
  auto nodes = db.prepare(
      "SELECT id, parent_id, code, group_flag, new_id FROM account WHERE plan = 0 ORDER BY code");
  // A parent's number is shorter and stands before those of its children.
  while (nodes->step()) {
    const int id = nodes->whole(0);
    const bool inside = branch == 0 || id == branch || within.contains(nodes->whole(1));
    if (!inside) continue;
    within.insert(id);
    if (nodes->integer(3) == 0 && nodes->isNull(4)) {
      accounts.push_back({id, std::string(nodes->text(2))});
    }
  }
  return accounts;
}

// The new account of the longest number that `code` begins with; 0 when there is none.
int longestMatch(const std::map<std::string, int, std::less<>>& next, std::string_view code) {
  for (std::size_t length = code.size(); length > 0; --length) {
    const auto found = next.find(code.substr(0, length));
    if (found != next.end()) return found->second;
  }
  return 0;
}

}  // namespace

std::vector<MappedAccount> readMapping(Database& db) {
  std::vector<MappedAccount> mapping;
  auto rows = db.prepare(
      "SELECT a.id, n.id, a.code, n.code, n.name FROM account a JOIN account n ON n.id = a.new_id"
      " WHERE a.plan = 0 ORDER BY a.code");
  while (rows->step()) {
    mapping.push_back({rows->whole(0), rows->whole(1), std::string(rows->text(2)),
                       std::string(rows->text(3)), std::string(rows->text(4))});
  }
  return mapping;
}

std::vector<std::string> withoutCounterpart(Database& db) {
  std::vector<std::string> codes;
  auto rows = db.prepare(
      "SELECT a.code FROM account a LEFT JOIN account n ON n.id = a.new_id"
      " WHERE a.plan = 0 AND (n.id IS NULL OR n.plan <> 1 OR n.group_flag <> 0)"
      " AND (a.mark_id IS NOT NULL OR EXISTS (SELECT 1 FROM posting p WHERE p.account_id = a.id)"
      " OR EXISTS (SELECT 1 FROM template_line l WHERE l.account_d = a.id OR l.account_c = a.id))"
      " ORDER BY a.code");
  while (rows->step()) codes.emplace_back(rows->text(0));
  return codes;
}

int matchCounterparts(Database& db, int branch) {
  std::map<std::string, int, std::less<>> next;
  {
    auto rows = db.prepare("SELECT code, id FROM account WHERE plan = 1 AND group_flag = 0");
    while (rows->step()) next[std::string(rows->text(0))] = rows->whole(1);
  }
  int given = 0;
  for (const Unmatched& account : unmatched(db, branch)) {
    const int counterpart = longestMatch(next, account.code);
    if (counterpart == 0) continue;
    run(db, "UPDATE account SET new_id = $2, row_version = row_version + 1 WHERE id = $1",
        account.id, counterpart);
    ++given;
  }
  return given;
}

ConversionPreview previewConversion(Database& db) {
  ConversionPreview preview;
  std::set<std::int64_t> targets;
  auto rows = db.prepare(
      "SELECT a.id, a.new_id, SUM(t.debit + t.credit), SUM(t.n) FROM turn_acc t"
      " JOIN account a ON a.id = t.account_id WHERE t.period < 10000"
      " GROUP BY a.id, a.new_id");
  std::int64_t sides = 0;
  while (rows->step()) {
    const bool opening = rows->integer(0) == 0;  // the account "0" belongs to every plan
    const std::int64_t turnover = rows->integer(2);
    preview.turnover += turnover;
    sides += rows->integer(3);
    if (opening || !rows->isNull(1)) preview.mapped += turnover;
    if (opening || rows->isNull(1)) continue;
    ++preview.accounts;
    targets.insert(rows->integer(1));
  }
  preview.targets = static_cast<int>(targets.size());
  preview.entries = sides / 2;
  return preview;
}

}  // namespace tolvex::store
