// The way to the new chart of accounts: counterparts, backup and restore, the conversion itself.
#include <filesystem>

#include "framework/references.h"
#include "host/store/admin_log.h"
#include "host/store/answer.h"
#include "host/store/books.h"
#include "host/store/convert.h"
#include "host/store/plan_mapping.h"
#include "host/store/routine_table.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

namespace fs = std::filesystem;

constexpr const char* kPlanRights = "CAccountPlanRights";
constexpr const char* kUsualBackup = "Convert";

void refuseUnless(bool right) {
  if (!right) throw Refusal(kNoSaveRight, "Nėra teisės keisti sąskaitų plano!");
}

constexpr ColumnSpec kConverting[] = {col::text("OIDR", 30),     col::text("PreviewO", 330),
                                      col::integer("ParentID"),  col::integer("GroupFlag"),
                                      col::integer("cn"),        col::integer("NewID"),
                                      col::text("PreviewN", 330)};

// Entries are counted from the years of the roll-ups; one with the account on both sides stands
// there twice and counts once.
Variant GetConvertingTable(Session& session, const Arguments&, std::string_view) {
  auto nodes = bound(session.db(),
                     "SELECT a.id, a.code, a.name, a.parent_id, a.group_flag, a.new_id, n.code,"
                     " n.name, (SELECT SUM(CASE WHEN t.corr_id = a.id THEN 0 ELSE t.n END)"
                     " + SUM(CASE WHEN t.corr_id = a.id THEN t.n ELSE 0 END) / 2 FROM turn_acc t"
                     " WHERE t.account_id = a.id AND t.period < 10000)"
                     " FROM account a LEFT JOIN account n ON n.id = a.new_id"
                     " WHERE a.plan = 0 ORDER BY a.code");
  const auto shown = [&](int code) {
    return std::string(nodes->text(code)) + " " + std::string(nodes->text(code + 1));
  };
  Answer answer(kConverting);
  const auto integerOrNull = [&](int column) {
    if (nodes->isNull(column))
      answer.null();
    else
      answer.integer(nodes->integer(column));
  };
  while (nodes->step()) {
    answer.row().text(refOf("O0200400", nodes->whole(0))).text(shown(1));
    integerOrNull(3);
    answer.integer(nodes->integer(4)).integer(nodes->integer(8));
    integerOrNull(5);
    answer.text(nodes->isNull(5) ? std::string() : shown(6));
  }
  return answer.done();
}

constexpr ColumnSpec kPreview[] = {col::integer("Accounts"),     col::integer("Targets"),
                                   col::number("Entries"),       col::number("Turnover"),
                                   col::number("Mapped"),        col::integer("Missing"),
                                   col::text("FirstMissing", 20)};

// What a conversion would do, for a look before it is done.
Variant GetConvertingPreview(Session& session, const Arguments&, std::string_view) {
  const ConversionPreview preview = previewConversion(session.db());
  const std::vector<std::string> missing = withoutCounterpart(session.db());
  Answer answer(kPreview);
  answer.row()
      .integer(preview.accounts)
      .integer(preview.targets)
      .number(static_cast<double>(preview.entries))
      .lt(preview.turnover)
      .lt(preview.mapped)
      .integer(static_cast<std::int64_t>(missing.size()))
      .text(missing.empty() ? std::string() : missing.front());
  return answer.done();
}

Variant SetAccountAuto(Session& session, const Arguments& arguments, std::string_view) {
  refuseUnless(session.rights(kPlanRights).edit);
  const std::string& branch = arguments[0].str();
  const bool whole = branch.empty();
  if (!whole && !isRef(branch)) throw Refusal(kWrongParameters, "Netinkama nuoroda: " + branch);
  matchCounterparts(session.db(), whole ? 0 : idOf(branch));
  return {};
}

constexpr ColumnSpec kLeft[] = {col::text("Where", 600), col::text("Text", 500)};

// Answers what is left for a person to look through.
Variant Convert(Session& session, const Arguments&, std::string_view) {
  refuseUnless(session.rights(kPlanRights).edit);
  Answer answer(kLeft);
  for (const AccountText& text : convertPlan(session)) {
    answer.row().text(text.where).text(text.text);
  }
  return answer.done();
}

// The file of a copy; a name leads nowhere but into the folder of copies.
fs::path copyFile(Session& session, const Arguments& arguments) {
  const std::string given = arguments[0].str();
  const std::string name = given.empty() ? kUsualBackup : given;
  if (name.find_first_of("/\\:") != std::string::npos || name.front() == '.') {
    throw Refusal(kWrongParameters, "Netinkamas kopijos pavadinimas: " + name);
  }
  if (session.backupFolder().empty()) {
    throw Refusal(kEngine, "Šie duomenys neturi vietos atsarginėms kopijoms!");
  }
  return fs::path(session.backupFolder()) / (name + ".tolvex");
}

Variant BackUpDB(Session& session, const Arguments& arguments, std::string_view) {
  refuseUnless(session.rights(kPlanRights).edit);
  const fs::path file = copyFile(session, arguments);
  std::error_code error;  // an unusable folder is told by the copy
  fs::create_directories(file.parent_path(), error);
  backupBooks(session.db(), file.string(), session.progress());
  return {};
}

// A restore takes rights, passwords and the protocol back as well: it needs the right over rights.
Variant RestoreDB(Session& session, const Arguments& arguments, std::string_view) {
  refuseUnless(session.rights(kPlanRights).admin);
  const fs::path file = copyFile(session, arguments);
  std::error_code error;
  if (!fs::exists(file, error)) {
    throw Refusal(kObjectGone, "Atsarginės kopijos nėra: " + file.filename().string());
  }
  restoreBooks(session.db(), file.string(), session.progress());
  writeAdminLog(session, AdminAct::Changed, "Duomenų atstatymas iš kopijos", file.string());
  return {};
}

constexpr ColumnSpec kBackup[] = {col::text("Name", 200), col::text("Place", 500)};

Variant GetBackups(Session& session, const Arguments&, std::string_view) {
  Answer answer(kBackup);
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(session.backupFolder(), error)) {
    if (entry.path().extension() != ".tolvex") continue;
    answer.row().text(entry.path().stem().string()).text(entry.path().string());
  }
  return answer.done();
}

constexpr Routine kRoutines[] = {
    {"O0200400", "GetConvertingTable", "", false, GetConvertingTable},
    {"O0200400", "GetConvertingPreview", "", false, GetConvertingPreview},
    {"O0200400", "GetBackups", "", false, GetBackups},
    {"O0200400", "SetAccountAuto", "R", true, SetAccountAuto},
    {"O0200400", "BackUpDB", "T", false, BackUpDB},
    {"O0200400", "RestoreDB", "T", true, RestoreDB, true},
    {"O0200400", "Convert", "", true, Convert, true},
};

}  // namespace

std::span<const Routine> conversionRoutines() { return kRoutines; }

}  // namespace tolvex::store
