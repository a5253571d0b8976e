#include "accounts/frmAccountPlan.h"

#include "accounts/UIO0200400.h"
#include "accounts/account_forms.h"
#include "accounts/account_messages.h"
#include "accounts/plan_marks.h"
#include "framework/conversions.h"
#include "framework/object_card.h"
#include "framework/text.h"
#include "platform/save_outcome.h"

namespace tolvex {

namespace {

constexpr std::size_t kNumberLength = 20, kNameLength = 300;

}  // namespace

frmAccountPlan::frmAccountPlan(const ObjectFormRequest& request)
    : Form(request.host, kNodeScreen),
      VXObjectUIO(request.object),
      boolShowNewAccount(request.ClickedParameters == "FULL") {
  SOPanel.titleBand = true;
  LVProperties.checkBoxes = true;
  txtNewAcc.readOnly = true;
  for (ui::TextBox* box : {&txtAccount, &txtAccountClass}) {
    box->maxLength = kNumberLength;
    box->keyFilter = FilterDigitKey;
  }
  for (ui::TextBox* box : {&txtName, &txtNameClass}) box->maxLength = kNameLength;
  for (ui::TextBox* box : {&txtType, &txtTypeClass}) {
    box->maxLength = 1;
    box->tip = "D – debetinė, K – kreditinė";
  }
  cmdNewAcc.shortcut = "F4";
  cmdCleanAcc.tip = "Išvalyti";
  cmdEnter.shortcut = "Ctrl+S";
  cmdEnter.ownTest = true;
  SSCNew.shortcut = "Ctrl+N";
  wire();
}

const char* frmAccountPlan::picture() const {
  return R"(
[SOPanel]
  []
    LbClass txtAccountClass | txtNameClass> | txtTypeClass
    LbAccount>
  [SSPSubAcc]
    txtAccount
    txtName> | txtType
    lblOldAcc txtNewAcc> cmdNewAcc cmdCleanAcc
    LVProperties>
SSCClose | >> | SSCNew | cmdCancel | cmdEnter
)";
}

void frmAccountPlan::wire() {
  txtAccountClass.mayLeave = [this] { return !isReservedClass(txtAccountClass.text()); };
  for (ui::TextBox* box : {&txtAccountClass, &txtName, &txtNameClass})
    box->onChange = [this] { setDirty(true); };
  for (ui::TextBox* box : {&txtType, &txtTypeClass})
    box->onChange = [this, box] {
      box->text = accountTypeOf(box->text());
      setDirty(true);
    };
  const auto toEnd = [this] { txtAccount.caret = static_cast<int>(length(txtAccount.text())); };
  txtAccount.onEnter = toEnd;  // what is typed goes behind the prefix, not over it
  txtAccount.onChange = [this, toEnd] {
    const std::string kept = behindPrefix(txtAccount.text(), parentNumber_);
    if (kept != txtAccount.text()) {
      txtAccount.text = kept;
      toEnd();
    }
    setDirty(true);
  };
  LVProperties.onCheck = [this] {
    keepOneMark(LVProperties);
    setDirty(true);
  };
  LVProperties.onActivate = [this] { turnMark(); };
  SOPanel.canDrop = [this](const std::string& reference) {
    return cmdNewAcc.usable() && isNewPlanNode(reference);
  };
  SOPanel.onDrop = [this](const std::string& reference) {
    if (const auto chosen = counterpartOf(host(), reference)) setCounterpart(*chosen);
  };
  cmdNewAcc.onClick = [this] {
    const int current = static_cast<int>(fields()["NewID"].Number());
    if (const auto chosen = pickCounterpart(host(), current)) setCounterpart(*chosen);
  };
  cmdCleanAcc.onClick = [this] { setCounterpart({}); };
  cmdEnter.onClick = [this] { save(); };
  cmdCancel.onClick = [this] { cancel(); };
  SSCNew.onClick = [this] { startNext(); };
  SSCClose.onClick = [this] {
    if (mayClose()) close();
  };
}

std::string frmAccountPlan::objectReference() const { return storedReference(*VXObjectUIO); }

bool frmAccountPlan::isNew() const { return !isStored(*VXObjectUIO); }

// --- opening ----------------------------------------------------------------------------------

void frmAccountPlan::opened() {
  parentId_ = fields()["ParentID"].Value();
  show();
  focusFirst();
}

void frmAccountPlan::show() {
  whole_ = true;
  const auto parent = nodeAbove("Parent");
  level_ = levelOf(*VXObjectUIO, parent.get());
  parentNumber_ = parent ? std::string(parent->Fields()["Account"].Text()) : std::string();
  SSPSubAcc.visible = !isClass();
  if (isClass()) {
    showClass(*VXObjectUIO);
  } else {
    const auto classNode = parent ? nodeAbove("Class") : nullptr;
    showAccount(parent.get(), classNode.get());
  }
  LbAccount.visible = level_ == NodeLevel::Subaccount;
  LbAccount.caption = LbAccount.visible() ? nodeText(*parent) : std::string();
  marksKnown_ = fillMarks(LVProperties, *VXObjectUIO);
  showCounterpart();
  showTitles();
  applyRights();
  setDirty(false);
}

std::shared_ptr<tolvex::VXObjectUIO> frmAccountPlan::nodeAbove(const char* key) {
  const MethodResult above = VXObjectUIO->Properties(key, "");
  if (showFailure(host(), above)) whole_ = false;
  return above.Value.As<tolvex::VXObjectUIO>();
}

void frmAccountPlan::applyRights() {
  const RightFlags rights = host().rights().of(kPlanRights);
  mayCreate_ = rights.create != 0;
  readOnly = !whole_ || !mayWrite(*VXObjectUIO, rights);
  for (ui::TextBox* box : {&txtAccountClass, &txtNameClass, &txtTypeClass})
    box->readOnly = readOnly || !isClass();
  for (ui::TextBox* box : {&txtAccount, &txtName, &txtType}) box->readOnly = readOnly;
  LVProperties.enabled = !readOnly;
  cmdNewAcc.enabled = !readOnly;
  cmdCleanAcc.enabled = !readOnly;
}

void frmAccountPlan::showClass(tolvex::VXObjectUIO& node) {
  txtAccountClass.text = std::string(node.Fields()["Account"].Text());
  txtNameClass.text = std::string(node.Fields()["Name"].Text());
  txtTypeClass.text = std::string(node.Fields()["Type"].Text());
}

// A new account begins with the number above it and is of its class's type.
void frmAccountPlan::showAccount(tolvex::VXObjectUIO* parent, tolvex::VXObjectUIO* classNode) {
  if (classNode) showClass(*classNode);
  const bool fresh = isNew() && parent;
  txtAccount.text = fresh ? parentNumber_ : std::string(fields()["Account"].Text());
  txtName.text = std::string(fields()["Name"].Text());
  txtType.text = isNew() ? txtTypeClass.text() : std::string(fields()["Type"].Text());
}

void frmAccountPlan::showCounterpart() {
  const bool shown = VXObjectUIO->OType() != kNewPlanKind && boolShowNewAccount && !isClass() &&
                     fields()["GroupFlag"].Number() == 0;
  for (ui::Control* control :
       std::initializer_list<ui::Control*>{&lblOldAcc, &txtNewAcc, &cmdNewAcc, &cmdCleanAcc})
    control->visible = shown;
  const MethodResult counterpart = VXObjectUIO->Properties("NewAccount", "");
  if (showFailure(host(), counterpart)) whole_ = false;
  txtNewAcc.text = counterpart.Code == kDone ? counterpart.Value.Show() : std::string();
}

void frmAccountPlan::showTitles() {
  SSPSubAcc.caption = isClass() ? "" : nodeCaption(level_, isNew());
  SOPanel.caption = nodeCaption(level_, isNew());
  setTitle(isNew() ? SOPanel.caption() : nodeText(*VXObjectUIO));
}

void frmAccountPlan::setDirty(bool dirty) {
  dirty_ = dirty;
  cmdEnter.enabled = dirty && !readOnly;
  cmdCancel.enabled = dirty;
  SSCNew.enabled = !dirty && !isNew() && mayCreate_;
}

void frmAccountPlan::focusFirst() {
  if (readOnly) return setFocus(SSCClose);
  ui::TextBox& first = isNew() ? numberBox() : nameBox();
  first.caret = static_cast<int>(length(first.text()));
  setFocus(first);
}

void frmAccountPlan::setCounterpart(const Counterpart& chosen) {
  Field newId = fields()["NewID"];
  if (chosen.id != 0) {
    newId = chosen.id;
  } else if (!newId.IsNull()) {
    newId = Null{};
  }
  txtNewAcc.text = chosen.text;
  setDirty(true);
}

// Enter and a double click on a row tick it as the box in it does.
void frmAccountPlan::turnMark() {
  if (readOnly) return;
  ui::Row& row = LVProperties.edit()[static_cast<std::size_t>(LVProperties.current())];
  row.checked = !row.checked;
  LVProperties.onCheck();
}

// --- saving -----------------------------------------------------------------------------------

bool frmAccountPlan::complain(const NodeTexts& texts) {
  const auto complaint = checkNode(texts, isClass() ? std::string() : parentNumber_);
  if (!complaint) return false;
  ui::TextBox& box = complaint->where == NodeField::Number ? numberBox()
                     : complaint->where == NodeField::Name ? nameBox()
                                                           : typeBox();
  stopWith(host(), complaint->text);
  setFocus(box);
  return true;
}

void frmAccountPlan::write(const NodeTexts& texts) {
  fields()["Account"] = texts.number;
  fields()["Name"] = texts.name;
  fields()["Type"] = texts.type;
  if (isClass()) return;
  if (fields()["ParentID"].Number() == 0) fields()["ParentID"] = Null{};
  // Marks that could not be read are left as they are.
  if (marksKnown_) fields()["BRAPropertyID"] = tickedMark(LVProperties);
}

bool frmAccountPlan::save() {
  if (isClass() && isReservedClass(txtAccountClass.text())) {
    txtAccountClass.text = std::string();
    return false;
  }
  const NodeTexts texts{trim(numberBox().text()), trim(nameBox().text()), trim(typeBox().text())};
  if (complain(texts)) return false;
  write(texts);
  const SaveResult saved = saveBusy(*this, SOPanel, *VXObjectUIO);
  if (saved.Code != kDone) {
    showFailedWrite(host(), nodeRefusal(saved));
    if (treeIsStale(saved.Code)) host().tree().redraw(kPlanKind);
    return false;
  }
  nameBox().text = texts.name;
  showTitles();
  showSaved(*this, *VXObjectUIO);
  marksKnown_ = fillMarks(LVProperties, *VXObjectUIO);
  applyRights();
  setDirty(false);
  return true;
}

// --- the next node, and back ------------------------------------------------------------------

void frmAccountPlan::restorePlace() {
  fields()["ParentID"] = parentId_;
  if (isClass()) fields()["GroupFlag"] = 1;
}

// A brother of the node that was just saved.
void frmAccountPlan::startNext() {
  const std::string stored = VXObjectUIO->OID();
  VXObjectUIO->OID("");
  const SaveResult read = VXObjectUIO->Read();
  if (read.Code != kDone) {
    VXObjectUIO->OID(stored);
    warn(host(), read.Text);
    return;
  }
  restorePlace();
  show();
  focusFirst();
}

void frmAccountPlan::cancel() {
  VXObjectUIO->CancelUpdate();
  if (isNew()) restorePlace();
  show();
  focusFirst();
}

bool frmAccountPlan::mayClose() {
  return !dirty_ || askCloseUnsaved(host(), SOPanel.caption, kPlanTitle);
}

}  // namespace tolvex
