#include "payments/frmPaymentTemplate.h"

#include "framework/object_card.h"
#include "framework/references.h"
#include "framework/text.h"
#include "framework/told.h"
#include "payments/frmTemplateItem.h"
#include "payments/payment_forms.h"
#include "platform/save_outcome.h"

namespace tolvex {
namespace {

constexpr std::size_t kNameLength = 200;

}  // namespace

frmPaymentTemplate::frmPaymentTemplate(const ObjectFormRequest& request)
    : Form(request.host, kPaymentScreen), VXObjectUIO(request.object) {
  SOPanel.titleBand = true;
  txtName.maxLength = kNameLength;
  cmdParentGroup.shortcut = "F4";
  cmdNewItem.shortcut = "Ctrl+Ins";
  cmdWrite.shortcut = "Ctrl+S";
  SSCNew.shortcut = "Ctrl+N";
  mnuNew.shortcut = "Ins";
  mnuEdit.shortcut = "Enter";
  mnuDelete.shortcut = "Del";
  lvwPaymentTemplate.menu = &menuItems;
  wire();
}

const char* frmPaymentTemplate::picture() const {
  return R"(
[SOPanel]
  []
    txtName>
    txtGroup> cmdParentGroup
  lvwPaymentTemplate>
  cmdNewItem | lblRest>
SSCClose | >> | SSCNew | cmdCancel | cmdWrite
)";
}

void frmPaymentTemplate::wire() {
  txtName.onChange = group_.onChange = [this] { changed_ = true; };
  lvwPaymentTemplate.onActivate = mnuEdit.onClick = [this] { editItem(); };
  lvwPaymentTemplate.onInsert = mnuNew.onClick = cmdNewItem.onClick = [this] { addItems(); };
  lvwPaymentTemplate.onDelete = mnuDelete.onClick = [this] { deleteItem(); };
  menuItems.onPopup = [this] { enableByState(); };
  cmdWrite.onClick = [this] { save(); };
  SSCNew.onClick = [this] { openNext(); };
  SSCClose.onClick = cmdCancel.onClick = [this] { leave(); };
  SSCClose.onRightClick = [this] { deleteTemplate(); };
}

std::string frmPaymentTemplate::objectReference() const { return storedReference(*VXObjectUIO); }

// --- opening ----------------------------------------------------------------------------------

void frmPaymentTemplate::opened() { show(); }

void frmPaymentTemplate::show() {
  readOnly = !readItems() || !mayWrite(*VXObjectUIO, host().rights().of(kPaymentRights));
  SOPanel.caption = isGroup() ? "Apmokėjimo šablonų grupė" : "Įmokų šablonas";
  txtName.text = std::string(header()["Name"].Text());
  txtName.readOnly = readOnly;
  group_.show(static_cast<int>(header()["ParentID"].Number()));
  group_.enable(!readOnly);
  for (ui::Control* control :
       std::initializer_list<ui::Control*>{&lvwPaymentTemplate, &cmdNewItem, &lblRest})
    control->visible = !isGroup();
  setTitle(isStored(*VXObjectUIO) ? txtName.text() : SOPanel.caption());
  changed_ = false;
  fill();
  setFocus(readOnly ? static_cast<ui::Control&>(SSCClose) : txtName);
}

// A template whose instalments could not be read is only looked at: saving it could not tell what
// it holds.
bool frmPaymentTemplate::readItems() {
  items_ = noInstalments();
  if (!isStored(*VXObjectUIO) || isGroup()) return true;
  const RowSetPtr read =
      toldRows(VXObjectUIO->Properties("ItemsList", ""), "Įmokos neperskaitytos!");
  if (read) items_ = read;
  return read != nullptr;
}

void frmPaymentTemplate::fill() {
  const int before = lvwPaymentTemplate.current;
  items_->SetSort("days");
  std::vector<ui::Row> rows;
  ForEachRow(*items_, [&](RowSet& item) {
    ui::Row row;
    row.cells = {ui::Cell(plainNumber(item["Days"].Number())),
                 ui::Cell(plainNumber(item["Percent"].Number()) + "%")};
    rows.push_back(std::move(row));
  });
  const int last = static_cast<int>(rows.size()) - 1;
  lvwPaymentTemplate.setRows(std::move(rows));
  lvwPaymentTemplate.current = std::min(std::max(before, 0), last);
  RestPercent = restPercent(*items_);
  lblRest.caption = RestPercent == 0 ? "Paskirstyta visa suma"
                                     : "Liko paskirstyti: " + std::to_string(RestPercent) + "%";
  enableByState();
}

void frmPaymentTemplate::enableByState() {
  const bool any = lvwPaymentTemplate.currentRow() != nullptr;
  cmdNewItem.enabled = !readOnly && RestPercent > 0;
  mnuNew.enabled = cmdNewItem.enabled();
  mnuEdit.enabled = !readOnly && any;
  mnuDelete.enabled = !readOnly && any;
  cmdWrite.enabled = !readOnly;
  SSCNew.enabled = host().rights().of(kPaymentRights).create != 0;
}

// --- instalments ------------------------------------------------------------------------------

// One after another, until all is given out or the user has enough.
void frmPaymentTemplate::addItems() {
  while (!readOnly && RestPercent > 0) {
    frmTemplateItem dialog({host(), RestPercent, std::nullopt});
    host().screens().runModal(dialog);
    if (!dialog.accepted()) return;
    items_->AddNew();
    (*items_)["PaymentTemplateID"] = idOf(VXObjectUIO->OIDR());
    writeItem(*dialog.accepted());
  }
}

void frmPaymentTemplate::editItem() {
  if (readOnly || !moveToItem()) return;
  const Instalment present{static_cast<int>((*items_)["Days"].Number()),
                           static_cast<int>((*items_)["Percent"].Number())};
  frmTemplateItem dialog({host(), percentLimit(RestPercent, present.percent), present});
  host().screens().runModal(dialog);
  if (dialog.accepted() && *dialog.accepted() != present && moveToItem()) {
    writeItem(*dialog.accepted());
  }
}

void frmPaymentTemplate::deleteItem() {
  if (readOnly || !moveToItem()) return;
  items_->Delete(1);
  changed_ = true;
  fill();
}

// The row of the marked line: the list shows the rows in their order.
bool frmPaymentTemplate::moveToItem() {
  const int line = lvwPaymentTemplate.current;
  if (line < 0) return false;
  items_->MoveFirst();
  if (!items_->Eof()) items_->Move(line);
  return !items_->Eof();
}

void frmPaymentTemplate::writeItem(const Instalment& item) {
  (*items_)["Days"] = item.days;
  (*items_)["Percent"] = item.percent;
  items_->Update();
  changed_ = true;
  fill();
}

// --- saving and leaving -----------------------------------------------------------------------

bool frmPaymentTemplate::save() {
  if (readOnly) return false;
  header()["Name"] = trim(txtName.text());
  if (group_.id() > 0) header()["ParentID"] = group_.id();
  header().Update();
  const SaveResult saved = saveBusy(*this, SOPanel, *VXObjectUIO, items_);
  if (saved.Code != kDone) {
    showStop(host(), saved.Text + std::string(kLineBreak) + "Klaida!");
    changed_ = true;
    return false;
  }
  show();
  showSaved(*this, *VXObjectUIO);
  return true;
}

void frmPaymentTemplate::openNext() {
  if (!mayClose()) return;
  const auto next = newBeside(host(), *VXObjectUIO, kPaymentTemplate);
  if (!next) return;
  giveUp();
  VXObjectUIO = next;
  show();
}

void frmPaymentTemplate::deleteTemplate() {
  if (!isStored(*VXObjectUIO) || !host().rights().of(kPaymentRights).remove) return;
  if (deleteAsked(host(), *VXObjectUIO)) close();
}

bool frmPaymentTemplate::mayClose() {
  return !changed_ || readOnly || ask(host(), "Uždaryti be pakeitimų išsaugojimo?");
}

void frmPaymentTemplate::giveUp() {
  if (changed_) VXObjectUIO->CancelUpdate();
}

void frmPaymentTemplate::leave() {
  if (!mayClose()) return;
  giveUp();
  close();
}

}  // namespace tolvex
