// The registers of VAT invoices, and documents that are in neither though they trade.
#include "framework/references.h"
#include "host/store/answer.h"
#include "host/store/lookups.h"
#include "host/store/routine_table.h"
#include "host/store/sql.h"
#include "host/store/sql_values.h"

namespace tolvex::store {
namespace {

constexpr int kPurchase = 1, kSale = 2;

constexpr ColumnSpec kRegister[] = {
    col::text("OIDR", 30),      col::text("SFN", 520),        col::text("DocNumber", 500),
    col::text("Number", 500),   col::text("FirmVATCode", 30), col::text("PersonVATCode", 30),
    col::text("FirmName", 300), col::text("PersonName", 300), col::date("DateD"),
    col::number("SumA"),        col::number("VATSum")};
constexpr ColumnSpec kNotInRegister[] = {
    col::text("DocOIDR", 30),   col::text("SFN", 520),        col::text("DocNumber", 500),
    col::text("Number", 500),   col::text("FirmVATCode", 30), col::text("PersonVATCode", 30),
    col::text("FirmName", 300), col::text("PersonName", 300), col::date("DateD"),
    col::number("SumA"),        col::number("VATSum")};

// Operations of one indication in the period with the sums of their entries of one trade type:
// goods and services on one hand, VAT on the other, returned goods taken off.
constexpr std::string_view kDocuments =
    "SELECT o.id, o.otype, o.doc_ref, o.serija, o.number, o.client_ref, o.day,"
    " SUM(CASE WHEN e.trade_type = $1 AND e.vat_indication <> 2"
    " THEN e.restoring_sign * e.sum_lt ELSE 0 END),"
    " SUM(CASE WHEN e.trade_type = $1 AND e.vat_indication = 2"
    " THEN e.restoring_sign * e.sum_lt ELSE 0 END)"
    " FROM oper o LEFT JOIN entry e ON e.oper_id = o.id"
    " WHERE o.vat_register = $2 AND o.day BETWEEN $3 AND $4";
constexpr std::string_view kGrouped =
    " GROUP BY o.id, o.otype, o.doc_ref, o.serija, o.number, o.client_ref, o.day"
    " ORDER BY o.day, o.id";

std::string clientOf(Database& db, std::int64_t oper) {
  return textFrom(db,
                  "SELECT r.foidr FROM entry e JOIN entry_ref r ON r.entry_id = e.id"
                  " WHERE e.oper_id = $1 AND r.kind IN ('O0000100', 'O0001402')"
                  " ORDER BY e.id, r.id LIMIT 1",
                  oper);
}

void addDocument(Database& db, CardNames& names, Answer& answer, const Statement& document,
                 const std::string& reference) {
  const std::string series(document.text(3)), number(document.text(4));
  std::string client(document.text(5));
  if (client.empty()) client = clientOf(db, document.integer(0));
  const bool firm = isRef(client) && kindOf(client) == "O0000100";
  const bool person = isRef(client) && kindOf(client) == "O0001402";
  std::string vatCode;
  if (firm) vatCode = textFrom(db, "SELECT vat_code FROM firm WHERE id = $1", idOf(client));
  if (person) vatCode = textFrom(db, "SELECT vat_code FROM person WHERE id = $1", idOf(client));
  const bool foreign = !document.text(2).empty();
  answer.row()
      .text(reference)
      .text(series.empty() ? std::string() : series + number)
      .text(foreign ? number : std::string())
      .text(number)
      .text(firm ? vatCode : std::string())
      .text(person ? vatCode : std::string())
      .text(firm ? names.of(client) : std::string())
      .text(person ? names.of(client) : std::string())
      .day(document.integer(6))
      .lt(document.integer(7))
      .lt(document.integer(8));
}

Variant GetVATRegister(Session& session, const Arguments& arguments, std::string_view) {
  Answer answer(kRegister);
  const int kind = arguments[2].integer();
  if (kind != kPurchase && kind != kSale) return answer.done();
  auto documents = bound(session.db(), std::string(kDocuments) + std::string(kGrouped), kind, kind,
                         arguments[0].day(), arguments[1].day());
  CardNames names(session.db());
  while (documents->step())
    addDocument(session.db(), names, answer, *documents, operReference(documents->integer(0)));
  return answer.done();
}

// The group and every group below it; empty: all.
std::string groupCondition(const Argument& group, SqlValues& values) {
  const int id = group.id().value_or(0);
  if (id == 0) return {};
  return " AND o.group_id IN (WITH RECURSIVE below(id) AS (SELECT id FROM oper_group WHERE id = " +
         values.mark(id) +
         " UNION SELECT g.id FROM oper_group g JOIN below b ON g.parent_id = b.id)"
         " SELECT id FROM below)";
}

Variant GetNotInRegisterDocuments(Session& session, const Arguments& arguments, std::string_view) {
  Answer answer(kNotInRegister);
  const std::string& direction = arguments[3].str();
  const int kind = direction == "PURCHASE" ? kPurchase : direction == "SALE" ? kSale : 0;
  if (kind == 0) throw Refusal(kWrongParameters, "GetNotInRegisterDocuments: '" + direction + "'");
  SqlValues values;
  for (const int value : {kind, 0, arguments[0].day(), arguments[1].day()}) values.mark(value);
  const std::string group = groupCondition(arguments[2], values);
  auto documents = session.db().prepare(
      std::string(kDocuments) + group +
      " AND EXISTS (SELECT 1 FROM entry x WHERE x.oper_id = o.id AND x.trade_type = $1)" +
      std::string(kGrouped));
  values.bindTo(*documents);
  CardNames names(session.db());
  while (documents->step()) {
    const std::string foreign(documents->text(2));
    addDocument(session.db(), names, answer, *documents,
                foreign.empty() ? operReference(documents->integer(0)) : foreign);
  }
  return answer.done();
}

constexpr Routine kRoutines[] = {
    {"O0200500", "GetVATRegister", "ddi", false, GetVATRegister},
    {"O0200500", "GetNotInRegisterDocuments", "ddrt", false, GetNotInRegisterDocuments},
};

}  // namespace

std::span<const Routine> vatRoutines() { return kRoutines; }

}  // namespace tolvex::store
