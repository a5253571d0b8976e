#include "operations/entries.h"

#include "framework/conversions.h"
#include "framework/object_contract.h"
#include "framework/parameters.h"
#include "framework/references.h"
#include "framework/rounding.h"
#include "framework/text.h"
#include "operations/entry_sums.h"

namespace tolvex {

namespace {

std::string badParameters(std::string_view prefix) {
  return std::string(prefix) + std::string(kLineBreak) + "Klaidingi parametrai !";
}

// Why the addressees are no list of triples, or "". A single element is let through, as none.
std::string badTriples(const Variant::Array& triples, std::string_view prefix) {
  if (triples.size() < 2 || triples.size() % 3 == 0) return {};
  return badParameters(prefix) + std::string(kLineBreak) +
         "n=" + std::to_string(triples.size() - 1);
}

void addAddressees(RowSet& BRProperties, std::string_view guid, const Variant::Array& triples) {
  for (std::size_t i = 0; i + 2 < triples.size(); i += 3) {
    const int sign = static_cast<int>(NullToDouble(triples[i]));
    const std::string reference = NullToText(triples[i + 1]);
    if (!isRef(reference) || (sign != 1 && sign != -1)) continue;
    BRProperties.AddNew();
    BRProperties["BRGUID"] = guid;
    BRProperties["Sign"] = sign;
    BRProperties["FOIDR"] = reference;
    BRProperties["ShowString"] = CutToChars(NullToText(triples[i + 2]), kShowStringLength);
    BRProperties.Update();
  }
}

void setTrade(RowSet& BR, const EntryTrade& trade) {
  BR["TradeOperationType"] = trade.TradeOperationType;
  BR["VATTariff"] = trade.VATTariff < 0 ? Variant(Null{}) : Variant(trade.VATTariff);
  BR["RestoringSign"] = trade.RestoringSign;
}

// The operation's date; an operation that has none is dated today.
DateTime dateOf(VXObjectUIO& operation) {
  Field DateD = operation.Fields()["DateD"];
  if (DateD.IsAbsent()) DateD = Variant(hostContext().clock().today());
  return DateD.Value().AsDate();
}

std::optional<DateTime> givenDate(const Variant& date) {
  if (date.IsAbsent() || (date.IsText() && date.AsText().empty())) return std::nullopt;
  if (date.IsDate()) return date.AsDate();
  const std::optional<DateTime> parsed = DateTime::Parse(NullToText(date));
  if (!parsed) throw RowSetError(RowSetError::TypeMismatch, "no date: " + date.Show());
  return parsed;
}

// Copies what a template line demands into the entry that it makes.
void copyRequired(RowSet& line, RowSet& RequiredAddr, std::string_view guid) {
  const RowSetPtr source = line["RequiredAddr"].Rows();
  Field FOID = (*source)["FOID"], Sign = (*source)["Sign"];
  ForEachRow(*source, [&](RowSet&) {
    RequiredAddr.AddNew();
    RequiredAddr["GUID"] = guid;
    RequiredAddr["FOID"] = FOID.Value();
    RequiredAddr["Sign"] = Sign.Value();
    RequiredAddr.Update();
  });
}

// Moves to the row of that kind and side, the kind being the beginning of `column`.
bool moveToKind(RowSet& rows, const char* column, std::string_view kind, int sign) {
  Field reference = rows[column], Sign = rows["Sign"];
  for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext()) {
    if (kindOf(reference.Text()) == kind && Sign.Number() == sign) return true;
  }
  return false;
}

// A template line may name the very addressee that it requires. One that the caller gave goes
// first; one that is gone leaves the choice to the user.
void addFixedAddressees(RowSet& line, RowSet& BR) {
  const RowSetPtr source = line["RequiredAddr"].Rows();
  if (!source->Fields().contains("FOIDR")) return;
  Field FOIDR = (*source)["FOIDR"], Sign = (*source)["Sign"];
  ForEachRow(*source, [&](RowSet&) {
    const std::string reference(FOIDR.Text());
    const int sign = static_cast<int>(Sign.Number());
    const RowSetPtr present = BR["BRProperties"].Rows();
    if (!isRef(reference) || moveToKind(*present, "FOIDR", kindOf(reference), sign)) return;
    const std::optional<Picked> addressee = hostContext().pickers().lookup(reference);
    if (addressee) SetBRAddressee(&BR, sign, reference, addressee->text, false);
  });
}

}  // namespace

RowSetPtr entriesOf(VXObjectUIO& operation) { return operation.Fields()["BR"].Rows(); }

RowSetPtr entryOf(VXObjectUIO& operation, std::string_view guid) {
  RowSetPtr entry = entriesOf(operation)->Clone();
  entry->SetFilter("GUID = " + quoted(guid));
  return entry->RecordCount() == 0 ? nullptr : entry;
}

MethodResult AddBR(VXObjectUIO& operation, const NewEntry& entry) {
  const std::string nothing;
  if (!sumsAreComplete(entry.sums) || entry.AccountD.empty() || entry.AccountC.empty()) {
    return refused(
        badParameters("Method AddBR_1:") + std::string(kLineBreak) +
            describeSums(quoted(entry.AccountD) + "," + quoted(entry.AccountC), entry.sums),
        nothing);
  }
  if (std::string bad = badTriples(entry.addressees, "Method AddBR_2:"); !bad.empty()) {
    return refused(std::move(bad), nothing);
  }
  if (!sidesAgree(entry.sums)) {
    return refused("Nesutampa dviejų valiutų litinė išraiška !", nothing);
  }
  const std::optional<DateTime> ownDate = givenDate(entry.date);

  const DateTime operationDate = dateOf(operation);
  const RowSetPtr set = entriesOf(operation);
  RowSet& BR = *set;
  const std::string guid = operation.GetGUID();
  BR.AddNew();
  BR["GUID"] = guid;
  BR["DateD"] = Variant(ownDate.value_or(operationDate));
  BR["SumA"] = litasSum(entry.sums);
  BR["AccountD"] = entry.AccountD;
  BR["AccountC"] = entry.AccountC;
  BR["Info"] = entry.Info;
  BR["Tag"] = entry.Tag;
  if (!entry.FGUID.empty()) BR["FGUID"] = entry.FGUID;
  setTrade(BR, entry.trade);
  BR.Update();
  addCurrencyRows(*BR["BRCurrency"].Rows(), guid, entry.sums, NoSign::BothSides);
  addAddressees(*BR["BRProperties"].Rows(), guid, entry.addressees);
  return done(guid);
}

MethodResult AddTemplate(VXObjectUIO& operation, const TemplateEntries& entries) {
  const std::string id = std::to_string(entries.BRTemplateID);
  if (!sumsAreComplete(entries.sums) || entries.BRTemplateID <= 0) {
    return refused(badParameters("Method AddTemplate_1:") + std::string(kLineBreak) +
                   describeSums(quoted(id), entries.sums));
  }
  if (std::string bad = badTriples(entries.addressees, "Method AddTemplate_2:"); !bad.empty()) {
    return refused(std::move(bad));
  }
  if (!sidesAgree(entries.sums)) return refused("Nesutampa dviejų valiutų litinė išraiška !");
  MethodResult read = operation.Properties("TemplateAccAndAddr", quoted("O0201600" + id));
  if (read.Code != kDone) return read;

  const RowSetPtr lines = read.Value.AsRows(), set = entriesOf(operation);
  RowSet& BR = *set;
  const DateTime date = dateOf(operation);
  const double sumLt = litasSum(entries.sums);
  ForEachRow(*lines, [&](RowSet& line) {
    const std::string guid = operation.GetGUID();
    BR.AddNew();
    BR["GUID"] = guid;
    BR["DateD"] = Variant(date);
    BR["SumA"] = roundLt(line["Factor"].Number() * sumLt);
    BR["AccountD"] = line["AccountD"].Value();
    BR["AccountC"] = line["AccountC"].Value();
    BR["BRTemplateAccID"] = line["ID"].Value();
    setTrade(BR, entries.trade);
    BR.Update();
    copyRequired(line, *BR["RequiredAddr"].Rows(), guid);
    addCurrencyRows(*BR["BRCurrency"].Rows(), guid, entries.sums, NoSign::FirstDebit);
    addAddressees(*BR["BRProperties"].Rows(), guid, entries.addressees);
    addFixedAddressees(line, BR);
  });
  return done(true);
}

MethodResult CreateBR(VXObjectUIO& operation, Arguments par) {
  if (par.size() < 4) return refused("Not set parameter for CreateBR method !", false);
  const std::optional<DateTime> date = givenDate(par[0]);
  if (!date) throw RowSetError(RowSetError::TypeMismatch, "an entry has a date");
  const RowSetPtr set = entriesOf(operation);
  RowSet& BR = *set;
  BR.AddNew();
  BR["GUID"] = operation.GetGUID();
  BR["DateD"] = Variant(*date);
  BR["SumA"] = NullToDouble(par[1]);
  BR["AccountD"] = NullToText(par[2]);
  BR["AccountC"] = NullToText(par[3]);
  BR["BRTemplateAccID"] = Variant(Null{});
  if (par.size() >= 5) BR["Info"] = NullToText(par[4]);
  if (par.size() >= 6) BR["Tag"] = NullToText(par[5]);
  BR.Update();
  return done(true);
}

// --- addressees -------------------------------------------------------------------------------

void SetBRAddressee(RowSet* BR, int sign, std::string_view reference, std::string_view shown,
                    bool checkRequired) {
  if (!BR || BR->RecordCount() == 0 || !isRef(reference) || (sign != 1 && sign != -1)) return;
  const std::string_view kind = kindOf(reference);
  if (checkRequired && !moveToKind(*(*BR)["RequiredAddr"].Rows(), "FOID", kind, sign)) return;
  const RowSetPtr set = (*BR)["BRProperties"].Rows();
  RowSet& BRProperties = *set;
  const bool found = moveToKind(BRProperties, "FOIDR", kind, sign);
  if (!found) {
    BRProperties.AddNew();
    BRProperties["BRGUID"] = (*BR)["GUID"].Value();
    BRProperties["Sign"] = sign;
  }
  BRProperties["FOIDR"] = reference;
  BRProperties["ShowString"] = CutToChars(shown, kShowStringLength);
  if (!found) BRProperties.Update();
}

std::string AddresseeKeyString(RowSet& BRProperties) {
  std::string debit, credit;
  Field Sign = BRProperties["Sign"], FOIDR = BRProperties["FOIDR"];
  Field ShowString = BRProperties["ShowString"];
  bool hasDebit = false, hasCredit = false;
  ForEachRow(BRProperties, [&](RowSet&) {
    if (kindOf(FOIDR.Text()) == "O0201500") return;
    const auto take = [&](bool& has, std::string& side, const char* letter) {
      if (has) return;
      has = true;
      if (!isRef(FOIDR.Text())) return;
      side = letter + std::string(FOIDR.Text()) + "#" + trim(ShowString.Text());
    };
    if (Sign.Number() == 1) take(hasDebit, debit, "D");
    if (Sign.Number() == -1) take(hasCredit, credit, "C");
  });
  return debit + (debit.empty() || credit.empty() ? "" : "#") + credit;
}

// --- deleting ---------------------------------------------------------------------------------

void ClearNewChildRows(RowSet& rows) {
  const bool mayBeStored = rows.Fields().contains("ID");
  for (; !rows.Eof(); rows.MoveNext()) {
    if (!mayBeStored || rows["ID"].IsEmpty()) rows.Delete(1);
  }
}

namespace {

// The filter that says which entries may go; false for a sign that says nothing.
bool deleteFilter(std::string_view guidOrAccount, int sign, std::string& filter) {
  const std::string value = quoted(guidOrAccount);
  if (guidOrAccount.empty()) {
    filter.clear();
  } else if (sign == 9) {
    filter = "GUID = " + value;
  } else if (sign == 1) {
    filter = "AccountD = " + value;
  } else if (sign == -1) {
    filter = "AccountC = " + value;
  } else if (sign == 0) {
    filter = "AccountD = " + value + " OR AccountC = " + value;
  } else {
    return false;
  }
  return true;
}

// Whether the entry at the cursor is one that deals with the addressee.
bool concerns(RowSet& BR, int sign, std::string_view reference) {
  if (BR["SumA"].Number() == 0 || !isRef(reference)) return true;
  const RowSetPtr set = BR["BRProperties"].Rows();
  RowSet& BRProperties = *set;
  if (BRProperties.RecordCount() == 0) return true;
  std::string filter = "FOIDR = " + quoted(reference);
  if (sign != 0) filter += " And Sign = " + std::to_string(sign);
  BRProperties.SetFilter(filter);
  const bool found = BRProperties.RecordCount() > 0;
  BRProperties.SetFilter("");
  return found;
}

}  // namespace

MethodResult DeleteBR(VXObjectUIO& operation, std::string_view guidOrAccount, int sign,
                      std::string_view reference) {
  const RowSetPtr set = entriesOf(operation);
  RowSet& BR = *set;
  if (BR.Clone()->RecordCount() == 0) return done(true);  // whatever filter stands
  std::string filter;
  if (!deleteFilter(guidOrAccount, sign, filter)) {
    return refused("DeleteBR : Klaidingi parametrai !", false);
  }
  BR.SetFilter(filter);
  ForEachRow(BR, [&](RowSet&) {
    if (!concerns(BR, sign, reference)) return;
    for (const char* name : {"BRProperties", "BRCurrency", "RequiredAddr"}) {
      const RowSetPtr children = BR[name].Rows();
      children->MoveFirst();
      ClearNewChildRows(*children);
    }
    BR.Delete(1);
    hostContext().pump().turn();
  });
  BR.SetFilter("");
  return done(true);
}

}  // namespace tolvex
