// Routines of users, rights, settings and the own firm; and those that every kind answers.
#include "framework/references.h"
#include "host/store/answer.h"
#include "host/store/moments.h"
#include "host/store/records.h"
#include "host/store/routine_table.h"
#include "host/store/settings.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

Variant GetVXObject(Session& session, const Arguments& arguments, std::string_view kind) {
  const bool whole = isRef(arguments[0].str());
  const std::string reference =
      whole ? arguments[0].str() : refOf(kind, arguments[0].id().value_or(0));
  return readRecord(session, kindOf(reference), idOf(reference));
}

Variant GetVXObjectList(Session& session, const Arguments& arguments, std::string_view kind) {
  const RecordHandler* const handler = recordHandler(kind);
  if (!handler) throw Refusal(kUnknownRoutine, "Nežinoma objekto rūšis: " + std::string(kind));
  std::vector<std::string> texts;
  for (const Argument& argument : arguments) {
    if (!argument.absent()) texts.push_back(argument.str());
  }
  return handler->list(session, kind, texts);
}

constexpr ColumnSpec kRights[] = {{"View", FieldType::SmallInt},
                                  {"Delete", FieldType::SmallInt},
                                  {"Edit", FieldType::SmallInt},
                                  {"Create", FieldType::SmallInt},
                                  {"Admin", FieldType::SmallInt}};

Variant GetRights(Session& session, const Arguments& arguments, std::string_view) {
  const Flags flags = session.rights(arguments[0].str());
  RowSetPtr rows = RowSet::make(kRights);
  rows->LoadRow();
  (*rows)["View"] = Variant(int{flags.view});
  (*rows)["Delete"] = Variant(int{flags.remove});
  (*rows)["Edit"] = Variant(int{flags.edit});
  (*rows)["Create"] = Variant(int{flags.create});
  (*rows)["Admin"] = Variant(int{flags.admin});
  return rows;
}

constexpr ColumnSpec kUser[] = {{"ID", FieldType::Integer},
                                {"OIDR", FieldType::Text},
                                {"Name", FieldType::Text},
                                {"UserPref", FieldType::Text},
                                {"Login", FieldType::Text}};

Variant GetUser(Session& session, const Arguments&, std::string_view) {
  const User& user = session.user();
  RowSetPtr rows = RowSet::make(kUser);
  rows->LoadRow();
  (*rows)["ID"] = Variant(user.id);
  (*rows)["OIDR"] = user.reference;
  (*rows)["Name"] = user.name;
  (*rows)["UserPref"] = user.prefix;
  (*rows)["Login"] = user.login;
  return rows;
}

constexpr ColumnSpec kSetting[] = {{"Value", FieldType::Text}};

Variant GetSetting(Session& session, const Arguments& arguments, std::string_view) {
  Answer answer(kSetting);
  answer.row().text(
      settingOf(session, arguments[0].str(), arguments[1].str()).value_or(arguments[2].str()));
  return answer.done();
}

Variant SaveSetting(Session& session, const Arguments& arguments, std::string_view) {
  storeSetting(session, arguments[0].str(), arguments[1].str(), arguments[2].str());
  return {};
}

Variant GetMyFirm(Session& session, const Arguments&, std::string_view) {
  auto own = session.db().prepare("SELECT id FROM firm WHERE own_firm = 1");
  if (!own->step()) throw Refusal(kObjectGone, "Nenurodyta sava įmonė!");
  const int id = own->whole(0);
  RowSetPtr firm = recordHandler("O0000100")->load(session, "O0000100", id);
  firm->MoveFirst();
  return firm;
}

constexpr ColumnSpec kRecordLog[] = {
    col::text("At", 19), col::text("User", 200), col::text("Act", 1), {"Detail", FieldType::Text}};

// Newest first; for those who may see the record itself.
Variant GetRecordLog(Session& session, const Arguments& arguments, std::string_view) {
  const std::string& reference = arguments[0].str();
  (void)readRecord(session, kindOf(reference), idOf(reference));
  auto log = bound(session.db(),
                   "SELECT at, user_name, act, detail FROM record_log"
                   " WHERE kind = $1 AND record_id = $2 ORDER BY id DESC",
                   kindOf(reference), idOf(reference));
  Answer answer(kRecordLog);
  while (log->step()) {
    answer.row()
        .text(shownMoment(std::string(log->text(0))))
        .text(log->text(1))
        .text(log->text(2))
        .text(log->text(3));
  }
  return answer.done();
}

constexpr Routine kRoutines[] = {
    {"*", "GetVXObject", "r", false, GetVXObject},
    {"*", "GetVXObjectList", "TTTT", false, GetVXObjectList},
    {"*", "GetRecordLog", "r", false, GetRecordLog},
    {"*", "GetRights", "t", false, GetRights},
    {"*", "GetUser", "", false, GetUser},
    {"*", "GetSetting", "ttT", false, GetSetting},
    {"*", "SaveSetting", "ttt", true, SaveSetting},
    {"O0000100", "GetMyFirm", "", false, GetMyFirm},
};

}  // namespace

std::span<const Routine> hostRoutines() { return kRoutines; }

}  // namespace tolvex::store
