#include "operations/screen/entry_list.h"

#include <utility>
#include <vector>

#include "operations/entry_editor.h"
#include "operations/new_entry.h"
#include "operations/screen/operation_rows.h"
#include "platform/save_outcome.h"

namespace tolvex {
EntryMenu::EntryMenu(ui::Form* form)
    : mnuBR(form, "mnuBR", "Įrašo kortelė"),
      mnuMainBR(form, "mnuMainBR", "Pagrindinis įrašas"),
      mnuReferenceD(form, "mnuReferenceD", "Debeto nuorodos operacija"),
      mnuReferenceC(form, "mnuReferenceC", "Kredito nuorodos operacija"),
      mnuFreeTemplate(form, "mnuFreeTemplate", "Pridėti įrašą be šablono"),
      mnuAddTemplate(form, "mnuAddTemplate", "Pridėti įrašus pagal šabloną"),
      mnuOperTemplate(form, "mnuOperTemplate", "Pakeisti šabloną"),
      mnuBRCopy(form, "mnuBRCopy", "Išdėstyti pagal mėnesius"),
      mnuBRDelete(form, "mnuBRDelete", "Panaikinti įrašą"),
      mnuDeleteAll(form, "mnuDeleteAll", "Panaikinti visus įrašus") {
  mnuBR.shortcut = "Enter";
  mnuFreeTemplate.shortcut = "Ins";
  mnuBRDelete.shortcut = "Del";
  menu.items = {&mnuBR,     &mnuMainBR,       &mnuReferenceD,  &mnuReferenceC,
                nullptr,    &mnuFreeTemplate, &mnuAddTemplate, &mnuOperTemplate,
                &mnuBRCopy, nullptr,          &mnuBRDelete,    &mnuDeleteAll};
}

EntryList::EntryList(ui::ListView& list, Columns columns) : list_(list), columns_(columns) {}

HostContext& EntryList::host() const { return list_.form.host(); }

ui::Row EntryList::rowOf(const EntryLine& line) const {
  ui::Row row;
  row.key = line.guid;
  if (columns_ == Columns::WithDate) row.cells.emplace_back(line.date);
  for (const std::string& text :
       {line.accountD, line.accountC, line.sum, line.currencyD, line.currencyC, line.pointer}) {
    row.cells.emplace_back(text);
  }
  row.tag = line.addressees;
  row.mark = line.code == kDone ? ui::Mark::Good : ui::Mark::Bad;
  row.hint = line.hint;
  return row;
}

void EntryList::show(VXObjectUIO& object) {
  const std::string before = current();
  const std::vector<EntryLine> lines = TestAllEntries(object);
  std::vector<ui::Row> rows;
  rows.reserve(lines.size());
  failed_ = 0;
  for (const EntryLine& line : lines) {
    if (line.code != kDone) ++failed_;
    rows.push_back(rowOf(line));
  }
  sumLt_ = 0;
  ForEachRow(*entriesOf(object)->Clone(), [&](RowSet& entry) { sumLt_ += entry["SumA"].Number(); });
  list_.setRows(std::move(rows));
  list_.current = list_.rows().empty() ? -1 : 0;
  select(before);
}

std::string EntryList::current() const {
  const ui::Row* row = list_.currentRow();
  return row ? row->key : std::string();
}

void EntryList::select(std::string_view guid) {
  const int index = list_.find(guid);
  if (!guid.empty() && index >= 0) list_.current = index;
}

void EntryList::enableMenu(EntryMenu& menu, VXObjectUIO& object, bool mayChange) const {
  const RowSetPtr entry = entryOf(object, current());
  const std::string main = entry ? std::string((*entry)["FGUID"].Text()) : std::string();
  menu.mnuBR.enabled = entry != nullptr;
  menu.mnuMainBR.enabled = !main.empty() && list_.find(main) >= 0;
  menu.mnuReferenceD.enabled = entry && !operationPointer(*entry, 1).reference.empty();
  menu.mnuReferenceC.enabled = entry && !operationPointer(*entry, -1).reference.empty();
  menu.mnuFreeTemplate.enabled = mayChange;
  menu.mnuBRCopy.enabled = mayChange && entry;
  menu.mnuBRDelete.enabled = mayChange && entry;
  menu.mnuDeleteAll.enabled = mayChange && entry;
}

void EntryList::selectMain(VXObjectUIO& object) {
  if (const RowSetPtr entry = entryOf(object, current())) select((*entry)["FGUID"].Text());
}

void EntryList::showReference(VXObjectUIO& object, int sign) {
  const RowSetPtr entry = entryOf(object, current());
  if (!entry) return;
  const OperationPointer pointer = operationPointer(*entry, sign);
  if (!pointer.reference.empty()) host().desktop().show(pointer.reference);
}

int EntryList::showCard(VXObjectUIO& object, const std::string& guid, bool mayChange, bool walk) {
  const MethodResult shown = object.Methods("ShowBR", {guid, "", mayChange, walk ? 1 : 0});
  if (showFailure(host(), shown)) return kEntryUnchanged;
  if (const RowSetPtr entry = entryOf(object, guid)) {
    marks_ = tradeMarksOf(*entry);
    const Variant tariff = (*entry)["VATTariff"].Value();
    vatTariff_ = tariff.IsAbsent() ? -1 : tariff.AsDouble();
  }
  return shown.Value.AsInt();
}

std::optional<std::string> EntryList::addFree(VXObjectUIO& object) {
  NewEntry entry;
  entry.AccountD = entry.AccountC = "?";
  entry.trade = {marks_.type, vatTariff_, marks_.restoringSign};
  const MethodResult added = object.Methods("AddBR", entry.arguments());
  if (showFailure(host(), added)) return std::nullopt;
  return added.Value.AsText();
}

bool EntryList::addTemplate(VXObjectUIO& object, int templateId, double sumLt) {
  TemplateEntries entries;
  entries.BRTemplateID = templateId;
  entries.sums.sum = sumLt;
  entries.trade = {marks_.type, vatTariff_, marks_.restoringSign};
  return !showFailure(host(), object.Methods("AddTemplate", entries.arguments()));
}

void EntryList::remove(VXObjectUIO& object, const std::string& guid) {
  showFailure(host(), object.Methods("DeleteBR", {guid}));
}

OperationPointer operationPointer(RowSet& entry, int sign) {
  OperationPointer pointer;
  RowSet& rows = *entry["BRProperties"].Rows();
  for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext()) {
    if (sign != 0 && rows["Sign"].Number() != sign) continue;
    if (!pointsAtOperation(rows["FOIDR"].Text())) continue;
    pointer.reference = rows["FOIDR"].Text();
    pointer.text = rows["ShowString"].Text();
    break;
  }
  return pointer;
}

}  // namespace tolvex
