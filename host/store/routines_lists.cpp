// Standing lists: accounts, kinds of addressees, currencies, firms and persons.
#include <algorithm>

#include "framework/references.h"
#include "framework/text.h"
#include "host/store/answer.h"
#include "host/store/routine_table.h"

namespace tolvex::store {
namespace {

constexpr ColumnSpec kAccountList[] = {col::text("Account", 20), col::text("Name", 300)};

Variant GetAccountList(Session& session, const Arguments&, std::string_view) {
  auto accounts = session.db().prepare(
      "SELECT code, name FROM account WHERE plan = 0 AND group_flag = 0 ORDER BY code");
  return rowsOf(*accounts, kAccountList, 2);
}

constexpr ColumnSpec kAddresseeKinds[] = {col::text("FOID", 30), col::text("Name", 300)};

Variant GetAddresseeList(Session& session, const Arguments&, std::string_view) {
  auto kinds =
      session.db().prepare("SELECT foid, name FROM addressee_kind ORDER BY sort_order, foid");
  return rowsOf(*kinds, kAddresseeKinds, 2);
}

// Purposes stand in for the kinds where an entry is marked by what it was for.
Variant GetPurposeList(Session& session, const Arguments&, std::string_view kind) {
  auto purposes = session.db().prepare(
      "SELECT id, name FROM ref_object WHERE kind = $1 AND group_flag = 0 ORDER BY id");
  purposes->bind(1, kind);
  Answer answer(kAddresseeKinds);
  while (purposes->step())
    answer.row().text(refOf(kind, purposes->whole(0))).text(purposes->text(1));
  return answer.done();
}

Variant GetEnabledAddressee(Session& session, const Arguments&, std::string_view) {
  auto kinds = session.db().prepare(
      "SELECT foid, name FROM addressee_kind WHERE enabled <> 0 ORDER BY sort_order, foid");
  return rowsOf(*kinds, kAddresseeKinds, 2);
}

constexpr ColumnSpec kSelectParameters[] = {
    col::text("OIDR", 30),          col::text("PaymentCurrCode", 3), col::date("DateD"),
    col::date("CurrRateDate"),      col::number("PaymentSum"),       col::number("PaymentSumCurr"),
    col::number("PaymentCurrRate"), col::text("Info", 1000),         col::text("AccountD", 20),
    col::text("AccountC", 20),      col::text("FOIDR", 30),          col::text("Comment", 1000)};

// Columns alone: the screen adds the row with what it asks for.
Variant GetSelectParameters(Session&, const Arguments&, std::string_view) {
  return RowSet::make(kSelectParameters);
}

constexpr ColumnSpec kTelebankList[] = {col::text("Name", 200), col::text("Code", 40),
                                        col::text("FileExtension", 10), col::integer("WinDos")};

Variant GetTelebankList(Session& session, const Arguments&, std::string_view) {
  auto formats = session.db().prepare(
      "SELECT name, code, extension, win_dos FROM bank_format ORDER BY sort_order, code");
  return rowsOf(*formats, kTelebankList, 4);
}

constexpr ColumnSpec kFirmsAndUsers[] = {col::text("Code", 30), col::text("Name", 300),
                                         col::text("OIDR", 30)};

// Whom a line of a bank statement can be from: everybody whose code a bank may write.
Variant GetFirmsAndUsers(Session& session, const Arguments&, std::string_view) {
  auto parties = session.db().prepare(
      "SELECT 1, id, code, name, '' FROM firm WHERE group_flag = 0 AND code <> '' UNION ALL "
      "SELECT 2, id, pers_code, name, last_name FROM person"
      " WHERE group_flag = 0 AND pers_code <> '' UNION ALL "
      "SELECT 3, id, pers_code, name, last_name FROM employee"
      " WHERE group_flag = 0 AND pers_code <> '' ORDER BY 1, 2");
  static constexpr std::string_view kKinds[] = {"O0000100", "O0001402", "O0001401"};
  Answer answer(kFirmsAndUsers);
  while (parties->step()) {
    const std::string name =
        trim(std::string(parties->text(3)) + " " + std::string(parties->text(4)));
    answer.row()
        .text(parties->text(2))
        .text(name)
        .text(refOf(kKinds[parties->integer(0) - 1], parties->whole(1)));
  }
  return answer.done();
}

constexpr ColumnSpec kSalaryConstants[] = {col::text("Name", 100), col::number("Value")};

// Constants of pay belong to the pay module; without it there are none.
Variant GetSalaryConstants(Session&, const Arguments&, std::string_view) {
  return RowSet::make(kSalaryConstants);
}

constexpr ColumnSpec kFirmChildrens[] = {col::text("OIDR", 30), col::text("Name", 300),
                                         col::text("Code", 30)};

Variant GetFirmChildrens(Session& session, const Arguments& arguments, std::string_view) {
  const std::string& given = arguments[0].str();
  const bool byReference = isRef(given) && kindOf(given) == "O0000100";
  auto branches = session.db().prepare(
      "WITH RECURSIVE branch(id) AS ("
      "SELECT f.id FROM firm f JOIN firm head ON f.parent_id = head.id"
      " WHERE head.id = $1 OR head.code = $2 "
      "UNION SELECT f.id FROM firm f JOIN branch b ON f.parent_id = b.id) "
      "SELECT f.id, f.name, f.code FROM firm f JOIN branch b ON b.id = f.id"
      " WHERE f.group_flag = 0 ORDER BY f.id");
  branches->bind(1, byReference ? idOf(given) : 0);
  if (byReference || given.empty())
    branches->bindNull(2);
  else
    branches->bind(2, given);
  Answer answer(kFirmChildrens);
  while (branches->step())
    answer.row()
        .text(refOf("O0000100", branches->whole(0)))
        .text(branches->text(1))
        .text(branches->text(2));
  return answer.done();
}

constexpr Routine kRoutines[] = {
    {"O0201500 O0201300 O0201600", "GetAccountList", "", false, GetAccountList},
    {"O0201500 O0200500", "GetAddresseeList", "", false, GetAddresseeList},
    {"O0001601", "GetAddresseeList", "", false, GetPurposeList},
    {"O0201600 O0201300", "GetEnabledAddressee", "", false, GetEnabledAddressee},
    {"O0201500", "GetSelectParameters", "", false, GetSelectParameters},
    {"O0201500", "GetTelebankList", "", false, GetTelebankList},
    {"O0201500", "GetFirmsAndUsers", "", false, GetFirmsAndUsers},
    {"O0201500", "GetSalaryConstants", "*", false, GetSalaryConstants},
    {"O0201500", "GetFirmChildrens", "t", false, GetFirmChildrens},
};

}  // namespace

std::span<const Routine> listRoutines() { return kRoutines; }

}  // namespace tolvex::store
