#include "operations/frmBROper.h"

#include <algorithm>
#include <array>

#include "framework/conversions.h"
#include "framework/references.h"
#include "framework/text.h"
#include "operations/BRLog.h"
#include "operations/UIO0201400.h"
#include "operations/autonumber.h"
#include "operations/comment_list.h"
#include "operations/copy_operation.h"
#include "operations/document_form.h"
#include "operations/entry_editor.h"
#include "operations/frmBRCopyByMonthes.h"
#include "operations/operation_log.h"
#include "operations/screen/balance_list.h"
#include "operations/screen/document_date.h"
#include "operations/screen/operation_rows.h"
#include "operations/screen/related_list.h"
#include "operations/spread_entry.h"
#include "operations/template_choice.h"
#include "platform/save_outcome.h"

namespace tolvex {
namespace {

constexpr std::size_t kCommentLength = 1000;

}  // namespace

frmBROper::frmBROper(const ObjectFormRequest& request, const FormRegistry& forms)
    : Form(request.host, "frmBROper"),
      VXObjectUIO(request.object),
      boolModalForm(request.boolModalForm),
      ClickedParameters(request.ClickedParameters),
      forms_(forms) {
  SOPanel.titleBand = true;
  txtGroup.readOnly = true;
  // Blank means that the operation is in neither register.
  cmbVAT.setTexts({"", "Gauta PVM sąskaita faktūra", "Išrašyta PVM sąskaita faktūra"});
  lblNumber.tip = "Dukart spustelėkite, kad gautumėte kitą numerį";
  cmdWrite.shortcut = "Ctrl+S";
  SSCNew.shortcut = "Ctrl+N";
  cmdOperGroup.shortcut = "F4";
  cmdNewEntry.shortcut = "Ctrl+Ins";
  lvwBRRecords.menu = &entryMenu.menu;
  cmdTools.menu = &menuTools;
  wire();
  wireMenus();
}

const char* frmBROper::picture() const {
  return R"(
[SOPanel]
  [fraHeader]
    dtpDate | lblNumber txtSerija txtNumber | >> | cmbVAT
    txtGroup> cmdOperGroup
    txtComment> cmdCommentList
  lvwBRRecords>
  cmdNewEntry | lblTotals>
  optBRBalance | optRelatedBRList | >>
  lvwBRBalance>
  lvwRelatedBR>
SSCClose | cmdTools | >> | SSCNew | cmdCancel | cmdWrite
)";
}

void frmBROper::wire() {
  dtpDate.onChange = [this] { dateChanged(); };
  for (ui::TextBox* box : {&txtSerija, &txtNumber, &txtComment}) {
    box->onChange = [this] { touch(); };
  }
  cmbVAT.onChange = [this] { touch(); };
  lblNumber.onDoubleClick = [this] {
    if (!readOnly) takeNumber();
  };
  cmdOperGroup.onClick = [this] { groupClicked(); };
  cmdCommentList.onClick = [this] { pickComment(); };
  lvwBRRecords.onActivate = [this] { editEntry(entries_.current()); };
  lvwBRRecords.onInsert = cmdNewEntry.onClick = [this] { addEntry(); };
  lvwBRRecords.onDelete = [this] { deleteEntries(entries_.current()); };
  lvwRelatedBR.onActivate = [this] { openRelated(lvwRelatedBR); };
  optBRBalance.onChange = optRelatedBRList.onChange = [this] { refreshView(); };
  cmdTools.onClick = [this] { popup(menuTools, cmdTools); };
  cmdWrite.onClick = [this] { save(); };
  SSCNew.onClick = [this] { openNext(); };
  SSCClose.onClick = cmdCancel.onClick = [this] { leave(); };
  SSCClose.onRightClick = [this] { deleteOperation(); };
}

void frmBROper::wireMenus() {
  entryMenu.menu.onPopup = [this] { entries_.enableMenu(entryMenu, *VXObjectUIO, !readOnly); };
  entryMenu.mnuBR.onClick = [this] { editEntry(entries_.current()); };
  entryMenu.mnuMainBR.onClick = [this] { entries_.selectMain(*VXObjectUIO); };
  entryMenu.mnuReferenceD.onClick = [this] { entries_.showReference(*VXObjectUIO, 1); };
  entryMenu.mnuReferenceC.onClick = [this] { entries_.showReference(*VXObjectUIO, -1); };
  entryMenu.mnuFreeTemplate.onClick = [this] { addEntry(); };
  entryMenu.mnuBRCopy.onClick = [this] { spreadEntry(); };
  entryMenu.mnuAddTemplate.onClick = [this] { addByTemplate(); };
  entryMenu.mnuOperTemplate.onClick = [this] { changeTemplate(); };
  entryMenu.mnuBRDelete.onClick = [this] { deleteEntries(entries_.current()); };
  entryMenu.mnuDeleteAll.onClick = [this] { deleteEntries({}); };
  mnuOperToDesktop.onClick = [this] { host().desktop().putObject(VXObjectUIO->OIDR()); };
  mnuProtocol.onClick = [this] { showFailure(host(), VXObjectUIO->Methods("ShowProtocol")); };
  mnuLog.onClick = [this] {
    BRLog log({host(), VXObjectUIO});
    host().screens().runModal(log);
  };
  mnuUndo.shortcut = "Ctrl+Z";
  mnuUndo.onClick = [this] { undo(); };
  mnuCopyOper.shortcut = "Ctrl+Shift+D";
  mnuCopyOper.onClick = [this] { copyToNew(); };
  mnuAutoNumber.onClick = [this] { askNumber(); };
  mnuPayDebts.onClick = [this] { chooseDebts(MoneyGoes::Out); };
  mnuReceiveDebts.onClick = [this] { chooseDebts(MoneyGoes::In); };
  for (ui::MenuItem* item : {&mnuDebtsCover, &mnuCurrencyInfluence, &mnuCurrencyExchange}) {
    item->onClick = [this, item] { openTool(*operationTool(item->caption())); };
  }
}

std::string frmBROper::objectReference() const {
  return isStored(*VXObjectUIO) ? VXObjectUIO->OIDR() : std::string();
}

// --- opening ----------------------------------------------------------------------------------

void frmBROper::opened() {
  optBRBalance.choose();
  openObject();
  later([this] { openAskedTool(); });
}

void frmBROper::openObject() {
  rights_ = boolModalForm ? DocumentRights{} : documentRights(host(), *VXObjectUIO);
  readOnly = VXObjectUIO->Preview() || !rights_.change;
  block_ = Block::BR;
  const int groupId = static_cast<int>(header()["BROperGroupID"].Number());
  group_ = readDocumentGroup(host(), *VXObjectUIO, refOf(kGroupKind, groupId),
                             GroupFit::OwnKindOrGeneric);
  if (!isStored(*VXObjectUIO) && !boolModalForm) startNew();
  dateOpen_ = !isStored(*VXObjectUIO);
  changed_ = false;
  showHeader();
  enableByState();
  refreshLists();
  setFocus(readOnly ? static_cast<ui::Control&>(lvwBRRecords) : txtComment);
}

void frmBROper::startNew() {
  RowSet& row = header();
  row["DateD"] = host().clock().today();
  row["Serija"] = group_.series;
  if (const auto number = nextNumber(*VXObjectUIO, group_)) row["Number"] = *number;
  if (group_.defaultTemplateId > 0 && entriesOf(*VXObjectUIO)->RecordCount() == 0) {
    const MethodResult added =
        VXObjectUIO->Methods("AddTemplate", {group_.defaultTemplateId, 0, Variant::Array{}});
    if (!showFailure(host(), added)) block_ = Block::TemplateBR;
  }
}

void frmBROper::showHeader() {
  RowSet& row = header();
  const bool stored = isStored(*VXObjectUIO);
  SOPanel.caption = stored ? " Finansinė operacija" : " Nauja finansinė operacija";
  setTitle(stored ? documentName(*VXObjectUIO) : trim(SOPanel.caption()));
  const Variant date = row["DateD"].Value();
  dtpDate.value = date.IsDate() ? std::optional(date.AsDate()) : std::nullopt;
  txtSerija.text = std::string(row["Serija"].Text());
  txtNumber.text = std::string(row["Number"].Text());
  txtComment.text = std::string(row["Comment"].Text());
  const int register_ = static_cast<int>(row["VATRegisterIndication"].Number());
  cmbVAT.index = register_ >= 0 && register_ <= 2 ? register_ : 0;
  showGroup();
}

void frmBROper::showGroup() {
  txtGroup.text = group_.name;
  txtGroup.tip = group_.path;
  txtSerija.visible = group_.showsSeries || !txtSerija.text().empty();
}

void frmBROper::enableByState() {
  const bool stored = isStored(*VXObjectUIO);
  dtpDate.enabled = !readOnly;
  cmbVAT.enabled = !readOnly;
  for (ui::TextBox* box : {&txtSerija, &txtNumber, &txtComment}) box->readOnly = readOnly;
  cmdOperGroup.enabled = !readOnly;
  cmdNewEntry.enabled = !readOnly;
  cmdWrite.enabled = !readOnly;
  SSCNew.visible = !boolModalForm;
  SSCClose.visible = !boolModalForm;
  SSCClose.enabled = !boolModalForm;
  SSCNew.enabled = !boolModalForm && rights_.create;
  mnuOperToDesktop.enabled = stored && !boolModalForm;
  mnuProtocol.enabled = stored;
  mnuLog.enabled = stored;
  mnuUndo.enabled = stored && !readOnly && !boolModalForm;
  mnuCopyOper.enabled = SSCNew.enabled && stored;
  cmdCommentList.enabled = !readOnly;
  mnuAutoNumber.enabled = !readOnly;
  for (ui::MenuItem* item : {&entryMenu.mnuAddTemplate, &entryMenu.mnuOperTemplate}) {
    item->enabled = !readOnly && forms_.has(kTemplateChoice);
  }
  for (ui::MenuItem* item : {&mnuDebtsCover, &mnuCurrencyInfluence, &mnuCurrencyExchange}) {
    item->enabled = !readOnly && forms_.has(operationTool(item->caption())->form);
  }
  for (ui::MenuItem* item : {&mnuPayDebts, &mnuReceiveDebts})
    item->enabled = !readOnly && forms_.has("frmBROperSelect");
  entries_.enableMenu(entryMenu, *VXObjectUIO, !readOnly);
}

void frmBROper::refreshLists() {
  entries_.show(*VXObjectUIO);
  std::string totals = "Įrašų: " + std::to_string(entries_.count()) +
                       "     Suma: " + formatNumber(entries_.sumLt(), 2, host().numbers()) + " Lt";
  if (entries_.failed() > 0) totals += "     Netinkamų: " + std::to_string(entries_.failed());
  lblTotals.caption = std::move(totals);
  refreshView();
}

void frmBROper::refreshView() {
  lvwBRBalance.visible = optBRBalance.on();
  lvwRelatedBR.visible = optRelatedBRList.on();
  if (optBRBalance.on) {
    showOperationBalance(lvwBRBalance, *VXObjectUIO);
  } else {
    showRelatedEntries(lvwRelatedBR, *VXObjectUIO);
  }
}

// --- header -----------------------------------------------------------------------------------

void frmBROper::takeNumber() {
  const std::optional<std::string> number = nextNumber(*VXObjectUIO, group_);
  if (!number) return;
  txtNumber.text = *number;
  touch();
}

void frmBROper::groupClicked() {
  const auto picked = pickDocumentGroup(host(), group_.reference);
  if (!picked || *picked == group_.reference) return;
  DocumentGroup group =
      readDocumentGroup(host(), *VXObjectUIO, *picked, GroupFit::OwnKindOrGeneric);
  if (group.reference.empty()) return;
  group_ = std::move(group);
  header()["BROperGroupID"] = group_.id();
  if (!isStored(*VXObjectUIO)) txtSerija.text = group_.series;
  showGroup();
  takeNumber();
  touch();
}

void frmBROper::dateChanged() {
  if (!dtpDate.value()) return;
  const DateTime date = *dtpDate.value();
  const Variant before = header()["DateD"].Value();
  if (before.IsDate() && before.AsDate() == date) return;
  const RowSetPtr entries = entriesOf(*VXObjectUIO);
  if (!dateFitsReferences(host(), *entries, date)) {
    warn(host(), "Data neatitinka esančių nuorodų datoms!");
    dtpDate.value = before.IsDate() ? std::optional(before.AsDate()) : std::nullopt;
    return;
  }
  header()["DateD"] = date;
  dateOpen_ = false;
  touch();
  if (entries->RecordCount() > 0 &&
      ask(host(), "Pakeisti įrašų datas į operacijos datą?", Answer::Yes)) {
    redateEntries(*entries, date);
  }
  refreshLists();
}

void frmBROper::pickComment() {
  const MethodResult picked = VXObjectUIO->Methods("GetCommentList", {txtComment.text()});
  if (showFailure(host(), picked) || NullToText(picked.Value).empty()) return;
  txtComment.text = withComment(txtComment.text(), NullToText(picked.Value));
  setFocus(txtComment);
  touch();
}

void frmBROper::askNumber() {
  const MethodResult asked = VXObjectUIO->Methods("CheckAutoNumber");
  if (showFailure(host(), asked)) return;
  if (!asked.Value.IsBool() || !asked.Value.AsBool()) return;
  // The save reads the counter out of the text again.
  txtNumber.text = withCounter(group_.numberMask, txtNumber.text(),
                               static_cast<int>(header()["AutoNumber"].Number()));
  touch();
}

// --- entries ----------------------------------------------------------------------------------

void frmBROper::editEntry(const std::string& guid) {
  if (guid.empty()) return;
  const bool free = block_ == Block::FreeBR;
  const int code = entries_.showCard(*VXObjectUIO, guid, !readOnly, !free && entries_.count() > 1);
  if (free) block_ = Block::BR;
  if (code == kEntryUnchanged) {
    if (free) entries_.remove(*VXObjectUIO, guid);
    if (free) refreshLists();
    return;
  }
  touch();
  fixDate();
  refreshLists();
  entries_.select(guid);
  const bool saved = code == kEntrySaved || save();
  if (code == kSaveOperationAndNew && saved && SSCNew.enabled) openNext();
}

void frmBROper::addEntry() {
  if (readOnly) return;
  const std::optional<std::string> guid = entries_.addFree(*VXObjectUIO);
  if (!guid) return;
  block_ = Block::FreeBR;
  editEntry(*guid);
}

void frmBROper::addByTemplate() {
  const std::string before = entries_.current();
  if (!useTemplate()) return;
  touch();
  refreshLists();
  entries_.select(before);
}

// The entries that stood there go once those of the template are in.
void frmBROper::changeTemplate() {
  std::vector<std::string> before;
  for (const ui::Row& row : lvwBRRecords.rows()) before.push_back(row.key);
  if (!useTemplate()) return;
  for (const std::string& guid : before) entries_.remove(*VXObjectUIO, guid);
  touch();
  refreshLists();
}

// Lets the user choose a template and adds its entries; false when nothing was added.
bool frmBROper::useTemplate() {
  if (readOnly) return false;
  ChosenTemplate chosen;
  const auto form = forms_.make(
      kTemplateChoice,
      TemplateChoiceRequest{host(), group_.templateId, group_.defaultTemplateId, 0, chosen});
  if (!form) return false;
  host().screens().runModal(*form);
  if (!isRef(chosen.reference)) return false;
  if (dtpDate.value()) header()["DateD"] = *dtpDate.value();
  if (!entries_.addTemplate(*VXObjectUIO, idOf(chosen.reference), chosen.sumLt)) return false;
  block_ = Block::TemplateBR;
  return true;
}

void frmBROper::deleteEntries(const std::string& guid) {
  if (readOnly || entries_.count() == 0 || !askDelete(host())) return;
  {
    ui::BusyScope busy(*this, SOPanel);
    entries_.remove(*VXObjectUIO, guid);
  }
  touch();
  refreshLists();
}

void frmBROper::spreadEntry() {
  const std::string guid = entries_.current();
  const RowSetPtr entry = entryOf(*VXObjectUIO, guid);
  if (readOnly || !entry) return;
  SpreadTerms terms;
  frmBRCopyByMonthes dialog({host(), spreadEntryOf(*entry), terms});
  host().screens().runModal(dialog);
  if (dialog.result == 0) return;
  {
    ui::BusyScope busy(*this, SOPanel);
    if (showFailure(host(), SpreadOverMonths(*VXObjectUIO, guid, terms))) return;
  }
  touch();
  refreshLists();
  entries_.select(guid);
}

void frmBROper::fixDate() {
  if (!dateOpen_) return;
  dateOpen_ = false;
  const RowSetPtr entries = entriesOf(*VXObjectUIO)->Clone();
  if (entries->RecordCount() == 0) return;
  const Variant date = (*entries)["DateD"].Value();
  if (!date.IsDate()) return;
  header()["DateD"] = date;
  dtpDate.value = date.AsDate();
}

// --- saving and leaving -----------------------------------------------------------------------

void frmBROper::writeHeader() {
  RowSet& row = header();
  txtComment.text = CutToChars(txtComment.text(), kCommentLength);
  row["BROperGroupID"] = group_.id();
  if (dtpDate.value()) row["DateD"] = *dtpDate.value();
  row["Comment"] = txtComment.text();
  row["Serija"] = txtSerija.text();
  row["Number"] = txtNumber.text();
  row["VATRegisterIndication"] = std::max<int>(cmbVAT.index, 0);
  row.Update();
}

bool frmBROper::save() {
  if (readOnly) return false;
  writeHeader();
  bool saved = false;
  {
    ui::BusyScope busy(*this, SOPanel);
    saved = saveDocument(host(), *VXObjectUIO, group_.numberMask, txtNumber.text);
  }
  if (!saved) return false;
  changed_ = false;
  dateOpen_ = false;
  rights_ = documentRights(host(), *VXObjectUIO);
  readOnly = VXObjectUIO->Preview() || !rights_.change;
  showHeader();
  enableByState();
  refreshLists();
  return true;
}

void frmBROper::openNext() {
  if (!mayClose()) return;
  const auto next = newDocument(host(), *VXObjectUIO);
  if (!next) return;
  VXObjectUIO = next;
  ClickedParameters.clear();
  openObject();
}

void frmBROper::copyToNew() {
  if (!mayClose()) return;
  const auto copy = copyOperation(host(), *VXObjectUIO);
  if (!copy) return;
  VXObjectUIO = copy;
  ClickedParameters.clear();
  openObject();
  touch();
}

// Only what is stored can be taken back; what was typed since is given up or kept by the user.
void frmBROper::undo() {
  if (changed_) return warn(host(), "Operacija pakeista, pirmiausia įrašykite arba atšaukite!");
  const auto question = undoQuestion(*VXObjectUIO);
  if (!question || !ask(host(), *question)) return;
  if (!undoDocument(host(), *VXObjectUIO)) return;
  if (!isStored(*VXObjectUIO) || isGone(*VXObjectUIO)) return close();
  openObject();
}

void frmBROper::deleteOperation() {
  if (!SSCClose.enabled || !isStored(*VXObjectUIO)) return;
  if (deleteDocument(host(), *VXObjectUIO)) close();
}

// --- tools ------------------------------------------------------------------------------------

void frmBROper::openTool(const OperationTool& tool) {
  writeHeader();  // the tool starts from what was typed
  const auto form = forms_.make(tool.form, OperationToolRequest{host(), VXObjectUIO, *this});
  if (form) host().screens().runModal(*form);
}

// A menu, or the operation's own parameters, may ask for a tool as soon as the screen stands.
void frmBROper::openAskedTool() {
  const OperationTool* tool = operationTool(ClickedParameters);
  if (!tool) tool = operationTool(header()["Parameters"].Text());
  if (tool && !readOnly && forms_.has(tool->form)) openTool(*tool);
}

// The marked entry is put on debts of its client, which take its place.
void frmBROper::chooseDebts(MoneyGoes way) {
  writeHeader();
  const std::vector<Variant> arguments = debtsArguments(*VXObjectUIO, entries_.current(), way);
  if (arguments.empty()) return warn(host(), "Pirmiausia pažymėkite įrašą!");
  const MethodResult made = VXObjectUIO->Methods("Debts", std::span<const Variant>(arguments));
  if (!showFailure(host(), made) && !made.Value.IsBool()) return;
  refreshEntries();
}

void frmBROper::setDate(DateTime date) {
  dtpDate.value = date;
  dateOpen_ = false;
  touch();
}

void frmBROper::refreshEntries() {
  touch();
  refreshLists();
}

bool frmBROper::mayClose() {
  return !changed_ || readOnly || askCloseUnsaved(host(), SOPanel.caption);
}

void frmBROper::leave() {
  if (!mayClose()) return;
  if (changed_) VXObjectUIO->CancelUpdate();
  close();
}

}  // namespace tolvex
