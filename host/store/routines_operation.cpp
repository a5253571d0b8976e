// One operation: its group, protocol, addressees, and the search for operations.
#include <set>
#include <tuple>

#include "framework/references.h"
#include "framework/text.h"
#include "host/store/answer.h"
#include "host/store/lookups.h"
#include "host/store/records.h"
#include "host/store/routine_table.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

constexpr std::string_view kGroupKind = "O0201400";

// The record of a parent; where there is none, its columns without a row.
Variant parentRecord(Session& session, std::string_view kind, int id) {
  const RecordHandler* const handler = recordHandler(kind);
  if (!handler) throw Refusal(kUnknownRoutine, "Nežinoma objekto rūšis: " + std::string(kind));
  RowSetPtr record = id != 0 ? handler->load(session, kind, id) : nullptr;
  if (!record) return handler->create(session, kind, kind)->EmptyCopy();
  record->MoveFirst();
  return record;
}

// The group of an operation, by the group's reference or id, or by the operation's own reference.
Variant GetParent(Session& session, const Arguments& arguments, std::string_view) {
  const int oper = operIdOf(arguments[0].str());
  const auto group =
      oper != 0 ? integerFrom(session.db(), "SELECT group_id FROM oper WHERE id = $1", oper)
                : std::optional<std::int64_t>(arguments[0].id());
  return parentRecord(session, kGroupKind, static_cast<int>(group.value_or(0)));
}

// The node above, which the caller names by the id in its own ParentID.
Variant GetParentOfOwnKind(Session& session, const Arguments& arguments, std::string_view kind) {
  return parentRecord(session, kind, arguments[0].id().value_or(0));
}

// A lock stands on an account of the plan.
Variant GetParentOfLock(Session& session, const Arguments& arguments, std::string_view) {
  return parentRecord(session, "O0200400", arguments[0].id().value_or(0));
}

constexpr ColumnSpec kRequired[] = {col::text("GUID", 40), col::text("BRTemplateAccGUID", 40),
                                    col::text("FOID", 8), col::small("Sign")};

Variant GetBRRequiredAddr(Session& session, const Arguments& arguments, std::string_view) {
  auto required = bound(session.db(),
                        "SELECT e.guid, l.guid, a.foid, a.sign FROM entry e"
                        " JOIN template_line l ON l.id = e.template_line_id"
                        " JOIN template_addr a ON a.line_id = l.id"
                        " WHERE e.oper_id = $1 ORDER BY e.id, a.id",
                        operIdOf(arguments[0].str()));
  return rowsOf(*required, kRequired);
}

constexpr ColumnSpec kAddressees[] = {col::text("FOIDR", 30), col::text("ShowString", 800),
                                      col::small("Sign"), col::text("Account", 20)};

Variant GetBROperAddressees(Session& session, const Arguments& arguments, std::string_view) {
  auto select = bound(session.db(),
                      "SELECT r.foidr, r.show_string, r.sign, a.code FROM entry e"
                      " JOIN entry_ref r ON r.entry_id = e.id"
                      " JOIN posting p ON p.entry_id = e.id AND p.sign = r.sign"
                      " JOIN account a ON a.id = p.account_id"
                      " WHERE e.oper_id = $1 AND r.role <> 1 ORDER BY e.id, r.id",
                      operIdOf(arguments[0].str()));
  std::set<std::tuple<std::string, std::int64_t, std::string>> seen;
  Answer answer(kAddressees);
  while (select->step())
    if (seen.emplace(select->text(0), select->integer(2), select->text(3)).second)
      answer.row()
          .text(select->text(0))
          .text(select->text(1))
          .integer(select->integer(2))
          .text(select->text(3));
  return answer.done();
}

constexpr ColumnSpec kSelected[] = {col::text("OIDR", 30),      col::text("FOIDR", 30),
                                    col::date("DateD"),         col::text("Number", 500),
                                    col::text("Comment", 1000), col::number("SumA")};

Variant GetBROperSelect(Session& session, const Arguments& arguments, std::string_view) {
  auto select = bound(session.db(),
                      "SELECT o.id, o.otype, o.doc_ref, o.day, o.number, o.comment,"
                      " (SELECT SUM(e.sum_lt) FROM entry e WHERE e.oper_id = o.id) FROM oper o"
                      " WHERE o.day BETWEEN $1 AND $2 AND ($3 = 0 OR o.group_id = $3)"
                      " ORDER BY o.day, o.id",
                      arguments[0].day(), arguments[1].day(), arguments[2].integer());
  const std::string& text = arguments[3].str();
  Answer answer(kSelected);
  while (select->step()) {
    if (!containsNoCase(select->text(4), text) && !containsNoCase(select->text(5), text)) continue;
    const std::int64_t id = select->integer(0);
    answer.row()
        .text(operReference(id))
        .text(documentReference(id, select->text(1), select->text(2)))
        .day(select->integer(3))
        .text(select->text(4))
        .text(select->text(5))
        .lt(select->integer(6));
  }
  return answer.done();
}

constexpr ColumnSpec kOrders[] = {
    col::text("OIDR", 30),      col::date("DateD"),         col::text("Number", 500),
    col::number("SumA"),        col::number("SumCurr"),     col::text("CurrCode", 3),
    col::number("SumRest"),     col::number("SumRestCurr"), col::text("RestCurrCode", 3),
    col::text("Comment", 1000), col::number("CurrRate")};

// Orders and offers are operations of the trade module; without it there are none.
Variant GetTradeOrders(Session&, const Arguments&, std::string_view) {
  return RowSet::make(kOrders);
}

constexpr Routine kRoutines[] = {
    {"O0201500", "GetParent", "R", false, GetParent},
    {"O0201400 O0200400 O0201600 O0201700 O0200500", "GetParent", "r", false, GetParentOfOwnKind},
    {"O0201300", "GetParent", "r", false, GetParentOfLock},
    {"O0201500", "GetBRRequiredAddr", "r", false, GetBRRequiredAddr},
    {"O0201500", "GetBROperAddressees", "r", false, GetBROperAddressees},
    {"O0201500", "GetBROperSelect", "ddit", false, GetBROperSelect},
    {"O0201500", "GetOrder_BROpers", "rdti", false, GetTradeOrders},
    {"O0201500", "GetOffer_BROpers", "rdti", false, GetTradeOrders},
};

}  // namespace

std::span<const Routine> operationRoutines() { return kRoutines; }

}  // namespace tolvex::store
