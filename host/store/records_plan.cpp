// Nodes of the chart of accounts, of the working plan and of the new one.
#include <vector>

#include "framework/text.h"
#include "host/store/account_texts.h"
#include "host/store/mapped_records.h"
#include "host/store/record_log.h"
#include "host/store/record_table.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

constexpr const char* kNewPlan = "O0200401";

constexpr FieldMap kFields[] = {
    number("ParentID", "parent_id").zeroIsNull(), text("Account", "code", 20).needed(),
    text("Name", "name", 300).needed(),           text("Type", "type", 1).needed(),
    number("GroupFlag", "group_flag").zero(),     number("BRAPropertyID", "mark_id").zeroIsNull(),
    number("NewID", "new_id").zeroIsNull(),       computed("OwnCode", FieldType::Text, "t.path"),
};
constexpr FieldMap kList[] = {text("Account", "code", 20), text("Type", "type", 1)};
constexpr Referrer kReferrers[] = {
    {"Sąskaitoje yra įrašų: ",
     "SELECT a.code FROM posting p JOIN account a ON a.id = p.account_id"
     " WHERE p.account_id = $1 LIMIT 1"},
    {"Sąskaita nurodyta šablone: ",
     "SELECT m.name FROM template_line l JOIN template m ON m.id = l.template_id"
     " WHERE l.account_d = $1 OR l.account_c = $1 LIMIT 1"},
    {"Sąskaita nurodyta kaip naujo plano atitikmuo: ",
     "SELECT code FROM account WHERE new_id = $1 LIMIT 1"},
};
constexpr const char* kNodeType =
    "CASE WHEN t.parent_id IS NULL THEN 'Class' WHEN t.group_flag <> 0 THEN 'Group'"
    " ELSE 'Item' END";

int idIn(const Saving& saving, const char* field) {
  return static_cast<int>(saving.row[field].Number());
}

bool onlyDigits(const std::string& code) {
  return code.find_first_not_of("0123456789") == std::string::npos;
}

void checkNumber(const Saving& saving, int plan, const std::string& code) {
  Database& db = saving.session.db();
  if (!onlyDigits(code)) refuseRule("Sąskaitos numerį turi sudaryti tik skaitmenys!");
  // The account of opening balances, which has the id 0, is nobody's parent.
  const std::string parent =
      textFrom(db, "SELECT code FROM account WHERE id = $1 AND id <> 0", idIn(saving, "ParentID"));
  if (!parent.empty() && (code.size() <= parent.size() || !code.starts_with(parent))) {
    refuseRule("Sąskaitos numeris turi prasidėti aukštesnės sąskaitos numeriu " + parent +
               " ir būti ilgesnis!");
  }
  if (anyRow(db, "SELECT 1 FROM account WHERE plan = $1 AND code = $2 AND id <> $3", plan, code,
             saving.id)) {
    refuseDouble();
  }
}

void checkFields(const Saving& saving, int plan) {
  Database& db = saving.session.db();
  for (const char* field : {"Account", "Name", "Type"}) {
    saving.row[field] = trim(saving.row[field].Text());
  }
  const std::string type(saving.row["Type"].Text());
  if (!type.empty() && type != "D" && type != "K") refuseRule("Klaidingas sąskaitos tipas!");
  checkNumber(saving, plan, std::string(saving.row["Account"].Text()));
  const int mark = idIn(saving, "BRAPropertyID");
  if (mark != 0 && !anyRow(db, "SELECT 1 FROM account_mark WHERE id = $1", mark)) {
    throw Refusal(kReferred, "Nurodytas sąskaitos požymis neegzistuoja!");
  }
  const int counterpart = idIn(saving, "NewID");
  if (counterpart != 0 &&
      !anyRow(db, "SELECT 1 FROM account WHERE id = $1 AND plan = 1", counterpart)) {
    throw Refusal(kReferred, "Nurodyta naujo plano sąskaita neegzistuoja!");
  }
}

struct Below {
  int id;
  std::string code, name, path;
};

// The branch below a node, nearest first.
std::vector<Below> branchBelow(Database& db, int id) {
  std::vector<Below> branch{{id, "", "", ""}};
  for (std::size_t i = 0; i < branch.size(); ++i) {
    auto children =
        bound(db, "SELECT id, code, name, path FROM account WHERE parent_id = $1 ORDER BY id",
              branch[i].id);
    while (children->step()) {
      branch.push_back({children->whole(0), std::string(children->text(1)),
                        std::string(children->text(2)), std::string(children->text(3))});
    }
  }
  branch.erase(branch.begin());
  return branch;
}

// Numbers below a renumbered node begin with its new number. They pass through numbers that no
// account can have, since one branch may move onto numbers that another part of it still holds.
RenamedAccounts renumberBranch(const Saving& saving, const std::string& before,
                               const std::string& after) {
  Database& db = saving.session.db();
  const std::vector<Below> branch = branchBelow(db, saving.id);
  constexpr const char* kRenumber =
      "UPDATE account SET code = $2, row_version = row_version + 1 WHERE id = $1";
  RenamedAccounts renamed;
  for (const Below& node : branch) run(db, kRenumber, node.id, "#" + std::to_string(node.id));
  for (const Below& node : branch) {
    const std::string code = after + node.code.substr(before.size());
    if (code.size() > 20) refuseRule("Sąskaitos numeris " + code + " per ilgas!");
    run(db, kRenumber, node.id, code);
    writeRecordLog(saving.session, Action::Update,
                   {saving.kind, node.id, node.name, "Account: " + node.code + " -> " + code});
    renamed[node.code] = {code, node.name};
  }
  return renamed;
}

// Settings that name an account by its number go on meaning the same one. What they cannot tell by
// itself (the beginning of a number in a formula of a statement) is told in the protocol.
void followNumbers(const Saving& saving, const RenamedAccounts& renamed) {
  rewriteAccountTexts(saving.session.db(), renamed);
  std::string left;
  for (const AccountText& text : accountTextsLeft(saving.session.db(), renamed))
    left += "! " + text.where + ": " + text.text + "\n";
  if (!left.empty()) {
    writeRecordLog(saving.session, Action::Update,
                   {saving.kind, saving.id, std::string(saving.row["Preview"].Text()), left});
  }
}

// Numbers below are freed before the node is written, while its old number can still be read.
void checkNode(const Saving& saving) {
  const int plan = saving.map.fixedValue;
  checkFields(saving, plan);
  if (saving.isNew) return;
  Database& db = saving.session.db();
  const std::string before = textFrom(db, "SELECT code FROM account WHERE id = $1", saving.id);
  const std::string after(saving.row["Account"].Text());
  if (before == after || before.empty()) return;
  RenamedAccounts renamed = renumberBranch(saving, before, after);
  renamed[before] = {after, std::string(saving.row["Name"].Text())};
  if (plan == 0) followNumbers(saving, renamed);
}

// The path of ids tells the class of a node; a new account is matched with documents as its parent.
void placeNode(const Saving& saving) {
  Database& db = saving.session.db();
  const int parent = idIn(saving, "ParentID");
  const std::string above = textFrom(db, "SELECT path FROM account WHERE id = $1", parent);
  const std::string path = (above.empty() ? "" : above + "*") + std::to_string(saving.id);
  const std::string before = textFrom(db, "SELECT path FROM account WHERE id = $1", saving.id);
  if (path != before) {
    run(db, "UPDATE account SET path = $2 WHERE id = $1", saving.id, path);
    for (const Below& node : branchBelow(db, saving.id)) {
      run(db, "UPDATE account SET path = $2 WHERE id = $1", node.id,
          path + node.path.substr(before.size()));
    }
  }
  if (saving.isNew) {
    run(db,
        "UPDATE account SET track_items ="
        " COALESCE((SELECT p.track_items FROM account p WHERE p.id = $2), 0) WHERE id = $1",
        saving.id, parent);
  }
}

constexpr RecordMap planMap(const char* where, int plan) {
  return {.table = "account",
          .fields = kFields,
          .referrers = kReferrers,
          .listFields = kList,
          .component = "CAccountPlanRights",
          .tree = true,
          .where = where,
          .fixedColumn = "plan",
          .fixedValue = plan,
          .kindOfRow = "CASE t.plan WHEN 1 THEN 'O0200401' ELSE 'O0200400' END",
          .listType = kNodeType,
          .order = "t.plan, t.code",
          .check = checkNode,
          .stored = placeNode};
}
constexpr RecordMap kWorking = planMap("t.plan = 0", 0);
constexpr RecordMap kNext = planMap("t.plan = 1", 1);
constexpr RecordMap kBoth = planMap("t.plan IN (0, 1)", 0);

// The list may be asked in a mode: "FULL" shows both plans, "All" (for print) is the plan by
// number.
class PlanRecords final : public MappedRecords {
 public:
  using MappedRecords::MappedRecords;
  RowSetPtr list(Session& session, std::string_view kind,
                 std::span<const std::string> arguments) const override {
    static const MappedRecords both(kBoth);
    std::vector<std::string> rest;
    bool full = false;
    for (const std::string& argument : arguments) {
      full |= equalNoCase(argument, "FULL");
      const bool mode = equalNoCase(argument, "FULL") || equalNoCase(argument, "All");
      if (!mode) rest.push_back(argument);
    }
    if (!full) return MappedRecords::list(session, kind, rest);
    RowSetPtr rows = both.list(session, kind, rest);
    addNewPlanRoot(*rows);
    return rows;
  }

 private:
  // In the view of both plans the new one hangs below a row of its own, there even while it is
  // empty, so that its first class can be made.
  static void addNewPlanRoot(RowSet& rows) {
    ForEachRow(rows, [](RowSet& row) {
      if (row["OIDR"].Text().starts_with(kNewPlan) && row["ParentID"].IsNull())
        row["ParentOIDR"] = kNewPlan;
    });
    rows.LoadRow();
    rows["OIDR"] = kNewPlan;
    rows["OID"] = kNewPlan;
    rows["ParentID"] = Null{};
    rows["ParentOIDR"] = "";
    rows["OType"] = "Root";
    rows["GroupFlag"] = 1;
    rows["Name"] = "Naujas sąskaitų planas";
    rows["Preview"] = "Naujas sąskaitų planas";
    rows["Account"] = "";
    rows["Type"] = "";
    rows.AcceptChanges();
    rows.MoveFirst();
  }
};

}  // namespace

std::span<const HandlerRow> planRecords() {
  static const PlanRecords working(kWorking), next(kNext);
  static const HandlerRow rows[] = {{"O0200400", &working}, {"O0200401", &next}};
  return rows;
}

}  // namespace tolvex::store
