// Open items of large books: one client's, an account's, those to be covered; in books of a million
// operations against books that hold little or nothing else. Then the two screens that list them,
// as their user meets them, without a window.
//   debts_bench [--quick] [--folder FOLDER]
// Books are made in the folder (default: here) and kept; --quick takes a twentieth of their size.
#include <cmath>
#include <exception>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/demo_books.h"
#include "bench/measure.h"
#include "framework/recordset.h"
#include "framework/references.h"
#include "host/objects/module_loader.h"
#include "host/objects/workspace.h"
#include "host/script/headless_stage.h"
#include "host/script/program.h"
#include "host/store/guid.h"
#include "host/store/sql.h"
#include "platform/input.h"

namespace tolvex::store {
namespace {

constexpr double kSecondsEach = 0.4;
// An account of receivables that the generated operations leave alone.
constexpr const char* kAccount = "259";
constexpr int kInvoices = 5000, kOfClient = 8;

RowSetPtr answered(Session& session, const char* routine, const std::string& parameters) {
  const HostResult result = session.call("O0201500", routine, parameters);
  if (result.Code != kDone) throw BooksError(result.Text);
  return result.Data.AsRows();
}

// A routine called in two books; both must answer with as many rows.
struct Compared {
  double few = 0, many = 0;  // seconds
  double ratio() const { return many / few; }
};

Compared compare(const char* routine, Session& few, const std::string& inFew, Session& many,
                 const std::string& inMany) {
  const auto rows = answered(few, routine, inFew)->RecordCount();
  if (answered(many, routine, inMany)->RecordCount() != rows)
    throw BooksError(std::string(routine) + ": the books differ");
  const auto seconds = bench::alternate(
      {[&] { answered(few, routine, inFew); }, [&] { answered(many, routine, inMany); }},
      kSecondsEach);
  return {seconds[0], seconds[1]};
}

int accountId(Database& db, const char* code) {
  return static_cast<int>(
      *integerFrom(db, "SELECT id FROM account WHERE plan = 0 AND code = $1", code));
}

// A buyer with just so many open invoices.
std::string buyer(Session& session) {
  auto select = bound(session.db(),
                      "SELECT r.foidr FROM open_item i JOIN dimset_ref r ON r.dimset_id ="
                      " i.dimset_id WHERE i.account_id = $1 AND i.is_open = 1"
                      " GROUP BY r.foidr HAVING COUNT(*) = $2 ORDER BY 1 LIMIT 1",
                      accountId(session.db(), "240"), kOfClient);
  if (!select->step()) throw BooksError("no buyer owes as many invoices as are wanted");
  return std::string(select->text(0));
}

void addInvoice(Session& session, int number) {
  const HostResult made = session.create("O0201500", "O0201500");
  RowSet& record = *made.Data.AsRows();
  record["DateD"] = Variant(DateTime::FromDayNumber(20040101 + number % 28));
  record["BROperGroupID"] = 4.0;
  record["Number"] = "B-" + std::to_string(number);
  record["Comment"] = "Prekės";
  RowSet& BR = *record["BR"].Rows();
  BR.AddNew();
  BR["GUID"] = newGuid();
  BR["DateD"] = record["DateD"].Value();
  BR["SumA"] = 100.0 + number;
  BR["AccountD"] = kAccount;
  BR["AccountC"] = "500";
  RowSet& refs = *BR["BRProperties"].Rows();
  refs.AddNew();
  refs["Sign"] = 1.0;
  refs["FOIDR"] = refOf("O0000100", 1001 + number % 700);
  refs["ShowString"] = "Pirkėjas " + std::to_string(number % 700);
  const SaveOutcome saved = session.save("O0201500", "O0201500", record, nullptr, nullptr);
  if (saved.Code != kDone) throw BooksError(saved.Text);
}

// The invoices of the account that is measured; those of an earlier run are counted.
void fillAccount(Session& session) {
  const auto there = integerFrom(
      session.db(), "SELECT COUNT(*) FROM open_item WHERE account_id = $1 AND is_open = 1",
      accountId(session.db(), kAccount));
  for (int number = static_cast<int>(there.value_or(0)); number < kInvoices; ++number)
    addInvoice(session, number);
}

void oneClient(Session& few, Session& many) {
  const std::string inFew = buyer(few), inMany = buyer(many);
  const auto asked = [](const char* date, const std::string& client) {
    return "'0','240','" + std::string(date) + "','" + client + "',1";
  };
  const Compared today =
      compare("GetDebts1", few, asked("9999.12.31", inFew), many, asked("9999.12.31", inMany));
  bench::note("open invoices of one client of a million operations", today.many * 1e3, "ms");
  bench::report("open invoices of one client: large books against small ones", today.ratio(), 3,
                "x", false);
}

// In the large books a client has some hundred payments, and as many items were open at a date.
void oneClientBefore(Session& few, Session& many) {
  const auto asked = [](const std::string& client) {
    return "'0','240','2004.06.30','" + client + "',1";
  };
  const std::string inFew = buyer(few), inMany = buyer(many);
  const auto rows = answered(many, "GetDebts1", asked(inMany))->RecordCount();
  const auto seconds = bench::alternate({[&] { answered(few, "GetDebts1", asked(inFew)); },
                                         [&] { answered(many, "GetDebts1", asked(inMany)); }},
                                        kSecondsEach);
  bench::note("the same client half a year before the end", seconds[1] * 1e3, "ms");
  bench::note("  rows", static_cast<double>(rows), "");
  bench::note("  in small books", seconds[0] * 1e3, "ms");
}

void oneAccount(Session& few, Session& many) {
  const auto fullList = [&](const char* date) {
    const std::string asked = "'0','" + std::string(kAccount) + "','" + date + "','',1";
    return compare("GetDebts3", few, asked, many, asked);
  };
  const Compared list = fullList("9999.12.31"), before = fullList("2004.01.14");
  bench::note("5000 open items of an account", list.many * 1e3, "ms");
  bench::note("the same account at an earlier date", before.many * 1e3, "ms");
  bench::report("5000 open items of an account: large books against empty ones", list.ratio(), 2,
                "x", false);
  bench::report("open items at an earlier date: large books against empty ones", before.ratio(), 2,
                "x", false);
  const std::string firms = "'" + std::string(kAccount) + "',1,'',0,'O0000100','9999.12.31'";
  const Compared covers = compare("GetCoverFirms", few, firms, many, firms);
  bench::note("firms of 5000 open items", covers.many * 1e3, "ms");
  bench::report("firms of 5000 open items: large books against empty ones", covers.ratio(), 2, "x",
                false);
}

// The generated payments leave a difference with a pointer for each document at another rate; the
// other way of revaluing was never used, so that there is nothing to be found.
void differences(Session& few, Session& many) {
  const std::string asked = "'240','9999.12.31','636',0";
  const Compared none = compare("GetCheckInfluenceType", few, asked, many, asked);
  bench::report("differences of the way not used: large books against small ones", none.ratio(), 2,
                "x", false);
}

void everything(Session& many) {
  const auto timed = [&](const char* what, const char* routine, const std::string& parameters) {
    std::int64_t rows = 0;
    const double seconds =
        bench::secondsOf([&] { rows = answered(many, routine, parameters)->RecordCount(); });
    bench::note(what, seconds * 1e3, "ms");
    bench::note("  its rows", static_cast<double>(rows), "");
  };
  timed("all receivables of the large books", "GetDebts3", "'0','240','9999.12.31','',1");
  timed("the same a month before the end", "GetDebts3", "'0','240','2004.11.30','',1");
  timed("whom to cover among all", "GetCoverFirms", "'240',1,'450',-1,'O0000100','9999.12.31'");
}

// --- the screens --------------------------------------------------------------------------------

void must(const std::string& refusal) {
  if (!refusal.empty()) throw std::runtime_error(refusal);
}

// A user without a window, who acts inside a modal screen and then closes it.
class User {
 public:
  explicit User(Program& program) : workspace_(program.open(stage_, stage_)) {
    stage_.renewed(*workspace_);
  }
  Workspace& workspace() { return *workspace_; }
  void act(const std::function<std::string()>& what) { must(workspace_->gesture(what)); }

  void inside(const std::function<std::string()>& opens,
              const std::function<void(ui::Form&)>& acts) {
    bool over = false;
    std::exception_ptr broken;
    stage_.setDriver(
        [&] {
          if (std::exchange(over, true)) return false;
          try {
            if (const Message* box = stage_.openMessage()) must(box->text);
            acts(*stage_.modalForm());
          } catch (...) {
            broken = std::current_exception();
          }
          return false;
        },
        [this] { workspace_->idle(); });
    act(opens);
    if (broken) std::rethrow_exception(broken);
    if (!over) throw std::runtime_error("the screen did not open");
  }

 private:
  HeadlessStage stage_;
  std::unique_ptr<Workspace> workspace_;
};

template <class Control>
Control& controlOf(ui::Form& form, const char* name) {
  auto* control = form.find<Control>(name);
  if (!control) throw std::runtime_error(std::string("no control ") + name);
  return *control;
}

// How a screen lists debts.
struct DebtScreen {
  const char* name;
  const char *list, *fill;       // the list, and the button that fills it
  const char *tickAll, *untick;  // buttons, or items of the list's menu
};

// The account's open items are listed, ticked all at once and one after another.
void measureList(User& user, ui::Form& form, const DebtScreen& screen) {
  constexpr int kRounds = 9;
  auto& list = controlOf<ui::ListView>(form, screen.list);
  const auto act = [&](const char* name) {
    ui::Control& control = controlOf<ui::Control>(form, name);
    auto* item = dynamic_cast<ui::MenuItem*>(&control);
    user.act([&] { return item ? ui::Input(form).pick(*item) : ui::Input(form).click(control); });
  };
  const auto expectTicked = [&](int wanted) {
    int ticked = 0;
    for (const ui::Row& row : list.rows())
      if (row.checked) ++ticked;
    if (list.rows().size() != kInvoices || ticked != wanted)
      throw std::runtime_error(std::string(screen.name) + ": the list is not as it should be");
  };
  std::vector<double> filling, ticking, oneByOne;
  for (int round = 0; round <= kRounds; ++round) {
    const double start = bench::cpuSeconds();
    act(screen.fill);
    const double filled = bench::cpuSeconds();
    expectTicked(0);
    const double before = bench::cpuSeconds();
    act(screen.tickAll);
    const double ticked = bench::cpuSeconds();
    expectTicked(kInvoices);
    act(screen.untick);
    expectTicked(0);
    const double first = bench::cpuSeconds();
    for (int row = 0; row < kInvoices; ++row)
      user.act([&] { return ui::Input(form).check(list, row, true); });
    const double last = bench::cpuSeconds();
    expectTicked(kInvoices);
    if (round == 0) continue;
    filling.push_back(filled - start);
    ticking.push_back(ticked - before);
    oneByOne.push_back(last - first);
  }
  const auto goal = [&](const char* what, std::vector<double> seconds, double limit) {
    const std::string line = std::string(screen.name) + ": " + what;
    bench::report(line.c_str(), bench::median(std::move(seconds)) * 1e3, limit, "ms", false);
  };
  goal("5000 open items listed, processor time", filling, 150);
  goal("all of them ticked at once", ticking, 300);
  goal("ticked one after another", oneByOne, 300);
}

void choiceOfDebts(User& user) {
  const std::vector<Variant> asked = {kAccount, "", "", DateTime::Of(2004, 12, 31)};
  const auto operation = user.workspace().context().objects().create("O0201500");
  user.inside(
      [&] { return operation->Methods("BROperSelect", std::span<const Variant>(asked)).Text; },
      [&](ui::Form& form) {
        measureList(user, form, {"choice of debts", "lvwBROper", "cmdGo", "mnuAll", "mnuDrop"});
      });
}

void coverOfDebts(User& user, Session& session) {
  const auto any = integerFrom(session.db(), "SELECT MIN(id) FROM oper WHERE otype = 'O0201500'");
  user.act([&] {
    return std::string(
        user.workspace().context().desktop().putObject(refOf("O0201500", static_cast<int>(*any)))
            ? ""
            : "the operation did not open");
  });
  ui::Form& operation = *user.workspace().screens().front();
  user.inside(
      [&] {
        return ui::Input(operation).pick(controlOf<ui::MenuItem>(operation, "mnuDebtsCover"));
      },
      [&](ui::Form& form) {
        user.act([&] {
          ui::Input input(form);
          must(input.choose(controlOf<ui::OptionButton>(form, "optDebC")));
          must(input.typeCombo(controlOf<ui::ComboBox>(form, "cmbAccC"), kAccount));
          return input.typeCombo(controlOf<ui::ComboBox>(form, "cmbAccD"), kAccount);
        });
        measureList(user, form, {"debts cover", "lvwBRPrimary", "cmdGo", "optAllC", "optDropC"});
      });
}

void screens(const std::string& program, const std::string& books) {
  const auto module = loadModule(modulePathBeside(program));
  Program::Options options;
  options.place = books;
  options.today = DateTime::Of(2004, 12, 31);
  Program opened(*module, options);
  User user(opened);
  choiceOfDebts(user);
  coverOfDebts(user, opened.session());
}

int benchmarks(const std::string& program, bool quick, const std::string& folder) {
  const int operations = quick ? 50000 : 1000000, kFew = 7000;  // about 10 000 entries
  std::printf("open items, books of %d and %d operations\n", kFew, operations);
  const std::string largeBooks = bench::booksOf(folder, operations);
  {
    const auto small = bench::openOrMake(bench::booksOf(folder, kFew), kFew);
    const auto large = bench::openOrMake(largeBooks, operations);
    const auto empty = bench::openOrMake(folder + "/bench_debts.tolvex", 1);
    fillAccount(*empty);
    fillAccount(*large);
    oneClient(*small, *large);
    oneClientBefore(*small, *large);
    oneAccount(*empty, *large);
    differences(*small, *large);
    everything(*large);
  }
  screens(program, largeBooks);
  return bench::missed == 0 ? 0 : 1;
}

}  // namespace
}  // namespace tolvex::store

int main(int count, char** arguments) {
  return tolvex::bench::measured(count, arguments, [&](bool quick, const std::string& folder) {
    return tolvex::store::benchmarks(arguments[0], quick, folder);
  });
}
