// The tree of operation groups over large books as its user meets it, without a window: opened
// whole, and read again after a save.
//   groups_bench [--quick] [--folder FOLDER]
// --quick takes a twentieth of the operations and a tenth of the books; the groups are as many.
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/demo_books.h"
#include "bench/demo_program.h"
#include "bench/measure.h"
#include "framework/references.h"
#include "host/objects/frm_tree.h"
#include "host/objects/module_loader.h"
#include "host/objects/workspace.h"
#include "host/script/headless_stage.h"
#include "host/store/sql.h"
#include "platform/input.h"

namespace tolvex {
namespace {

constexpr const char* kGroups = "O0201400";
constexpr int kCommon = 20, kInEach = 24;  // 500 groups with those that hold the others
constexpr int kOperations = 1000000, kRounds = 9;

// Headers alone: the tree never reads entries.
void fill(store::Database& db, int operations) {
  std::vector<int> groups;
  for (int i = 0; i < kCommon; ++i) {
    const int common = store::insertedId(
        db, "INSERT INTO oper_group (parent_id, name, group_flag) VALUES (1, $1, 1) RETURNING id",
        "Filialas " + std::to_string(i));
    for (int j = 0; j < kInEach; ++j) {
      groups.push_back(store::insertedId(
          db, "INSERT INTO oper_group (parent_id, name) VALUES ($1, $2) RETURNING id", common,
          "Dokumentai " + std::to_string(i) + "." + std::to_string(j)));
    }
  }
  auto insert =
      db.prepare("INSERT INTO oper (otype, group_id, day, number) VALUES ('O0201500', $1, $2, $3)");
  for (int i = 0; i < operations; ++i) {
    insert->bind(1, groups[static_cast<std::size_t>(i) % groups.size()]);
    insert->bind(2, 20040101 + i / 84000 * 100 + i % 28).bind(3, std::to_string(i));
    insert->run();
  }
}

std::string booksWithGroups(const std::string& folder, int operations) {
  const std::string file = folder + "/bench_groups_" + std::to_string(operations) + ".tolvex";
  if (std::filesystem::exists(file)) return file;
  const std::string part = file + ".new";
  {
    const auto session = bench::openOrMake(part, 0);
    store::Transaction transaction(session->db(), store::Transaction::For::Write);
    fill(session->db(), operations);
    transaction.commit();
    session->db().execute("ANALYZE");
  }
  std::filesystem::rename(part, file);
  return file;
}

void measure(const std::string& program, const std::string& books) {
  const auto module = loadModule(modulePathBeside(program));
  Program opened(*module, bench::programOver(books));
  const auto all = static_cast<std::size_t>(
      *store::integerFrom(opened.session().db(), "SELECT COUNT(*) FROM oper_group"));
  std::vector<int> common;
  auto rows = opened.session().db().prepare(
      "SELECT id FROM oper_group WHERE group_flag <> 0 AND parent_id IS NOT NULL");
  while (rows->step()) common.push_back(static_cast<int>(rows->integer(0)));

  const auto expectAll = [&](const frmTree& tree) {
    std::size_t shown = 1;  // the first group is the kind's own node
    for (const ui::TreeNode& node : tree.tvwLayout.nodes())
      if (isRef(node.key) && kindOf(node.key) == kGroups && node.text != "…") ++shown;
    if (shown != all) throw std::runtime_error("the tree of groups is not shown whole");
  };
  std::vector<double> opening, again;
  for (int round = 0; round < kRounds; ++round) {
    HeadlessStage stage;
    const auto workspace = opened.open(stage, stage);
    stage.renewed(*workspace);
    auto& tree = dynamic_cast<frmTree&>(workspace->tree());
    double start = bench::wallSeconds();
    const auto expand = [&](const std::string& key) {
      (void)workspace->gesture([&] { return ui::Input(tree).expand(tree.tvwLayout, key, true); });
    };
    expand(kGroups);
    for (const int group : common) expand(refOf(kGroups, group));
    opening.push_back(bench::wallSeconds() - start);
    expectAll(tree);
    start = bench::wallSeconds();
    workspace->context().tree().redraw(kGroups);
    workspace->idle();
    again.push_back(bench::wallSeconds() - start);
    expectAll(tree);
  }
  bench::report("500 groups with 1 000 000 operations below open in the tree, all levels",
                bench::median(opening) * 1e3, 100, "ms", false);
  bench::report("they are read again after a save", bench::median(again) * 1e3, 100, "ms", false);
}

// Microseconds for each posting of the accounts with the mark.
double fullSums(store::Session& session) {
  const double postings = static_cast<double>(
      *store::integerFrom(session.db(),
                          "SELECT COUNT(*) FROM posting p JOIN account a ON a.id = p.account_id"
                          " JOIN account_mark m ON m.id = a.mark_id WHERE m.code = $1",
                          "2710"));
  std::vector<double> seconds;
  for (int round = 0; round < 3; ++round) {
    for (const char* code : {"2710", ""}) {
      const double start = bench::cpuSeconds();
      const HostResult result =
          session.call(kGroups, "CreateFullSum", "5,'" + std::string(code) + "'");
      if (result.Code != kDone) throw std::runtime_error(result.Text);
      if (*code) seconds.push_back(bench::cpuSeconds() - start);
    }
  }
  return bench::median(seconds) / postings * 1e6;
}

void measureSums(const std::string& folder, bool quick) {
  const int many = quick ? 10000 : 100000, few = many / 10;
  const double small = fullSums(*bench::openOrMake(bench::booksOf(folder, few), few));
  const double large = fullSums(*bench::openOrMake(bench::booksOf(folder, many), many));
  bench::note("full sums of the bank accounts, processor time for a posting", large, "us");
  bench::report("the same / in books of a tenth", large / small, 1.5, "x", false);
}

}  // namespace
}  // namespace tolvex

int main(int count, char** arguments) {
  return tolvex::bench::measured(count, arguments, [&](bool quick, const std::string& folder) {
    const int operations = quick ? tolvex::kOperations / 20 : tolvex::kOperations;
    tolvex::measure(arguments[0], tolvex::booksWithGroups(folder, operations));
    tolvex::measureSums(folder, quick);
    return tolvex::bench::missed == 0 ? 0 : 1;
  });
}
