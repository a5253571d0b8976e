#include "operations/frmBRTemplate.h"

#include "framework/object_card.h"
#include "framework/text.h"
#include "framework/told.h"
#include "operations/UIO0201600.h"
#include "operations/frmBRTemplateAcc.h"
#include "operations/template_forms.h"
#include "operations/template_rules.h"
#include "platform/save_outcome.h"

namespace tolvex {
namespace {

constexpr std::size_t kNameLength = 200, kCommentLength = 1000;

}  // namespace

frmBRTemplate::frmBRTemplate(const ObjectFormRequest& request)
    : Form(request.host, kTemplateScreen),
      VXObjectUIO(request.object),
      newMode_(request.ClickedParameters) {
  SOPanel.titleBand = true;
  txtName.maxLength = kNameLength;
  txtComment.maxLength = kCommentLength;
  cmdParentGroup.shortcut = "F4";
  cmdNewRow.shortcut = "Ctrl+Ins";
  cmdWrite.shortcut = "Ctrl+S";
  SSCNew.shortcut = "Ctrl+N";
  mnuAdd.shortcut = "Ins";
  mnuEdit.shortcut = "Enter";
  mnuDelete.shortcut = "Del";
  lvwRows.menu = &menuRows;
  wire();
}

const char* frmBRTemplate::picture() const {
  return R"(
[SOPanel]
  []
    txtName>
    txtComment>
    txtGroup> cmdParentGroup
  lvwRows>
  cmdNewRow | >>
SSCClose | >> | SSCNew | cmdCancel | cmdWrite
)";
}

void frmBRTemplate::wire() {
  for (ui::TextBox* box : {&txtName, &txtComment}) box->onChange = [this] { touch(); };
  group_.onChange = [this] { touch(); };
  lvwRows.onActivate = mnuEdit.onClick = [this] {
    if (const std::string guid = currentLine(); !guid.empty()) editLine(guid);
  };
  lvwRows.onInsert = mnuAdd.onClick = cmdNewRow.onClick = [this] {
    if (!readOnly) editLine("");
  };
  lvwRows.onDelete = mnuDelete.onClick = [this] { deleteLine(); };
  menuRows.onPopup = [this] { enableByState(); };
  cmdWrite.onClick = [this] { save(); };
  SSCNew.onClick = [this] { openNext(); };
  SSCClose.onClick = cmdCancel.onClick = [this] { leave(); };
  SSCClose.onRightClick = [this] { deleteTemplate(); };
}

std::string frmBRTemplate::objectReference() const { return storedReference(*VXObjectUIO); }

// --- opening ----------------------------------------------------------------------------------

void frmBRTemplate::opened() {
  if (!newMode_.empty()) (void)VXObjectUIO->Methods("NewMode", {newMode_});
  show();
  setFocus(readOnly ? static_cast<ui::Control&>(SSCClose) : txtName);
}

void frmBRTemplate::show() {
  readOnly = !mayWrite(*VXObjectUIO, host().rights().of(kTemplateRights));
  txtName.text = std::string(header()["Name"].Text());
  txtComment.text = std::string(header()["Comment"].Text());
  group_.show(static_cast<int>(header()["ParentID"].Number()));
  lvwRows.visible = !isGroup();
  cmdNewRow.visible = !isGroup();
  SOPanel.caption = isGroup() ? "Šablonų grupė" : "Finansinės operacijos šablonas";
  setTitle(isStored(*VXObjectUIO) ? txtName.text() : SOPanel.caption());
  if (!isGroup() && accounts_.Count() == 0) {
    const DictionaryPtr plan = toldDictionary(VXObjectUIO->Properties("AccountList", ""));
    if (plan) accounts_ = templateAccounts(*plan);
  }
  changed_ = false;
  showLines();
  enableByState();
}

std::string frmBRTemplate::accountText(const std::string& account) const {
  const Variant* name = accounts_.Find(account);
  return name ? account + " " + name->Show() : account;
}

void frmBRTemplate::showLines() {
  const std::string before = currentLine();
  std::vector<ui::Row> rows;
  if (!isGroup()) {
    ForEachRow(*header()["BRTemplateAcc"].Rows()->Clone(), [&](RowSet& line) {
      ui::Row row;
      row.key = line["GUID"].Text();
      row.cells = {ui::Cell(accountText(std::string(line["AccountD"].Text()))),
                   ui::Cell(accountText(std::string(line["AccountC"].Text()))),
                   ui::Cell(shortNumber(line["Factor"].Number(), host().numbers()))};
      rows.push_back(std::move(row));
    });
  }
  const bool any = !rows.empty();
  lvwRows.setRows(std::move(rows));
  lvwRows.current = any ? std::max(lvwRows.find(before), 0) : -1;
}

void frmBRTemplate::enableByState() {
  for (ui::TextBox* box : {&txtName, &txtComment}) box->readOnly = readOnly;
  group_.enable(!readOnly);
  const bool line = lvwRows.currentRow() != nullptr;
  cmdNewRow.enabled = !readOnly;
  mnuAdd.enabled = !readOnly;
  mnuEdit.enabled = line;
  mnuDelete.enabled = line && !readOnly;
  cmdWrite.enabled = !readOnly;
  SSCNew.enabled = host().rights().of(kTemplateRights).create != 0;
}

// --- lines ------------------------------------------------------------------------------------

std::string frmBRTemplate::currentLine() const {
  const ui::Row* row = lvwRows.currentRow();
  return row ? row->key : std::string();
}

void frmBRTemplate::editLine(const std::string& guid) {
  frmBRTemplateAcc line({host(), VXObjectUIO, guid, readOnly});
  host().screens().runModal(line);
  if (line.written().empty()) return;
  touch();
  showLines();
  lvwRows.current = lvwRows.find(line.written());
  enableByState();
}

void frmBRTemplate::deleteLine() {
  const std::string guid = currentLine();
  if (readOnly || guid.empty() || !askDelete(host())) return;
  removeTemplateLine(header(), guid);
  touch();
  showLines();
  enableByState();
}

// --- saving and leaving -----------------------------------------------------------------------

bool frmBRTemplate::save() {
  if (readOnly) return false;
  RowSet& row = header();
  row["Name"] = trim(txtName.text());
  row["Comment"] = txtComment.text();
  row["ParentID"] = group_.id() > 0 ? Variant(group_.id()) : Variant(Null{});
  row.Update();
  const SaveResult saved = saveBusy(*this, SOPanel, *VXObjectUIO);
  if (saved.Code != kDone) {
    showFailedSave(host(), saved.Text);
    return false;
  }
  show();
  showSaved(*this, *VXObjectUIO);
  return true;
}

void frmBRTemplate::openNext() {
  if (!mayClose()) return;
  const auto next = newBeside(host(), *VXObjectUIO, kTemplateKind);
  if (!next) return;
  if (changed_) VXObjectUIO->CancelUpdate();
  VXObjectUIO = next;
  newMode_.clear();
  show();
  setFocus(txtName);
}

void frmBRTemplate::deleteTemplate() {
  if (!isStored(*VXObjectUIO) || !host().rights().of(kTemplateRights).remove) return;
  if (deleteAsked(host(), *VXObjectUIO)) close();
}

bool frmBRTemplate::mayClose() {
  return !changed_ || readOnly || askCloseUnsaved(host(), SOPanel.caption);
}

void frmBRTemplate::leave() {
  if (!mayClose()) return;
  if (changed_) VXObjectUIO->CancelUpdate();
  close();
}

}  // namespace tolvex
