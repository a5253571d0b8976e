// The program as its user meets it: the start, the memory, a large operation, a long list.
//   program_bench [--quick] [--folder FOLDER]
// Each measurement with a window runs in a process of its own, which is this program again with
// the name of a part before the books. --quick takes a twentieth of the size.
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <QPixmap>
#include <QScrollBar>
#include <QTreeView>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "bench/demo_books.h"
#include "bench/demo_program.h"
#include "bench/measure.h"
#include "framework/parameters.h"
#include "framework/references.h"
#include "framework/text.h"
#include "host/desktop/desktop.h"
#include "host/objects/frm_list.h"
#include "host/objects/frm_tree.h"
#include "host/objects/module_loader.h"
#include "host/objects/workspace.h"
#include "host/script/headless_stage.h"
#include "host/store/guid.h"
#include "host/store/sql.h"
#include "platform/input.h"

namespace tolvex {
namespace {

using bench::cpuSeconds;
using bench::median;
using bench::wallSeconds;
using Figures = std::map<std::string, double>;

constexpr const char* kGroups = "O0201400";
constexpr const char* kOperations = "O0201500";

// The most memory that this process ever held, in megabytes.
double residentPeak() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.starts_with("VmHWM:")) return std::atof(line.c_str() + 6) / 1024;
  return 0;
}

void tell(const char* figure, double value) { std::printf("%s %.6f\n", figure, value); }

// --- parts, each in a process of its own --------------------------------------------------------

// Runs the desktop over the books until `act` was done on its standing window.
int withWindow(const std::string& program, const std::string& books,
               const std::function<void(DesktopStage&, Workspace&)>& act) {
  const auto module = loadModule(modulePathBeside(program));
  std::unique_ptr<Program> opened;
  Workspace* workspace = nullptr;
  DesktopRun run;
  run.open = [&](DesktopStage& stage) {
    opened = std::make_unique<Program>(*module, bench::programOver(books));
    auto made = opened->open(stage, stage);
    workspace = made.get();
    stage.resize(1366, 768);
    stage.idleTick = [&, tried = false]() mutable -> int {
      if (const Message* box = std::exchange(tried, true) ? stage.openMessage() : nullptr) {
        std::fprintf(stderr, "%s\n", box->text.c_str());
        std::_Exit(EXIT_FAILURE);
      }
      stage.flush();
      act(stage, *workspace);
      stage.quit(EXIT_SUCCESS);
      return -1;
    };
    return made;
  };
  std::string name = "tolvex";
  char* argv[] = {name.data(), nullptr};
  return runDesktop(1, argv, run);
}

// Everything that the window shows, painted.
void paint(DesktopStage& stage) {
  stage.flush();
  QApplication::sendPostedEvents();
  for (QWidget* window : QApplication::topLevelWidgets())
    if (window->isVisible()) (void)window->grab();
}

int partStart(const std::string& program, const std::string& books) {
  return withWindow(program, books, [](DesktopStage& stage, Workspace&) {
    paint(stage);
    tell("stood", wallSeconds());
    tell("memory", residentPeak());
  });
}

QTreeView* shownList(std::size_t rows) {
  for (QWidget* widget : QApplication::allWidgets()) {
    auto* view = qobject_cast<QTreeView*>(widget);
    if (view && view->isVisible() && view->model() &&
        static_cast<std::size_t>(view->model()->rowCount()) == rows)
      return view;
  }
  throw std::runtime_error("the list is not on the screen");
}

// `node` is a group of operations: its list is opened and paged through.
int partList(const std::string& program, const std::string& books, const std::string& node) {
  return withWindow(program, books, [&](DesktopStage& stage, Workspace& workspace) {
    paint(stage);
    auto& tree = dynamic_cast<frmTree&>(workspace.tree());
    const auto& list = dynamic_cast<frmList&>(workspace.list());
    const double start = wallSeconds(), cpu = cpuSeconds();
    tree.choose(node);
    paint(stage);
    tell("first", (wallSeconds() - start) * 1e3);
    tell("firstCpu", (cpuSeconds() - cpu) * 1e3);
    std::vector<double> works;
    for (bool more = true; more;) {
      const double work = wallSeconds();
      more = workspace.idle();
      stage.flush();
      works.push_back((wallSeconds() - work) * 1e3);
    }
    tell("whole", (wallSeconds() - start) * 1e3);
    tell("longest", *std::max_element(works.begin(), works.end()));
    const std::size_t rows = list.lvwObjects.rows().size();
    tell("rows", static_cast<double>(rows));
    QTreeView& view = *shownList(rows);
    QScrollBar& bar = *view.verticalScrollBar();
    std::vector<double> pages;
    for (int page = 0; page < 400; ++page) {
      const double turn = wallSeconds();
      bar.setValue(page % 8 == 7 ? bar.maximum() / 400 * page : bar.value() + bar.pageStep());
      (void)view.grab();
      pages.push_back((wallSeconds() - turn) * 1e3);
    }
    std::sort(pages.begin(), pages.end());
    tell("page", pages[pages.size() / 2]);
    tell("slowPage", pages[pages.size() - 1 - pages.size() / 100]);
    tell("memory", residentPeak());
  });
}

// A directory is opened and searched as one types, letter by letter, and back again.
int partSearch(const std::string& program, const std::string& books, const std::string& kind) {
  return withWindow(program, books, [&](DesktopStage& stage, Workspace& workspace) {
    paint(stage);
    auto& tree = dynamic_cast<frmTree&>(workspace.tree());
    auto& list = dynamic_cast<frmList&>(workspace.list());
    const double start = wallSeconds();
    tree.choose(kind);
    paint(stage);
    tell("first", (wallSeconds() - start) * 1e3);
    while (workspace.idle()) stage.flush();
    tell("rows", static_cast<double>(list.lvwObjects.rows().size()));
    std::vector<double> keys;
    for (const std::string word : {"n", "ne", "nem", "ne", "n", ""}) {
      const double key = wallSeconds();
      ui::Input(list).typeText(list.txtFind, word, -1);
      paint(stage);
      keys.push_back((wallSeconds() - key) * 1e3);
    }
    tell("key", *std::max_element(keys.begin(), keys.end()));
  });
}

// --- the measuring process
// ----------------------------------------------------------------------------

Figures inChild(const std::string& program, std::vector<std::string> words) {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("no process");
  if (child == 0) {
    dup2(ends[1], STDOUT_FILENO);
    close(ends[0]);
    close(ends[1]);
    std::vector<char*> arguments{const_cast<char*>(program.c_str())};
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    execv("/proc/self/exe", arguments.data());
    _exit(127);
  }
  close(ends[1]);
  std::string text;
  std::array<char, 512> part{};
  for (ssize_t got; (got = read(ends[0], part.data(), part.size())) > 0;)
    text.append(part.data(), static_cast<std::size_t>(got));
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  if (status != 0) throw std::runtime_error("the part " + words[0] + " failed");
  Figures figures;
  for (const std::string& line : split(text, '\n'))
    if (const auto blank = line.find(' '); blank != std::string::npos)
      figures[line.substr(0, blank)] = std::atof(line.c_str() + blank + 1);
  return figures;
}

void startOfProgram(const std::string& program, const std::string& empty, const std::string& big) {
  std::vector<double> withEmpty, withBig, memory;
  for (int round = 0; round < 9; ++round) {
    for (const bool large : {false, true}) {
      const double start = wallSeconds();
      const Figures figures = inChild(program, {"start", large ? big : empty});
      if (round == 0) continue;  // warms the files
      (large ? withBig : withEmpty).push_back((figures.at("stood") - start) * 1e3);
      if (large) memory.push_back(figures.at("memory"));
    }
  }
  bench::note("start until the window stands, empty books", median(withEmpty), "ms");
  bench::note("start until the window stands, big books", median(withBig), "ms");
  bench::report("start: big books over empty ones", median(withBig) - median(withEmpty), 100, "ms",
                false);
  bench::report("resident memory, window over big books", median(memory), 150, "MB", false);
}

// The busiest group, looked at through a period that holds nearly so many of its operations.
std::string prepareList(const std::string& books, int operations) {
  const auto session = store::openBooks(books, "admin", "");
  auto busiest = store::bound(session->db(),
                              "SELECT group_id FROM oper WHERE day >= $1 GROUP BY group_id"
                              " ORDER BY COUNT(*) DESC LIMIT 1",
                              0);
  busiest->step();
  const auto group = busiest->integer(0);
  auto days = store::bound(session->db(),
                           "SELECT MIN(day), MAX(day) FROM oper WHERE group_id = $1 AND day <"
                           " (SELECT MAX(day) FROM (SELECT day FROM oper"
                           " WHERE group_id = $1 ORDER BY day LIMIT $2))",
                           group, operations);
  days->step();
  const auto day = [&](int column) {
    return DateTime::FromDayNumber(static_cast<int>(days->integer(column))).Text();
  };
  const std::string period = day(0) + ";" + day(1);
  const HostResult kept = session->call(
      kOperations, "SaveSetting", Parameters().text(kGroups).text("ViewPeriod").text(period).str());
  if (kept.Code != kDone) throw store::BooksError(kept.Text);
  return refOf(kGroups, static_cast<int>(group));
}

void longList(const std::string& program, const std::string& big, int operations) {
  const std::string node = prepareList(big, operations);
  std::vector<double> first, firstCpu, longest, whole, page, slowPage;
  Figures figures;
  for (int round = 0; round < 6; ++round) {
    figures = inChild(program, {"list", big, node});
    if (round == 0) continue;
    first.push_back(figures.at("first"));
    firstCpu.push_back(figures.at("firstCpu"));
    longest.push_back(figures.at("longest"));
    whole.push_back(figures.at("whole"));
    page.push_back(figures.at("page"));
    slowPage.push_back(figures.at("slowPage"));
  }
  bench::note("rows of the list", figures.at("rows"), "");
  bench::report("list of a group: its first page stands", median(first), 150, "ms", false);
  bench::note("  processor time of that", median(firstCpu), "ms");
  bench::note("  until all its rows are read", median(whole), "ms");
  bench::report("reading the rest of it: the longest stretch between two acts", median(longest), 50,
                "ms", false);
  bench::note("turning a page of it", median(page), "ms");
  bench::report("turning a page of it, 99 of 100", median(slowPage), 16, "ms", false);
  bench::note("resident memory with that list", figures.at("memory"), "MB");
}

void searchOfFirms(const std::string& program, const std::string& books, int firms) {
  {
    const auto session = store::openBooks(books, "admin", "");
    auto more = store::bound(session->db(),
                             "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n"
                             " WHERE i < $1) INSERT INTO firm (name, code, city)"
                             " SELECT 'UAB Nemunas ' || i, CAST(300000000 + i AS TEXT), 'Kaunas'"
                             " FROM n",
                             firms);
    more->step();
  }
  std::vector<double> first, key;
  Figures figures;
  for (int round = 0; round < 6; ++round) {
    figures = inChild(program, {"search", books, "O0000100"});
    if (round == 0) continue;
    first.push_back(figures.at("first"));
    key.push_back(figures.at("key"));
  }
  bench::note("rows of the directory", figures.at("rows"), "");
  bench::report("directory of 20 000 firms: it stands", median(first), 150, "ms", false);
  bench::report("searching it, the slowest key", median(key), 100, "ms", false);
}

// An operation of many entries, half of them with a buyer, saved as a user would.
std::string saveLargeOperation(store::Session& session, int entries) {
  const HostResult made = session.create(kOperations, kOperations);
  RowSet& record = *made.Data.AsRows();
  record["DateD"] = Variant(DateTime::Of(2004, 6, 17));
  record["BROperGroupID"] = 4.0;
  record["Number"] = "D-0001";
  record["Comment"] = "Daug įrašų";
  RowSet& BR = *record["BR"].Rows();
  for (int i = 0; i < entries; ++i) {
    BR.AddNew();
    BR["GUID"] = store::newGuid();
    BR["DateD"] = record["DateD"].Value();
    BR["SumA"] = 10.0 + i;
    BR["AccountD"] = "240";
    BR["AccountC"] = i % 2 ? "500" : "4461";
    BR["TradeOperationType"] = 2.0;
    BR["VATTariff"] = 18.0;
    RowSet& refs = *BR["BRProperties"].Rows();
    refs.AddNew();
    refs["Sign"] = 1.0;
    refs["FOIDR"] = "O00001001";
    refs["ShowString"] = "UAB Pirkėjas";
  }
  const auto saved = session.save(kOperations, kOperations, record, nullptr, nullptr);
  if (saved.Code != kDone) throw store::BooksError(saved.Text);
  return saved.reference;
}

void largeOperation(const std::string& program, const std::string& folder, int entries) {
  const std::string books = folder + "/bench_program.tolvex";
  for (const char* suffix : {"", "-wal", "-shm"}) std::filesystem::remove(books + suffix);
  const std::string reference = saveLargeOperation(*bench::openOrMake(books, 0), entries);
  const auto module = loadModule(modulePathBeside(program));
  Program opened(*module, bench::programOver(books));
  HeadlessStage stage;
  const auto workspace = opened.open(stage, stage);
  stage.renewed(*workspace);
  std::vector<double> cpu;
  for (int round = 0; round < 12; ++round) {
    const double start = cpuSeconds();
    const std::string fault = workspace->gesture([&] {
      return std::string(workspace->context().desktop().putObject(reference) ? "" : "not opened");
    });
    workspace->idle();
    if (round > 1) cpu.push_back((cpuSeconds() - start) * 1e3);
    if (!fault.empty() || workspace->screens().size() != 1)
      throw std::runtime_error("the operation did not open: " + fault);
    const auto* rows = workspace->screens().front()->find<ui::ListView>("lvwBRRecords");
    if (!rows || rows->rows().size() != static_cast<std::size_t>(entries))
      throw std::runtime_error("the screen does not show every entry");
    if (!workspace->closeAll()) throw std::runtime_error("the operation did not close");
    workspace->idle();
  }
  bench::report("opening an operation of 1000 entries, processor time", median(cpu), 60, "ms",
                false);
}

int benchmarks(const std::string& program, bool quick, const std::string& folder) {
  const int operations = quick ? 50000 : 1000000;
  std::printf("program, big books of %d operations\n", operations);
  largeOperation(program, folder, 1000);
  const std::string empty = bench::booksOf(folder, 0), big = bench::booksOf(folder, operations);
  bench::openOrMake(empty, 0).reset();
  bench::openOrMake(big, operations).reset();
  startOfProgram(program, empty, big);
  longList(program, big, operations / 10);
  const std::string many = folder + "/bench_firms.tolvex";
  for (const char* suffix : {"", "-wal", "-shm"}) std::filesystem::remove(many + suffix);
  bench::openOrMake(many, 0).reset();
  searchOfFirms(program, many, 20000);
  return bench::missed == 0 ? 0 : 1;
}

}  // namespace
}  // namespace tolvex

int main(int count, char** arguments) {
  const std::string program = arguments[0];
  const std::string part = count > 2 ? arguments[1] : "";
  qputenv("QT_QPA_PLATFORM", "offscreen");
  return tolvex::bench::measured(count, arguments, [&](bool quick, const std::string& folder) {
    if (part == "start") return tolvex::partStart(program, arguments[2]);
    if (part == "list" && count > 3) return tolvex::partList(program, arguments[2], arguments[3]);
    if (part == "search" && count > 3)
      return tolvex::partSearch(program, arguments[2], arguments[3]);
    return tolvex::benchmarks(program, quick, folder);
  });
}
