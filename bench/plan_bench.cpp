// A large chart of accounts as its user meets it, without a window: opened in the tree, read again
// after a save, offered for a choice.
//   plan_bench [--quick] [--folder FOLDER]
// Processor time, the middle one of several rounds. --quick changes nothing: it is short anyway.
#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/demo_books.h"
#include "bench/demo_program.h"
#include "bench/measure.h"
#include "host/objects/frm_list.h"
#include "host/objects/frm_picker.h"
#include "host/objects/frm_tree.h"
#include "host/objects/module_loader.h"
#include "host/objects/workspace.h"
#include "host/script/headless_stage.h"
#include "host/store/sql.h"
#include "platform/input.h"

namespace tolvex {
namespace {

constexpr const char* kPlan = "O0200400";
constexpr int kNodes = 2000;

// Three classes of groups, subgroups and accounts beside the plan of the seed.
class PlanMaker {
 public:
  explicit PlanMaker(store::Database& db) : db_(db) {}

  void fill(int nodes) {
    left_ = nodes - static_cast<int>(
                        *store::integerFrom(db_, "SELECT COUNT(*) FROM account WHERE plan = 0"));
    for (const std::string number : {"7", "8", "9"}) {
      const int top = add(0, "", number, true);
      for (char group = '0'; group <= '9'; ++group) {
        const std::string two = number + group;
        const int above = add(top, std::to_string(top), two, true);
        for (char sub = '0'; sub <= '9'; ++sub) branch(above, top, two + sub);
      }
    }
  }

 private:
  void branch(int above, int top, const std::string& number) {
    const std::string path = std::to_string(top) + "*" + std::to_string(above);
    const int group = add(above, path, number, true);
    for (char last = '0'; last <= '5'; ++last)
      add(group, path + "*" + std::to_string(group), number + last, false);
  }
  int add(int above, const std::string& path, const std::string& number, bool group) {
    if (left_-- <= 0) return above;
    const int id =
        store::insertedId(db_,
                          "INSERT INTO account (plan, parent_id, code, name, type, group_flag)"
                          " VALUES (0, NULLIF($1, 0), $2, $3, 'D', $4) RETURNING id",
                          above, number, "Valdymo apskaitos sąskaita " + number, group ? 1 : 0);
    store::run(db_, "UPDATE account SET path = $2 WHERE id = $1", id,
               path.empty() ? std::to_string(id) : path + "*" + std::to_string(id));
    return id;
  }

  store::Database& db_;
  int left_ = 0;
};

std::string booksWithPlan(const std::string& folder) {
  const std::string file = folder + "/bench_plan.tolvex";
  if (std::filesystem::exists(file)) return file;
  const std::string part = file + ".new";
  {
    const auto session = bench::openOrMake(part, 0);
    store::Transaction transaction(session->db(), store::Transaction::For::Write);
    PlanMaker(session->db()).fill(kNodes);
    transaction.commit();
  }
  std::filesystem::rename(part, file);
  return file;
}

double middleOf(int rounds, const std::function<void()>& work) {
  std::vector<double> seconds;
  for (int round = 0; round < rounds; ++round) {
    const double start = bench::cpuSeconds();
    work();
    if (round > 0) seconds.push_back(bench::cpuSeconds() - start);
  }
  return bench::median(seconds) * 1e3;
}

void expectRows(std::size_t rows, std::size_t least) {
  if (rows < least) throw std::runtime_error("the plan is not shown whole");
}

void measure(const std::string& program, const std::string& books) {
  const auto module = loadModule(modulePathBeside(program));
  Program opened(*module, bench::programOver(books));
  HeadlessStage stage;
  const auto workspace = opened.open(stage, stage);
  stage.renewed(*workspace);
  auto& tree = dynamic_cast<frmTree&>(workspace->tree());
  auto& list = dynamic_cast<frmList&>(workspace->list());
  const auto groups = static_cast<std::size_t>(*store::integerFrom(
      opened.session().db(), "SELECT COUNT(*) FROM account WHERE plan = 0 AND group_flag <> 0"));

  const auto open = [&] {
    (void)workspace->gesture([&] {
      ui::Input(tree).expand(tree.tvwLayout, kPlan, true);
      tree.choose(kPlan);
      return std::string();
    });
    workspace->idle();
    expectRows(tree.tvwLayout.nodes().size(), groups);
    expectRows(list.lvwObjects.rows().size(), kNodes);
  };
  const double start = bench::cpuSeconds();
  open();
  bench::report("plan of 2000 accounts opens in the tree, processor time",
                (bench::cpuSeconds() - start) * 1e3, 100, "ms", false);
  bench::report("plan of 2000 accounts is read again after a save, processor time",
                middleOf(12,
                         [&] {
                           workspace->context().tree().redraw(kPlan);
                           workspace->idle();
                           expectRows(list.lvwObjects.rows().size(), kNodes);
                         }),
                100, "ms", false);
  PickRequest request;
  request.kinds = {kPlan};
  bench::note("offered for a choice, processor time",
              middleOf(12,
                       [&] {
                         frmPicker picker(workspace->context(), request);
                         picker.opened();
                         expectRows(picker.lvwObjects.rows().size(), kNodes);
                       }),
              "ms");
}

}  // namespace
}  // namespace tolvex

int main(int count, char** arguments) {
  return tolvex::bench::measured(count, arguments, [&](bool, const std::string& folder) {
    tolvex::measure(arguments[0], tolvex::booksWithPlan(folder));
    return tolvex::bench::missed == 0 ? 0 : 1;
  });
}
