// Routines of the cards of firms and VAT tariffs.
#include "framework/text.h"
#include "host/store/answer.h"
#include "host/store/routine_table.h"
#include "host/store/sql.h"
#include "host/store/vat_tariff.h"

namespace tolvex::store {
namespace {

constexpr ColumnSpec kFirms[] = {col::text("OIDR"), col::text("Name")};

// Firms of a code, but for the one that asks and its own family: branches share their firm's code.
Variant GetFirmsByCode(Session& session, const Arguments& arguments, std::string_view) {
  auto firms = bound(session.db(),
                     "SELECT id, name FROM firm WHERE code = $1 AND id <> $2 AND id <> $3 AND"
                     " COALESCE(parent_id, -1) <> $2 AND COALESCE(parent_id, -1) <> $3"
                     " ORDER BY id",
                     arguments[0].str(), arguments[1].integer(), arguments[2].integer());
  Answer answer(kFirms);
  while (firms->step())
    answer.row().text("O0000100" + std::string(firms->text(0))).text(firms->text(1));
  return answer.done();
}

// All tariffs in their order, in place of those that the caller had read: "18;9;5".
Variant SaveVATtariffs(Session& session, const Arguments& arguments, std::string_view) {
  Database& db = session.db();
  if (!session.rights(kTariffComponent).edit) refuseSave();
  std::vector<std::string> stored;
  auto tariffs = db.prepare("SELECT value FROM vat_tariff ORDER BY sort_order, id");
  while (tariffs->step())
    stored.push_back(plainNumber(static_cast<double>(tariffs->integer(0)) / 100));
  if (join(stored, ";") != arguments[0].str())
    throw Refusal(kChangedByOther, "PVM tarifus tuo metu pakeitė kitas vartotojas!");
  run(db, "DELETE FROM vat_tariff");
  if (arguments[1].str().empty()) return {};
  int order = 0;
  for (const std::string& written : split(arguments[1].str(), ';')) {
    double value = -1;
    if (!parsePlainNumber(written, value))
      throw Refusal(kWrongParameters, "Klaidingas PVM tarifas: " + written);
    const int stored = tariffHundredths(value);
    if (anyRow(db, "SELECT 1 FROM vat_tariff WHERE value = $1", stored))
      refuseRule("PVM tarifas nurodytas du kartus: " + written + "!");
    run(db, "INSERT INTO vat_tariff (value, sort_order) VALUES ($1, $2)", stored, ++order);
  }
  return {};
}

constexpr Routine kRoutines[] = {
    {"O0000100", "GetFirmsByCode", "tii", false, GetFirmsByCode},
    {"O0001629", "SaveVATtariffs", "tt", true, SaveVATtariffs},
};

}  // namespace

std::span<const Routine> cardRoutines() { return kRoutines; }

}  // namespace tolvex::store
