// What the groups of operations offer: marked accounts, kinds of documents, the groups themselves.
#include "framework/references.h"
#include "host/store/answer.h"
#include "host/store/full_sum.h"
#include "host/store/record_log.h"
#include "host/store/records.h"
#include "host/store/routine_table.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

constexpr ColumnSpec kPreset[] = {col::text("Code", 20), col::text("Account", 20),
                                  col::text("Name", 300)};

Variant GetPresetAccounts(Session& session, const Arguments& arguments, std::string_view) {
  auto marked = bound(session.db(),
                      "SELECT m.code, a.code, a.name FROM account a"
                      " JOIN account_mark m ON m.id = a.mark_id"
                      " WHERE a.plan = 0 AND ($1 = '' OR m.code = $1) ORDER BY m.code, a.code",
                      arguments[0].str());
  return rowsOf(*marked, kPreset);
}

constexpr ColumnSpec kFormTypes[] = {col::text("Name", 100), col::text("OID", 8)};

// The kinds of documents that a group may hold; the generic operation first, as the default.
Variant GetFormTypes(Session&, const Arguments&, std::string_view) {
  struct FormType {
    std::string_view name, kind;
  };
  constexpr FormType kKinds[] = {
      {"Finansinė operacija", "O0201500"},  {"Mokėjimo nurodymas", "O0201501"},
      {"Pinigų gavimas", "O0201502"},       {"Kasos išlaidų orderis", "O0201503"},
      {"Kasos pajamų orderis", "O0201504"}, {"Avanso apyskaita", "O0201505"},
      {"Sąskaitų uždarymas", "O0201506"},   {"Prekybos dokumentas", "O1000100"},
      {"Komandiruotė", "O0202000"}};
  Answer answer(kFormTypes);
  for (const FormType& type : kKinds) answer.row().text(type.name).text(type.kind);
  return answer.done();
}

constexpr ColumnSpec kSettings[] = {col::text("Code", 20), col::text("CodeName", 200),
                                    col::text("Account", 20), col::text("AccountName", 300)};

Variant GetAccountSettings(Session& session, const Arguments&, std::string_view) {
  auto marked = bound(session.db(),
                      "SELECT m.code, m.name, a.code, a.name FROM account a"
                      " JOIN account_mark m ON m.id = a.mark_id WHERE a.plan = 0"
                      " ORDER BY m.sort_order, m.id, a.code");
  return rowsOf(*marked, kSettings);
}

// With the code of a mark: the open items of its accounts are made in full, and the group takes the
// code; with "" it gives up its code. What no group asks for any more is dropped.
Variant CreateFullSum(Session& session, const Arguments& arguments, std::string_view kind) {
  Database& db = session.db();
  const int group = arguments[0].integer();
  const std::string& code = arguments[1].str();
  if (!session.rights("CBROperGroupRights" + std::to_string(group)).edit) refuseSave();
  const std::string before =
      textFrom(db, "SELECT account_code FROM oper_group WHERE id = $1", group);
  if (run(db,
          "UPDATE oper_group SET account_code = $2, row_version = row_version + 1 WHERE id = $1",
          group, code) == 0) {
    refuseGone();
  }
  if (!code.empty()) createFullSums(db, code);
  dropUnaskedSums(db);
  writeRecordLog(session, Action::Update,
                 {kind, group, textFrom(db, "SELECT name FROM oper_group WHERE id = $1", group),
                  "AccountCode: " + before + " -> " + code});
  return {};
}

constexpr ColumnSpec kGroupList[] = {col::integer("ID"), col::integer("ParentID"),
                                     col::text("Name", 200), col::text("OIDR", 30)};

Variant GetGroupList(Session& session, const Arguments&, std::string_view) {
  auto groups = bound(session.db(), "SELECT id, parent_id, name FROM oper_group ORDER BY id");
  Answer answer(kGroupList);
  while (groups->step()) {
    answer.row().integer(groups->integer(0));
    if (groups->isNull(1))
      answer.null();
    else
      answer.integer(groups->integer(1));
    answer.text(groups->text(2)).text(refOf("O0201400", groups->whole(0)));
  }
  return answer.done();
}

// For whoever reads journals: the rights of the group's card are not asked.
Variant GetBROperGroupByOIDR(Session& session, const Arguments& arguments, std::string_view) {
  constexpr std::string_view kGroups = "O0201400";
  const int id = arguments[0].id().value_or(0);
  const RowSetPtr group = recordHandler(kGroups)->load(session, kGroups, id);
  if (!group) refuseGone();
  return group;
}

constexpr Routine kRoutines[] = {
    {"O0201400 O0200500", "GetPresetAccounts", "T", false, GetPresetAccounts},
    {"O0201400", "GetFormTypes", "", false, GetFormTypes},
    {"O0201400", "GetAccountSettings", "", false, GetAccountSettings},
    {"O0201400", "CreateFullSum", "it", true, CreateFullSum},
    {"O0200500", "GetBROperGroupByOIDR", "r", false, GetBROperGroupByOIDR},
    {"O0200500", "GetGroupList", "", false, GetGroupList},
};

}  // namespace

std::span<const Routine> groupRoutines() { return kRoutines; }

}  // namespace tolvex::store
