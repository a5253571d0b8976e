// The chart of accounts as a whole: its nodes and marks, and an account moved one level down.
#include "framework/references.h"
#include "host/store/answer.h"
#include "host/store/move_account.h"
#include "host/store/routine_table.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

constexpr int kWorkingPlan = 0, kNewPlan = 1;
int planOf(std::string_view kind) { return kind == "O0200401" ? kNewPlan : kWorkingPlan; }
std::string nodeReference(int plan, std::int64_t id) {
  return refOf(plan == kNewPlan ? "O0200401" : "O0200400", static_cast<int>(id));
}

constexpr ColumnSpec kMarks[] = {col::integer("Id"), col::text("Name", 200), col::text("Code", 20)};

Variant GetBRAProperties(Session& session, const Arguments&, std::string_view) {
  auto marks =
      bound(session.db(), "SELECT id, name, code FROM account_mark ORDER BY sort_order, id");
  return rowsOf(*marks, kMarks);
}

constexpr ColumnSpec kMarked[] = {col::text("Code", 20), col::text("Account", 20)};

Variant GetBRASettings(Session& session, const Arguments&, std::string_view kind) {
  auto marked = bound(session.db(),
                      "SELECT m.code, a.code FROM account a JOIN account_mark m ON m.id = a.mark_id"
                      " WHERE a.plan = $1 ORDER BY m.code, a.code",
                      planOf(kind));
  return rowsOf(*marked, kMarked);
}

constexpr ColumnSpec kPlan[] = {col::text("Account", 20), col::text("Name", 300),
                                col::text("Type", 1),     col::integer("GroupFlag"),
                                col::integer("ID"),       col::integer("ParentID"),
                                col::text("OIDR", 30),    col::text("Preview", 300)};

Variant GetAccountPlan(Session& session, const Arguments&, std::string_view kind) {
  const int plan = planOf(kind);
  auto nodes = bound(session.db(),
                     "SELECT code, name, type, group_flag, id, parent_id FROM account"
                     " WHERE plan = $1 ORDER BY code",
                     plan);
  Answer answer(kPlan);
  while (nodes->step()) {
    answer.row()
        .text(nodes->text(0))
        .text(nodes->text(1))
        .text(nodes->text(2))
        .integer(nodes->integer(3))
        .integer(nodes->integer(4));
    if (nodes->isNull(5))
      answer.null();
    else
      answer.integer(nodes->integer(5));
    answer.text(nodeReference(plan, nodes->integer(4))).text(nodes->text(1));
  }
  return answer.done();
}

constexpr ColumnSpec kAccount[] = {col::integer("ID"),        col::text("Account", 20),
                                   col::text("Name", 300),    col::text("Type", 1),
                                   col::integer("GroupFlag"), col::text("OIDR", 30)};

Variant GetAccount(Session& session, const Arguments& arguments, std::string_view) {
  auto nodes = bound(session.db(),
                     "SELECT id, code, name, type, group_flag FROM account"
                     " WHERE code = $1 AND (plan = 0 OR id = 0)",
                     arguments[0].str());
  Answer answer(kAccount);
  while (nodes->step())
    answer.row()
        .integer(nodes->integer(0))
        .text(nodes->text(1))
        .text(nodes->text(2))
        .text(nodes->text(3))
        .integer(nodes->integer(4))
        .text(nodeReference(kWorkingPlan, nodes->integer(0)));
  return answer.done();
}

Variant MoveAccountDown(Session& session, const Arguments& arguments, std::string_view) {
  if (!session.rights("CAccountPlanRights").edit) {
    throw Refusal(kNoSaveRight, "Nėra teisės keisti sąskaitų plano!");
  }
  return moveAccountDown(session, arguments[0].id().value_or(0));
}

constexpr Routine kRoutines[] = {
    {"O0200400", "GetBRAProperties", "", false, GetBRAProperties},
    {"O0200400", "GetBRASettings", "", false, GetBRASettings},
    {"O0200400 O0200500", "GetAccountPlan", "", false, GetAccountPlan},
    {"O0200400", "MoveAccountDown", "t", true, MoveAccountDown, true},
    {"O0201500 O0200500", "GetAccount", "t", false, GetAccount},
};

}  // namespace

std::span<const Routine> planRoutines() { return kRoutines; }

}  // namespace tolvex::store
