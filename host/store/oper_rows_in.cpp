// From the record of a screen to rows of whole cents.
#include <map>
#include <set>

#include "framework/references.h"
#include "framework/text.h"
#include "host/store/balances.h"
#include "host/store/dimset.h"
#include "host/store/oper_change.h"
#include "host/store/whole_parts.h"
#include "operations/entry_rules.h"

namespace tolvex::store {

namespace {

constexpr double kCents = 100, kCurrencyParts = 10000;

std::string textOf(RowSet& row, const char* name, std::size_t limit) {
  const std::string text(row[name].Text());
  if (length(text) > limit) {
    refuseRule(std::string("Per ilgas tekstas: ") + name + ", daugiausia " + std::to_string(limit) +
               " ženklų!");
  }
  return text;
}

std::optional<std::string> textOrNull(RowSet& row, const char* name, std::size_t limit) {
  if (row[name].IsAbsent()) return std::nullopt;
  return textOf(row, name, limit);
}

int intOf(RowSet& row, const char* name, int absent = 0) {
  const Field field = row[name];
  return field.IsAbsent() ? absent : field.Value().AsInt();
}

std::optional<std::string> momentOf(RowSet& row, const char* name) {
  if (row[name].IsAbsent()) return std::nullopt;
  std::string text = row[name].Value().AsDate().LongText();
  text[4] = text[7] = '-';
  return text;
}

int dayOf(RowSet& row, const char* name, int absent) {
  const Field field = row[name];
  return field.IsAbsent() ? absent : field.Value().AsDate().DayNumber();
}

std::string sumText(double sum) {
  const std::string plain = replaceAll(plainNumber(sum), ".", ",");
  const std::size_t mark = plain.find(',');
  if (mark == std::string::npos) return plain + ",00";
  return plain.size() - mark == 2 ? plain + "0" : plain;
}

[[noreturn]] void refuseEntry(std::string_view message, RowSet& BR) {
  refuseRule(entryFailure(message, BR, sumText(BR["SumA"].Number())));
}

std::int64_t partsOrRefuse(double value, double partsInOne, RowSet& BR) {
  const auto parts = wholeParts(value, partsInOne);
  if (!parts) refuseEntry(kBadSum, BR);
  return *parts;
}

int signOf(RowSet& row, RowSet& BR) {
  const int sign = intOf(row, "Sign");
  if (sign != 1 && sign != -1) refuseEntry("Klaidinga įrašo pusė!", BR);
  return sign;
}

SideRow currencySide(RowSet& row, RowSet& BR, SideRow side) {
  side.cur = std::string(row["FCurrencyCode"].Text());
  side.rate = row["RateCurr"].Number();
  if (!(side.rate >= 0)) refuseEntry(kNoCurrencyRate, BR);
  side.sumCur = partsOrRefuse(row["SumCurr"].Number(), kCurrencyParts, BR);
  if (side.sumCur < 0) refuseEntry(kBadSum, BR);
  const std::string code = trim(side.cur);
  const bool none = code.empty() && (side.cur.size() == 3 || side.sumCur == 0);
  if (!none && length(code) != 3) refuseEntry(kNoCurrencyCode, BR);
  return side;
}

// The currency sides of the record laid over those of the entry as it stood.
void takeCurrencies(RowSet& BR, EntryRow& entry) {
  RowSet& rows = *BR["BRCurrency"].Rows();
  std::set<int> given;
  ForEachRow(rows, [&](RowSet& row) {  // what left its side
    if (row.State() == RowState::Added) return;
    SideRow& side = entry.side(intOf(row, "ID") % 2 == 0 ? 1 : -1);
    side.cur = kBaseCode;
    side.rate = 0;
    side.sumCur = 0;
  });
  ForEachRow(rows, [&](RowSet& row) {
    if (row.State() == RowState::Deleted) return;
    const int sign = signOf(row, BR);
    SideRow& side = entry.side(sign);
    if (!given.insert(sign).second || side.cur != kBaseCode) {
      refuseEntry("Vienoje įrašo pusėje gali būti tik viena valiuta!", BR);
    }
    side = currencySide(row, BR, side);
  });
}

RefRow refFrom(RowSet& row, RowSet& BR, const std::set<std::string, std::less<>>& addresseeKinds) {
  RefRow ref;
  ref.sign = signOf(row, BR);
  ref.foidr = textOf(row, "FOIDR", 30);
  ref.pointsTo = operIdOf(ref.foidr);
  ref.showString = CutToChars(row["ShowString"].Text(), 800);
  if (ref.pointsTo != 0) {
    ref.role = kOwnOperation;
  } else {
    ref.role = addresseeKinds.contains(kindOf(ref.foidr)) ? kAddressee : kOtherDocument;
  }
  return ref;
}

// The addressees of a side make up the key of a row.
void refuseTooMany(const EntryRow& entry, RowSet& BR) {
  for (const int sign : {1, -1}) {
    if (dimsetKey(entry, sign).size() > kLongestDimset) {
      refuseEntry("Vienoje įrašo pusėje per daug adresatų!", BR);
    }
  }
}

void takeReferences(RowSet& BR, const std::set<std::string, std::less<>>& addresseeKinds,
                    EntryChange& change) {
  EntryRow& entry = *change.after;
  RowSet& rows = *BR["BRProperties"].Rows();
  const auto drop = [&](int id) {
    std::erase_if(entry.refs, [id](const RefRow& ref) { return ref.id == id; });
  };
  ForEachRow(rows, [&](RowSet& row) {
    if (row.State() == RowState::Deleted) drop(intOf(row, "ID"));
  });
  ForEachRow(rows, [&](RowSet& row) {
    if (row.State() == RowState::Deleted) return;
    const int id = row.State() == RowState::Added ? 0 : intOf(row, "ID");
    if (!isRef(row["FOIDR"].Text())) {
      if (id != 0) drop(id);
      change.refPlaces.push_back(-1);
      return;
    }
    RefRow ref = refFrom(row, BR, addresseeKinds);
    ref.id = id;
    std::size_t place = entry.refs.size();
    for (std::size_t i = 0; id != 0 && i < entry.refs.size(); ++i) {
      if (entry.refs[i].id == id) place = i;
    }
    if (place == entry.refs.size()) entry.refs.emplace_back();
    entry.refs[place] = std::move(ref);
    change.refPlaces.push_back(static_cast<int>(place));
  });
}

void takeFields(RowSet& BR, int operDay, EntryRow& entry) {
  entry.guid = textOf(BR, "GUID", 40);
  entry.day = dayOf(BR, "DateD", operDay);
  if (entry.day < kFirstDay) refuseEntry("Klaidinga įrašo data: " + dayText(entry.day) + "!", BR);
  entry.sumLt = partsOrRefuse(BR["SumA"].Number(), kCents, BR);
  entry.info = textOrNull(BR, "Info", 1000);
  entry.tag = textOrNull(BR, "Tag", 100);
  entry.fguid = textOrNull(BR, "FGUID", 40);
  entry.tradeType = intOf(BR, "TradeOperationType");
  entry.restoringSign = intOf(BR, "RestoringSign", 1);
  entry.vatIndication = intOf(BR, "VATIndication");
  entry.vatFlag = intOf(BR, "VATFlag");
  entry.vatTariff.reset();
  if (!BR["VATTariff"].IsAbsent()) {
    entry.vatTariff = static_cast<int>(partsOrRefuse(BR["VATTariff"].Number(), 100, BR));
  }
  entry.templateLineId.reset();
  if (const int line = intOf(BR, "BRTemplateAccID"); line != 0) entry.templateLineId = line;
  for (const int sign : {1, -1}) {
    SideRow& side = entry.side(sign);
    const std::string code(BR[sign == 1 ? "AccountD" : "AccountC"].Text());
    if (code == side.account && !code.empty()) continue;
    side.account = code;
    side.accountId = kUnknownAccount;
  }
}

using KindSet = std::set<std::string, std::less<>>;

const KindSet& addresseeKinds(Session& session) {
  KindSet& kinds = session.kept<KindSet>();
  if (kinds.empty()) {
    auto select = session.db().prepare("SELECT foid FROM addressee_kind WHERE role = 0");
    while (select->step()) kinds.emplace(select->text(0));
  }
  return kinds;
}

bool sameSide(const SideRow& a, const SideRow& b) {
  return a.account == b.account && a.accountId == b.accountId && a.cur == b.cur &&
         a.rate == b.rate && a.sumCur == b.sumCur;
}

}  // namespace

bool EntryChange::touched() const {
  if (!before || !after) return true;
  return before->day != after->day || before->sumLt != after->sumLt ||
         !sameSide(before->debit, after->debit) || !sameSide(before->credit, after->credit) ||
         before->refs != after->refs;
}

HeaderRow headerFrom(RowSet& changes, std::string_view otype, const HeaderRow* before) {
  HeaderRow row;
  if (before != nullptr) {
    row = *before;
    ++row.rowVersion;
  } else {
    const std::string_view own = changes["OType"].Text();
    row.otype = own.size() == kKindLength ? own : otype;
  }
  row.groupId = intOf(changes, "BROperGroupID");
  row.day = dayOf(changes, "DateD", 0);
  if (row.day == 0) refuseRule("Nenurodyta operacijos data!");
  if (row.day < kFirstDay) {
    refuseRule("Klaidinga operacijos data: " + dayText(row.day) + "!");
  }
  row.serija = textOf(changes, "Serija", 20);
  row.number = textOf(changes, "Number", 500);
  row.comment = textOf(changes, "Comment", 1000);
  row.parameters = textOf(changes, "Parameters", 6000);
  row.autoNumber = intOf(changes, "AutoNumber");
  row.vatRegister = intOf(changes, "VATRegisterIndication");
  row.lockGuid = textOrNull(changes, "LockGUID", 40);
  row.createdBy = textOrNull(changes, "CreatedByUserOIDR", 30);
  row.createdByName = textOrNull(changes, "CreatedByUserName", 200);
  row.createdAt = momentOf(changes, "CreationDate");
  row.changedBy = textOrNull(changes, "ChangedByUserOIDR", 30);
  row.changedByName = textOrNull(changes, "ChangedByUserName", 200);
  row.changedAt = momentOf(changes, "CorrectionDate");

  // Screens write the client of a money document where they read the document's own reference.
  const std::string foidr = textOf(changes, "FOIDR", 30);
  if (isParty(foidr)) {
    row.clientRef = foidr;
  } else if (before == nullptr && isRef(foidr) && !isOperationKind(kindOf(foidr))) {
    row.docRef = foidr;
  }
  return row;
}

std::vector<EntryChange> entriesFrom(Session& session, RowSet& changes, const OperChange& change) {
  const auto& kinds = addresseeKinds(session);
  std::vector<EntryChange> entries;
  ForEachRow(*changes["BR"].Rows(), [&](RowSet& BR) {
    EntryChange entry;
    if (BR.State() != RowState::Added) {
      entry.before = readEntry(session.db(), change.after.id, intOf(BR, "ID"));
      if (!entry.before) refuseEditedGone();
    }
    if (BR.State() != RowState::Deleted) {
      entry.after = entry.before.value_or(EntryRow{});
      takeFields(BR, change.after.day, *entry.after);
      takeCurrencies(BR, *entry.after);
      takeReferences(BR, kinds, entry);
      refuseTooMany(*entry.after, BR);
    }
    entries.push_back(std::move(entry));
  });
  return entries;
}

std::vector<int> pointersIn(RowSet& changes) {
  std::set<int> ids;
  ForEachRow(*changes["BR"].Rows(), [&](RowSet& BR) {
    ForEachRow(*BR["BRProperties"].Rows(), [&](RowSet& row) {
      if (const int id = operIdOf(row["FOIDR"].Text())) ids.insert(id);
    });
  });
  return {ids.begin(), ids.end()};
}

void writeBack(RowSet& changes, const OperChange& change) {
  const HeaderRow& header = change.after;
  changes.MoveFirst();
  const std::string reference = refOf(kOperationKind, header.id);
  changes["ID"] = static_cast<double>(header.id);
  changes["OIDR"] = reference;
  changes["OID"] = reference;
  changes["OType"] = header.otype;
  changes["FOIDR"] = header.docRef.value_or(refOf(header.otype, header.id));
  changes["ClientOIDR"] = header.clientRef ? Variant(*header.clientRef) : Variant(Null{});
  changes["Preview"] = operName(header);
  changes["RowVersion"] = static_cast<double>(header.rowVersion);
  changes["Number"] = header.number;
  changes["AutoNumber"] = static_cast<double>(header.autoNumber);

  auto entry = change.entries.begin();
  ForEachRow(*changes["BR"].Rows(), [&](RowSet& BR) {
    const EntryChange& stored = *entry++;
    if (!stored.after) return;
    const EntryRow& row = *stored.after;
    BR["ID"] = static_cast<double>(row.id);
    BR["GUID"] = row.guid;
    BR["DateD"] = Variant(DateTime::FromDayNumber(row.day));
    ForEachRow(*BR["BRCurrency"].Rows(), [&](RowSet& side) {
      if (side.State() == RowState::Deleted) return;
      side["ID"] = 2.0 * row.id + (side["Sign"].Number() == 1 ? 0 : 1);
      side["BRGUID"] = row.guid;
    });
    auto place = stored.refPlaces.begin();
    ForEachRow(*BR["BRProperties"].Rows(), [&](RowSet& ref) {
      if (ref.State() == RowState::Deleted) return;
      const int at = *place++;
      if (at < 0) return;
      ref["ID"] = static_cast<double>(row.refs[static_cast<std::size_t>(at)].id);
      ref["BRGUID"] = row.guid;
    });
  });
}

}  // namespace tolvex::store
