#include "host/store/oper_record.h"

#include "framework/references.h"
#include "framework/text.h"
#include "host/store/lookups.h"
#include "operations/entry_rules.h"

namespace tolvex::store {

namespace {

Variant orNull(const std::optional<std::string>& text) {
  return text ? Variant(*text) : Variant(Null{});
}

Variant momentOrNull(const std::optional<std::string>& text) {
  const auto moment = text ? DateTime::Parse(*text) : std::nullopt;
  return moment ? Variant(*moment) : Variant(Null{});
}

void loadHeader(RowSet& record, Database& db, const HeaderRow& row) {
  const std::string reference = refOf(kOperationKind, row.id);
  record["ID"] = static_cast<double>(row.id);
  record["OIDR"] = reference;
  record["OID"] = reference;
  record["OType"] = row.otype;
  record["FOIDR"] = row.docRef.value_or(refOf(row.otype, row.id));
  record["Preview"] = operName(row);
  record["RowVersion"] = static_cast<double>(row.rowVersion);
  if (row.clientRef) {
    record["ClientOIDR"] = *row.clientRef;
    record["ClientName"] = CardNames(db).of(*row.clientRef);
  }
  record["DateD"] = Variant(DateTime::FromDayNumber(row.day));
  record["Serija"] = row.serija;
  record["Number"] = row.number;
  record["Comment"] = row.comment;
  record["Parameters"] = row.parameters;
  record["BROperGroupID"] = static_cast<double>(row.groupId);
  record["AutoNumber"] = static_cast<double>(row.autoNumber);
  record["VATRegisterIndication"] = static_cast<double>(row.vatRegister);
  record["LockGUID"] = orNull(row.lockGuid);
  record["CreatedByUserOIDR"] = orNull(row.createdBy);
  record["CreatedByUserName"] = orNull(row.createdByName);
  record["CreationDate"] = momentOrNull(row.createdAt);
  record["ChangedByUserOIDR"] = orNull(row.changedBy);
  record["ChangedByUserName"] = orNull(row.changedByName);
  record["CorrectionDate"] = momentOrNull(row.changedAt);
}

void loadCurrency(RowSet& rows, const EntryRow& entry, int sign) {
  const SideRow& side = entry.side(sign);
  if (side.cur == kBaseCode) return;
  rows.LoadRow();
  rows["ID"] = 2.0 * entry.id + (sign == 1 ? 0 : 1);
  rows["BRGUID"] = entry.guid;
  rows["Sign"] = static_cast<double>(sign);
  rows["RateCurr"] = side.rate;
  rows["SumCurr"] = static_cast<double>(side.sumCur) / 10000.0;
  rows["FCurrencyCode"] = side.cur;
}

}  // namespace

std::string operComponent(int groupId) { return "CBROperRights" + std::to_string(groupId); }

const std::vector<RequiredRow>& RequiredAddressees::of(int templateLineId) {
  const auto [place, fresh] = lines_.try_emplace(templateLineId);
  if (!fresh) return place->second;
  auto select = db_.prepare(
      "SELECT l.guid, a.foid, a.sign FROM template_line l"
      " LEFT JOIN template_addr a ON a.line_id = l.id WHERE l.id = $1 ORDER BY a.id");
  select->bind(1, templateLineId);
  bool found = false;
  while (select->step()) {
    found = true;
    if (select->isNull(1)) continue;
    place->second.push_back(
        {std::string(select->text(0)), std::string(select->text(1)), select->whole(2)});
  }
  if (!found) throw Refusal(kReferred, "Operacijos šablono eilutė nebeegzistuoja!");
  return place->second;
}

void loadEntry(RowSet& BR, const EntryRow& entry, const std::vector<RequiredRow>& required) {
  BR.LoadRow();
  BR["ID"] = static_cast<double>(entry.id);
  BR["GUID"] = entry.guid;
  BR["DateD"] = Variant(DateTime::FromDayNumber(entry.day));
  BR["SumA"] = static_cast<double>(entry.sumLt) / 100.0;
  BR["AccountD"] = entry.debit.account;
  BR["AccountC"] = entry.credit.account;
  BR["Info"] = orNull(entry.info);
  BR["Tag"] = orNull(entry.tag);
  BR["TradeOperationType"] = static_cast<double>(entry.tradeType);
  BR["RestoringSign"] = static_cast<double>(entry.restoringSign);
  BR["VATIndication"] = static_cast<double>(entry.vatIndication);
  BR["VATFlag"] = static_cast<double>(entry.vatFlag);
  if (entry.vatTariff) BR["VATTariff"] = *entry.vatTariff / 100.0;
  if (entry.fguid) BR["FGUID"] = *entry.fguid;
  if (entry.templateLineId) BR["BRTemplateAccID"] = static_cast<double>(*entry.templateLineId);

  if (entry.debit.cur != kBaseCode || entry.credit.cur != kBaseCode) {
    RowSet& currencies = *BR["BRCurrency"].Rows();
    loadCurrency(currencies, entry, 1);
    loadCurrency(currencies, entry, -1);
    currencies.MoveFirst();  // what is written after a move is the user's
  }
  if (!entry.refs.empty()) {
    RowSet& refs = *BR["BRProperties"].Rows();
    for (const RefRow& ref : entry.refs) {
      refs.LoadRow();
      refs["ID"] = static_cast<double>(ref.id);
      refs["BRGUID"] = entry.guid;
      refs["Sign"] = static_cast<double>(ref.sign);
      refs["FOIDR"] = ref.foidr;
      refs["ShowString"] = ref.showString;
    }
    refs.MoveFirst();
  }
  if (required.empty()) return;
  RowSet& demands = *BR["RequiredAddr"].Rows();
  for (const RequiredRow& row : required) {
    demands.LoadRow();
    demands["GUID"] = entry.guid;
    demands["BRTemplateAccGUID"] = row.lineGuid;
    demands["FOID"] = row.foid;
    demands["Sign"] = static_cast<double>(row.sign);
  }
  demands.MoveFirst();
}

RowSetPtr loadOperation(Session& session, int id) {
  Database& db = session.db();
  const RowSetPtr record = RowSet::make(kOperation);
  record->LoadRow();
  const std::optional<HeaderRow> header = readHeader(db, id);
  if (!header) return record;
  if (!session.rights(operComponent(header->groupId)).view) {
    refuseView();
  }
  loadHeader(*record, db, *header);
  RowSet& BR = *(*record)["BR"].Rows();
  RequiredAddressees required(db);
  static const std::vector<RequiredRow> kNone;
  for (const EntryRow& entry : readEntries(db, id)) {
    loadEntry(BR, entry, entry.templateLineId ? required.of(*entry.templateLineId) : kNone);
  }
  BR.MoveFirst();
  record->MoveFirst();
  return record;
}

RowSetPtr createOperation(std::string_view kind, std::string_view otype) {
  const RowSetPtr record = RowSet::make(kOperation);
  record->AddNew();
  (*record)["OType"] = otype.size() == kKindLength ? otype : kind;
  return record;
}

}  // namespace tolvex::store
