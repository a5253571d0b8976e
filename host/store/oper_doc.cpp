#include "host/store/oper_doc.h"

#include <algorithm>

#include "framework/date_time.h"
#include "framework/references.h"
#include "framework/text.h"

namespace tolvex::store {

namespace {

enum Place : std::size_t {
  kInternalCode = 1,
  kCurrency,
  kRate,
  kMyAccount,
  kClient,
  kClientAccount,
  kPaymentCode,
  kPriority,
  kImportDay,
  kImportKey = 13,
};
constexpr std::string_view kImported = "IMPORTEDRECORDID:";
constexpr std::size_t kLongestRef = 30, kLongestText = 100;

std::optional<std::string> reference(const std::string& text) {
  if (!isRef(text) || text.size() > kLongestRef) return std::nullopt;
  return text;
}

std::optional<std::string> words(const std::string& text) {
  if (text.empty()) return std::nullopt;
  return CutToChars(text, kLongestText);
}

double rateOf(const std::string& text) {
  double value = 0;
  return parsePlainNumber(replaceAll(trim(text), ",", "."), value) && value > 0 ? value : 0;
}

int bankOf(Database& db, const std::optional<std::string>& accountRef) {
  if (!accountRef) return 0;
  auto select = db.prepare("SELECT bank_id FROM bank_account WHERE id = $1");
  select->bind(1, idOf(*accountRef));
  return select->step() ? select->whole(0) : 0;
}

}  // namespace

std::optional<DocRow> docOf(const HeaderRow& header) {
  if (header.otype != "O0201501" && header.otype != "O0201502") return std::nullopt;
  const std::vector<std::string> fields = split(header.parameters, '#');
  const auto field = [&](std::size_t place) {
    return place < fields.size() ? fields[place] : std::string();
  };
  DocRow doc;
  const std::string code = trim(field(kCurrency));
  if (code.size() == 3) doc.cur = code;
  doc.rate = rateOf(field(kRate));
  doc.myAccountRef = reference(field(kMyAccount));
  doc.clientRef = reference(field(kClient));
  doc.clientAccountRef = reference(field(kClientAccount));
  doc.internalCode = words(field(kInternalCode));
  doc.paymentCode = words(field(kPaymentCode));
  if (field(kPriority).starts_with('2')) doc.priority = 2;
  const std::string imported = field(kImportKey);
  if (imported.size() > kImported.size() && imported.starts_with(kImported)) {
    doc.importKey = CutToChars(imported.substr(kImported.size()), kLongestText);
    const auto day = DateTime::Parse(field(kImportDay));
    doc.importDay = day ? day->DayNumber() : header.day;
  }
  return doc;
}

void writeDoc(Database& db, const HeaderRow& header, bool stored) {
  const std::optional<DocRow> doc = docOf(header);
  if (stored) db.prepare("DELETE FROM oper_doc WHERE oper_id = $1")->bind(1, header.id).run();
  if (!doc) return;
  const int bank = bankOf(db, doc->myAccountRef);
  auto insert = db.prepare(
      "INSERT INTO oper_doc (oper_id, otype, day, cur, rate, my_account_ref, my_bank_id,"
      " client_ref, client_account_ref, internal_code, payment_code, priority, import_day,"
      " import_key) VALUES ($1,$2,$3,$4,$5,$6,$7,$8,$9,$10,$11,$12,$13,$14)");
  insert->bind(1, header.id).bind(2, header.otype).bind(3, header.day).bind(4, doc->cur);
  insert->bind(5, doc->rate).bind(6, doc->myAccountRef);
  if (bank != 0) {
    insert->bind(7, bank);
  } else {
    insert->bindNull(7);
  }
  insert->bind(8, doc->clientRef).bind(9, doc->clientAccountRef).bind(10, doc->internalCode);
  insert->bind(11, doc->paymentCode).bind(12, doc->priority).bind(13, doc->importDay);
  insert->bind(14, doc->importKey);
  insert->run();
}

}  // namespace tolvex::store
