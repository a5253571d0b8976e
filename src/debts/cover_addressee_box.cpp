#include "debts/cover_addressee_box.h"

#include "framework/parameters.h"
#include "framework/told.h"

namespace tolvex {
namespace {

constexpr const char* kCoveredMark = "*** ";

}  // namespace

CoverAddresseeBox::CoverAddresseeBox(ui::Form* form)
    : lblFirms(form, "lblFirms", "Įmonės"),
      cmbAddr(form, "cmbAddr", {}, 30),
      cmdFirms(form, "cmdFirms", "▾", ui::Role::Small),
      mnuFirm(form, "mnuFirm", "Įmonės"),
      mnuPerson(form, "mnuPerson", "Fiziniai asmenys"),
      mnuPersonal(form, "mnuPersonal", "Darbuotojai") {
  cmdFirms.menu = lblFirms.menu = &menuFirms;
  cmdFirms.tip = "Kuriuos adresatus siūlyti";
  cmdFirms.onClick = [this, form] { form->popup(menuFirms, cmdFirms); };
  mnuFirm.onClick = [this] { chooseKind(0, mnuFirm); };
  mnuPerson.onClick = [this] { chooseKind(1, mnuPerson); };
  mnuPersonal.onClick = [this] { chooseKind(2, mnuPersonal); };
  cmbAddr.onChange = [this] {
    if (chosen()) onChoose();
  };
}

void CoverAddresseeBox::chooseKind(std::size_t which, const ui::MenuItem& item) {
  kind_ = kDebtorKinds[which];
  lblFirms.caption = item.caption();
  onKind(kind_, item.caption);
}

void CoverAddresseeBox::read(VXObjectUIO& operation, const CoverSideBox& primary,
                             const CoverSideBox& secondary, DateTime day) {
  if (primary.account().empty() || secondary.account().empty()) return;
  Parameters asked;
  for (const CoverSideBox* side : {&primary, &secondary})
    asked.text(side->account()).number(side->direction());
  std::string by = asked.text(kind_).date(day).str();
  if (by == askedBy_) return;
  offered_.clear();
  const RowSetPtr rows = toldRows(operation.Properties("CoverFirms", by));
  askedBy_ = rows ? std::move(by) : std::string();
  if (rows) {
    ForEachRow(*rows, [&](RowSet& row) {
      offered_.push_back({std::string(row["FOIDR"].Text()), std::string(row["ShowString"].Text())});
    });
  }
  show();
}

const CoverAddresseeBox::Addressee* CoverAddresseeBox::chosen() const {
  const int index = cmbAddr.index;
  return index < 0 ? nullptr : &offered_[static_cast<std::size_t>(index)];
}

void CoverAddresseeBox::markCovered(const std::string& reference) {
  covered_.insert(reference);
  show();
}

CoverAddresseeBox::Addressee CoverAddresseeBox::chooseNext() {
  const std::size_t count = offered_.size();
  const int current = cmbAddr.index;
  const std::size_t start = current < 0 ? 0 : static_cast<std::size_t>(current) + 1;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t at = (start + i) % count;
    if (covered_.contains(offered_[at].reference)) continue;
    cmbAddr.index = static_cast<int>(at);
    return offered_[at];
  }
  cmbAddr.index = -1;
  return {};
}

void CoverAddresseeBox::show() {
  const std::string chosen = cmbAddr.key();
  std::vector<ui::ComboBox::Item> items;
  items.reserve(offered_.size());
  for (const auto& [reference, name] : offered_) {
    const std::string mark(covered_.contains(reference) ? kCoveredMark : "");
    items.push_back({mark + name, reference});
  }
  cmbAddr.items = std::move(items);
  cmbAddr.index = chosen.empty() ? -1 : cmbAddr.findKey(chosen);
}

}  // namespace tolvex
