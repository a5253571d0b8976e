#include "operations/frmBROper.h"

#include "framework/references.h"
#include "framework/text.h"
#include "operations/BRLog.h"
#include "operations/copy_operation.h"
#include "operations/document_form.h"
#include "operations/entry_editor.h"
#include "operations/frmBRCopyByMonthes.h"
#include "operations/operation_log.h"
#include "operations/screen/balance_list.h"
#include "operations/screen/operation_rows.h"
#include "operations/screen/related_list.h"
#include "operations/spread_entry.h"
#include "operations/template_choice.h"
#include "platform/save_outcome.h"

namespace tolvex {

frmBROper::frmBROper(const ObjectFormRequest& request, const FormRegistry& forms)
    : Form(request.host, "frmBROper"),
      VXObjectUIO(request.object),
      boolModalForm(request.boolModalForm),
      ClickedParameters(request.ClickedParameters),
      forms_(forms) {
  SOPanel.titleBand = true;
  cmdWrite.shortcut = "Ctrl+S";
  SSCNew.shortcut = "Ctrl+N";
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
  header.onChange = [this] { touch(); };
  header.onRedate = [this] { refreshLists(); };
  lvwBRRecords.onActivate = [this] { editEntry(entries_.current()); };
  lvwBRRecords.onInsert = cmdNewEntry.onClick = [this] { addEntry(); };
  lvwBRRecords.onDelete = [this] { deleteEntries(entries_.current()); };
  lvwRelatedBR.onActivate = [this] { openRelated(lvwRelatedBR); };
  optBRBalance.onChange = optRelatedBRList.onChange = [this] { refreshView(); };
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
  mnuAutoNumber.onClick = [this] { header.askNumber(); };
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
  const bool begins = !isStored(*VXObjectUIO) && !boolModalForm;
  header.open(begins);
  if (begins) addDefaultTemplate();
  changed_ = false;
  showTitle();
  header.show();
  enableByState();
  refreshLists();
  setFocus(readOnly ? static_cast<ui::Control&>(lvwBRRecords) : header.txtComment);
}

void frmBROper::addDefaultTemplate() {
  const int id = header.group().defaultTemplateId;
  if (id <= 0 || entriesOf(*VXObjectUIO)->RecordCount() > 0) return;
  const MethodResult added = VXObjectUIO->Methods("AddTemplate", {id, 0, Variant::Array{}});
  if (!showFailure(host(), added)) block_ = Block::TemplateBR;
}

void frmBROper::showTitle() {
  const bool stored = isStored(*VXObjectUIO);
  SOPanel.caption = stored ? " Finansinė operacija" : " Nauja finansinė operacija";
  setTitle(stored ? documentName(*VXObjectUIO) : trim(SOPanel.caption()));
}

void frmBROper::enableByState() {
  const bool stored = isStored(*VXObjectUIO);
  header.enable(!readOnly);
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
  header.followFirstEntry();
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
  const DocumentGroup& group = header.group();
  const auto form = forms_.make(
      kTemplateChoice,
      TemplateChoiceRequest{host(), group.templateId, group.defaultTemplateId, 0, chosen});
  if (!form) return false;
  host().screens().runModal(*form);
  if (!isRef(chosen.reference)) return false;
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

// --- saving and leaving -----------------------------------------------------------------------

bool frmBROper::save() {
  if (readOnly) return false;
  header.write();
  bool saved = false;
  {
    ui::BusyScope busy(*this, SOPanel);
    saved = saveDocument(host(), *VXObjectUIO, header.group().numberMask, header.txtNumber.text);
  }
  if (!saved) return false;
  changed_ = false;
  rights_ = documentRights(host(), *VXObjectUIO);
  readOnly = VXObjectUIO->Preview() || !rights_.change;
  showTitle();
  header.show();
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
  header.write();  // the tool starts from what was typed
  const auto form = forms_.make(tool.form, OperationToolRequest{host(), VXObjectUIO, *this});
  if (form) host().screens().runModal(*form);
}

// A menu, or the operation's own parameters, may ask for a tool as soon as the screen stands.
void frmBROper::openAskedTool() {
  const OperationTool* tool = operationTool(ClickedParameters);
  if (!tool) tool = operationTool(VXObjectUIO->Fields()["Parameters"].Text());
  if (tool && !readOnly && forms_.has(tool->form)) openTool(*tool);
}

// The marked entry is put on debts of its client, which take its place.
void frmBROper::chooseDebts(MoneyGoes way) {
  header.write();
  const std::vector<Variant> arguments = debtsArguments(*VXObjectUIO, entries_.current(), way);
  if (arguments.empty()) return warn(host(), "Pirmiausia pažymėkite įrašą!");
  const MethodResult made = VXObjectUIO->Methods("Debts", std::span<const Variant>(arguments));
  if (!showFailure(host(), made) && !made.Value.IsBool()) return;
  refreshEntries();
}

void frmBROper::setDate(DateTime date) {
  header.setDate(date);
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
