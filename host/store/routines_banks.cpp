// Bank accounts of the own firm and of clients, and what was last paid to whom.
#include "framework/references.h"
#include "host/store/answer.h"
#include "host/store/lookups.h"
#include "host/store/routine_table.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

constexpr std::string_view kBankKind = "O0000300", kBankAccountKind = "O0000500";

constexpr ColumnSpec kAccounts[] = {col::text("Preview", 300),
                                    col::text("OIDR", 30),
                                    col::text("Name", 200),
                                    col::text("Code", 20),
                                    col::text("Street", 200),
                                    col::text("City", 100),
                                    col::text("Country", 100),
                                    col::text("SWIFT", 20),
                                    col::text("AccOIDR", 30),
                                    col::text("AccountNumber", 40),
                                    col::integer("MainAccountFlag"),
                                    col::text("IntermediaryBankName", 200),
                                    col::text("IntermediaryBankCode", 20),
                                    col::text("IntermediaryBankStreet", 200),
                                    col::text("IntermediaryBankCity", 100),
                                    col::text("IntermediaryBankCountry", 100),
                                    col::text("IntermediaryBankSWIFT", 20),
                                    col::text("IntermediaryAccountNumber", 40)};
constexpr int kWithoutIntermediary = 11, kWithIntermediary = 18;

Variant accountsOf(Session& session, const std::string& owner, int columns) {
  auto select = bound(session.db(),
                      "SELECT b.id, b.name, b.code, b.street, b.city, b.country, b.swift, a.id,"
                      " a.account_number, a.main_flag, a.im_name, a.im_code, a.im_street,"
                      " a.im_city, a.im_country, a.im_swift, a.im_account FROM bank_account a"
                      " JOIN bank b ON b.id = a.bank_id WHERE a.owner_ref = $1"
                      " ORDER BY a.main_flag DESC, a.id",
                      owner);
  Answer answer(kAccounts, columns);
  while (select->step()) {
    answer.row()
        .text(std::string(select->text(1)) + ", " + std::string(select->text(8)))
        .text(refOf(kBankKind, select->whole(0)));
    for (int i = 1; i <= 6; ++i) answer.text(select->text(i));
    answer.text(refOf(kBankAccountKind, select->whole(7)))
        .text(select->text(8))
        .integer(select->integer(9));
    if (columns == kWithIntermediary)
      for (int i = 10; i <= 16; ++i) answer.text(select->text(i));
  }
  return answer.done();
}

Variant GetMyFirmAccounts(Session& session, const Arguments&, std::string_view) {
  const auto own = integerFrom(session.db(), "SELECT id FROM firm WHERE own_firm = 1");
  return accountsOf(session, refOf("O0000100", static_cast<int>(own.value_or(0))),
                    kWithoutIntermediary);
}

Variant GetClientAccounts(Session& session, const Arguments& arguments, std::string_view) {
  return accountsOf(session, arguments[0].str(), kWithIntermediary);
}

constexpr ColumnSpec kBankByAccount[] = {col::text("AccountNumber", 40), col::text("OIDR", 30),
                                         col::text("Name", 200), col::text("AccOIDR", 30)};

Variant GetBankByAccount(Session& session, const Arguments& arguments, std::string_view) {
  auto select = bound(session.db(),
                      "SELECT a.account_number, b.id, b.name, a.id FROM bank_account a"
                      " JOIN bank b ON b.id = a.bank_id WHERE a.id = $1",
                      idOf(arguments[0].str()));
  Answer answer(kBankByAccount);
  while (select->step())
    answer.row()
        .text(select->text(0))
        .text(refOf(kBankKind, select->whole(1)))
        .text(select->text(2))
        .text(refOf(kBankAccountKind, select->whole(3)));
  return answer.done();
}

constexpr ColumnSpec kLastAccount[] = {col::text("AccOIDR", 30)};

Variant GetClientLastAccount(Session& session, const Arguments& arguments, std::string_view) {
  const std::string account = textFrom(
      session.db(),
      "SELECT client_account_ref FROM oper_doc WHERE client_ref = $1 AND otype = 'O0201501'"
      " ORDER BY day DESC, oper_id DESC LIMIT 1",
      arguments[0].str());
  Answer answer(kLastAccount);
  if (anyRow(session.db(), "SELECT 1 FROM bank_account WHERE id = $1", idOf(account)))
    answer.row().text(account);
  return answer.done();
}

constexpr ColumnSpec kLastOrder[] = {col::text("OIDR", 30), col::date("DateD"),
                                     col::text("Number", 500), col::text("Parameters", 6000)};

Variant GetLastPaymentOrder(Session& session, const Arguments& arguments, std::string_view) {
  auto select = bound(session.db(),
                      "SELECT o.id, o.day, o.number, o.parameters FROM oper_doc d"
                      " JOIN oper o ON o.id = d.oper_id"
                      " WHERE d.client_ref = $1 AND d.otype = 'O0201501'"
                      " ORDER BY d.day DESC, d.oper_id DESC LIMIT 1",
                      arguments[0].str());
  Answer answer(kLastOrder);
  while (select->step())
    answer.row()
        .text(operReference(select->integer(0)))
        .day(select->integer(1))
        .text(select->text(2))
        .text(select->text(3));
  return answer.done();
}

constexpr Routine kRoutines[] = {
    {"O0201500 O0201400", "GetMyFirmAccounts", "", false, GetMyFirmAccounts},
    {"O0201500", "GetClientAccounts", "r", false, GetClientAccounts},
    {"O0201500", "GetBankByAccount", "r", false, GetBankByAccount},
    {"O0201500", "GetClientLastAccount", "r", false, GetClientLastAccount},
    {"O0201500", "GetLastPaymentOrder", "r", false, GetLastPaymentOrder},
};

}  // namespace

std::span<const Routine> bankRoutines() { return kRoutines; }

}  // namespace tolvex::store
