// The protocol of operations as lists, and the undo of the last save.
#include <cstdlib>

#include "framework/references.h"
#include "host/store/answer.h"
#include "host/store/field_captions.h"
#include "host/store/lookups.h"
#include "host/store/moments.h"
#include "host/store/protocol.h"
#include "host/store/records.h"
#include "host/store/routine_table.h"
#include "host/store/sql.h"
#include "host/store/undo.h"

namespace tolvex::store {
namespace {

// What an operation was is told to who may view what it is.
int viewedOperation(Session& session, const Argument& reference) {
  const int id = operIdOf(reference.str());
  if (!session.rights(guardOf(session.db(), id)).view) refuseView();
  return id;
}

constexpr ColumnSpec kLog[] = {col::date("Date"), col::text("User", 200), col::text("Action", 1),
                               col::integer("ID"), col::text("Name", 600)};

Variant GetBROperLog(Session& session, const Arguments& arguments, std::string_view) {
  auto log = bound(session.db(),
                   "SELECT at, user_name, action, id, oper_name FROM oper_log WHERE oper_id = $1"
                   " ORDER BY at DESC, id DESC",
                   viewedOperation(session, arguments[0]));
  Answer answer(kLog);
  while (log->step()) {
    answer.row().moment(log->text(0)).text(log->text(1)).text(log->text(2));
    answer.integer(log->integer(3)).text(log->text(4));
  }
  return answer.done();
}

std::string captionOf(const ProtocolChange& change) {
  if (change.name == "+") return "Naujas įrašas";
  if (change.name == "-") return "Panaikintas įrašas";
  if (change.name == "~") return "Pakeistas įrašas";
  return fieldCaption(change.name);
}

// A group by its name, the indication by its meaning, a client by his name.
std::string shownValue(Database& db, const std::string& field, const std::string& value) {
  if (value.empty()) return value;
  std::string shown;
  if (field == "BROperGroupID") {
    shown = textFrom(db, "SELECT name FROM oper_group WHERE id = $1", std::atoi(value.c_str()));
  } else if (field == "VATRegisterIndication") {
    shown = value == "1" ? "Gauta PVM sąskaita faktūra" : "Išrašyta PVM sąskaita faktūra";
  } else if (field == "ClientOIDR") {
    shown = CardNames(db).of(value);
  }
  return shown.empty() ? value : shown;
}

constexpr ColumnSpec kChanges[] = {col::text("Name", 100), col::text("Old", 6000),
                                   col::text("New", 6000)};

Variant GetBROperLogDetail(Session& session, const Arguments& arguments, std::string_view) {
  Database& db = session.db();
  auto row = bound(db, "SELECT detail FROM oper_log WHERE id = $1 AND oper_id = $2",
                   arguments[1].integer(), viewedOperation(session, arguments[0]));
  if (!row->step()) throw Refusal(kObjectGone, "Protokolo įrašas nerastas!");
  const std::string detail(row->text(0));
  row->reset();
  Answer answer(kChanges);
  for (const ProtocolChange& change : readableChanges(detail)) {
    answer.row().text(captionOf(change)).text(shownValue(db, change.name, change.before));
    answer.text(shownValue(db, change.name, change.after));
  }
  return answer.done();
}

Variant GetUndo(Session& session, const Arguments& arguments, std::string_view) {
  const UndoTarget target = undoTarget(session, viewedOperation(session, arguments[0]));
  Answer answer(kLog);
  answer.row().moment(target.at).text(target.userName).text(target.action);
  answer.integer(target.logId).text("");
  return answer.done();
}

constexpr ColumnSpec kStands[] = {col::text("OIDR", 20)};

// 'OIDR',version: takes the last save back; no row when the operation is gone thereby.
Variant UndoSave(Session& session, const Arguments& arguments, std::string_view) {
  const int id = operIdOf(arguments[0].str());
  undoSave(session, id, arguments[1].integer());
  Answer answer(kStands);
  if (readHeader(session.db(), id)) answer.row().text(refOf(kOperationKind, id));
  return answer.done();
}

constexpr Routine kRoutines[] = {
    {"O0201500", "GetBROperLog", "r", false, GetBROperLog},
    {"O0201500", "GetBROperLogDetail", "ri", false, GetBROperLogDetail},
    {"O0201500", "GetUndo", "r", false, GetUndo},
    {"O0201500", "UndoSave", "ri", true, UndoSave},
};

}  // namespace

std::span<const Routine> logRoutines() { return kRoutines; }

}  // namespace tolvex::store
