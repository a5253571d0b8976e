#include "operations/frmBROperGroup.h"

#include <algorithm>

#include "framework/object_card.h"
#include "framework/references.h"
#include "framework/text.h"
#include "framework/told.h"
#include "operations/UIO0201500.h"
#include "operations/document_form.h"
#include "operations/group_parameters.h"
#include "platform/save_outcome.h"

namespace tolvex {
namespace {

constexpr std::size_t kNameLength = 200, kSeriesLength = 20;
constexpr const char* kOperationGroup = " Finansinių operacijų grupė";
constexpr const char* kTradeKind = "O1000100";
constexpr const char* kGeneral = "general";

}  // namespace

frmBROperGroup::frmBROperGroup(const ObjectFormRequest& request, const FormRegistry& forms)
    : Form(request.host, "frmBROperGroup"), VXObjectUIO(request.object), forms_(forms) {
  SOPanel.titleBand = true;
  cmdParentGroup.shortcut = "F4";
  txtName.maxLength = kNameLength;
  txtSerija.maxLength = kSeriesLength;
  tabGroup.tabs = {{kGeneral, "Bendra"},
                   {"numbering", "Numeravimas"},
                   {"templates", "Šablonai"},
                   {"sums", "Skolų sumos"}};
  cmdWrite.shortcut = "Ctrl+S";
  wire();
}

const char* frmBROperGroup::picture() const {
  return R"(
[SOPanel]
  txtParentGroup> cmdParentGroup
  txtName>
  [tabs tabGroup]
    [general]
      cmbFormTypes> | cmdParameters
      chkSerija | txtSerija | >>
    [numbering]
      [columns]
        []
          lvwAutoNumber>
          cmdUp cmdDown | >>
        []
          txtPrefix | >>
          txtANTemplate | >>
          txtMinimal | >>
          cmbGroupBy | >>
          cmbCycle | >>
          chkANDateFrom dtpANDateFrom | >>
          chkNumByAcc
      txtExample>
    [templates]
      txtTemplate> cmdTemplate cmdClearTemplate
      trwTemplates>
      txtMainTemplate> cmdMainTemplate cmdClearMainTemplate
    [sums]
      lvwAccountSettings>
      cmdCreateFullSum | cmdClearFullSum | >>
SSCClose | >> | cmdCancel | cmdWrite
)";
}

void frmBROperGroup::wire() {
  const auto changed = [this] { setDirty(true); };
  parent_.onChange = txtName.onChange = txtSerija.onChange = changed;
  chkSerija.onChange = [this] {
    txtSerija.enabled = chkSerija.on();
    setDirty(true);
  };
  chkNumByAcc.onChange = changed;
  numbering.onChange = templates.onChange = sums.onChange = changed;
  cmbFormTypes.onChange = [this] { kindChanged(); };
  cmdParameters.onClick = [this] { editParameters(); };
  cmdWrite.onClick = [this] { save(); };
  cmdCancel.onClick = [this] { cancel(); };
  SSCClose.onClick = [this] {
    if (mayClose()) close();
  };
  SSCClose.onRightClick = [this] { remove(); };
}

bool frmBROperGroup::isCommon() const { return fields()["GroupFlag"].Number() != 0; }

std::string frmBROperGroup::objectReference() const { return storedReference(*VXObjectUIO); }

// --- opening ----------------------------------------------------------------------------------

void frmBROperGroup::opened() {
  place_ = {fields()["ParentID"].Value(), fields()["GroupFlag"].Value()};
  show();
  setFocus(readOnly ? static_cast<ui::Control&>(SSCClose) : txtName);
}

void frmBROperGroup::show() {
  RowSet& group = *VXObjectUIO->RsFields();
  parent_.show(static_cast<int>(group["ParentID"].Number()));
  txtName.text = std::string(group["Name"].Text());
  tabGroup.visible = !isCommon();
  if (!isCommon()) {
    kind_ = group["FormOID"].Text();
    parameters_ = group["Parameters"].Text();
    chkSerija.on = group["SerijaIndication"].Number() != 0;
    txtSerija.text = std::string(group["Serija"].Text());
    showKinds();
    showKind();
    numbering.show(group);
    templates.show(VXObjectUIO);
    sums.show(VXObjectUIO);
  }
  showTitles();
  applyRights();
  setDirty(false);
}

void frmBROperGroup::showKinds() {
  std::vector<ui::ComboBox::Item> items;
  if (const RowSetPtr types = toldRows(VXObjectUIO->Properties("FormTypes", ""))) {
    ForEachRow(*types, [&](RowSet& type) {
      items.push_back({std::string(type["Name"].Text()), std::string(type["OID"].Text())});
    });
  }
  if (items.empty() || items.front().key != kOperationKind) {
    std::erase_if(items, [](const auto& item) { return item.key == kOperationKind; });
    items.insert(items.begin(), {"Finansinė operacija", kOperationKind});
  }
  // A kind that is not offered, of a module that is not here, stays what it is.
  const auto offered = [&](const auto& item) { return item.key == kind_; };
  if (std::ranges::none_of(items, offered)) items.push_back({kind_, kind_});
  cmbFormTypes.items = std::move(items);
  cmbFormTypes.index = cmbFormTypes.findKey(kind_);
}

void frmBROperGroup::showKind() {
  chkNumByAcc.visible = mayNumberByAccount(kind_);
  chkNumByAcc.on = numbersByAccount(kind_, parameters_);
  const std::string_view form = parametersForm(kind_);
  cmdParameters.visible = !form.empty();
  cmdParameters.enabled = !readOnly && forms_.has(form);
  templates.takeSingle(editorOf(kind_) != editorOf(kOperationKind));
}

void frmBROperGroup::showTitles() {
  const bool stored = isStored(*VXObjectUIO);
  if (stored) {
    SOPanel.caption = isCommon() ? " Bendra grupė" : kOperationGroup;
  } else {
    SOPanel.caption = isCommon() ? " Nauja bendra grupė" : " Nauja finansinių operacijų grupė";
  }
  setTitle(stored ? txtName.text() : trim(SOPanel.caption()));
}

void frmBROperGroup::applyRights() {
  readOnly = !mayWrite(*VXObjectUIO, host().rights().of(groupRights(VXObjectUIO->OID())));
  parent_.enable(!readOnly && parent_.id() > 0);  // the group above all stays there
  txtName.readOnly = readOnly;
  txtSerija.readOnly = readOnly;
  for (ui::Control* control :
       std::initializer_list<ui::Control*>{&cmbFormTypes, &chkSerija, &chkNumByAcc}) {
    control->enabled = !readOnly;
  }
  txtSerija.enabled = chkSerija.on();
  cmdParameters.enabled = !readOnly && forms_.has(parametersForm(kind_));
  numbering.enable(!readOnly);
  templates.enable(!readOnly);
  sums.enable(!readOnly);
}

void frmBROperGroup::setDirty(bool dirty) {
  dirty_ = dirty;
  cmdWrite.enabled = dirty && !readOnly;
  cmdCancel.enabled = dirty;
}

// --- the kind of documents --------------------------------------------------------------------

// Settings are those of a kind; another one begins with its own.
void frmBROperGroup::kindChanged() {
  const std::string chosen = cmbFormTypes.key();
  if (chosen == kind_) return;
  kind_ = chosen;
  const bool asStored = fields()["FormOID"].Text() == kind_;
  parameters_ = asStored ? std::string(fields()["Parameters"].Text()) : std::string();
  showKind();
  setDirty(true);
}

// The main one stands first.
std::string frmBROperGroup::mainAccount() {
  const RowSetPtr accounts = toldRows(VXObjectUIO->Properties("MyFirmAccounts", ""));
  if (!accounts) return {};
  accounts->MoveFirst();
  return accounts->Eof() ? std::string() : std::string((*accounts)["AccOIDR"].Text());
}

std::string frmBROperGroup::parametersNow() {
  const bool wantsAccount = mayNumberByAccount(kind_) && parameters_.empty();
  return groupParameters(kind_, parameters_, wantsAccount ? mainAccount() : std::string(),
                         chkNumByAcc.on());
}

void frmBROperGroup::editParameters() {
  std::string text = parametersNow();
  const std::string before = text;
  const auto form =
      forms_.make(parametersForm(kind_), GroupParametersRequest{host(), VXObjectUIO, kind_, text});
  if (!form) return tellMissingScreen();
  host().screens().runModal(*form);
  if (text == before) return;
  parameters_ = text;
  chkNumByAcc.on = numbersByAccount(kind_, parameters_);
  setDirty(true);
}

// --- saving -----------------------------------------------------------------------------------

bool frmBROperGroup::writeDocuments() {
  if (kind_ == kTradeKind && !templates.chosen()) {
    warn(host(), "Nenurodyti šablonai !");
    return false;
  }
  RowSet& group = *VXObjectUIO->RsFields();
  sums.write(group);
  templates.write(group);
  group["SerijaIndication"] = chkSerija.on() ? 1 : 0;
  group["Serija"] = trim(txtSerija.text());
  group["FormOID"] = kind_;
  group["Parameters"] = parametersNow();
  numbering.write(group);
  return true;
}

bool frmBROperGroup::write() {
  if (!isCommon() && !writeDocuments()) return false;
  if (parent_.id() > 0) fields()["ParentID"] = parent_.id();
  fields()["Name"] = trim(txtName.text());
  return true;
}

void frmBROperGroup::save() {
  if (!write()) return;
  const bool first = !isStored(*VXObjectUIO);
  const SaveResult saved = saveBusy(*this, SOPanel, *VXObjectUIO);
  if (saved.Code != kDone) return showRefusedSave(host(), saved.Text);
  if (first) {
    host().rights().addComponent(operationRights(idOf(VXObjectUIO->OID())),
                                 kOperationGroup + std::string(fields()["Name"].Text()));
  }
  show();
  showSaved(*this, *VXObjectUIO);
}

// --- leaving ----------------------------------------------------------------------------------

// A new record is begun anew, in the place that was meant for it.
void frmBROperGroup::cancel() {
  VXObjectUIO->CancelUpdate();
  if (!isStored(*VXObjectUIO)) {
    fields()["ParentID"] = place_.above;
    fields()["GroupFlag"] = place_.common;
  }
  show();
  setFocus(txtName);
}

void frmBROperGroup::remove() {
  if (!isStored(*VXObjectUIO) || readOnly) return;
  if (deleteAsked(host(), *VXObjectUIO)) close();
}

bool frmBROperGroup::mayClose() {
  return !dirty_ || readOnly || askCloseUnsaved(host(), SOPanel.caption);
}

}  // namespace tolvex
