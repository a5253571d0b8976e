#include "operations/screen/operation_header.h"

#include <algorithm>

#include "framework/conversions.h"
#include "framework/references.h"
#include "framework/text.h"
#include "operations/UIO0201400.h"
#include "operations/autonumber.h"
#include "operations/comment_list.h"
#include "operations/screen/document_date.h"
#include "operations/screen/operation_rows.h"
#include "platform/save_outcome.h"

namespace tolvex {
namespace {

constexpr std::size_t kCommentLength = 1000;

std::optional<DateTime> dateIn(Field field) {
  const Variant date = field.Value();
  return date.IsDate() ? std::optional(date.AsDate()) : std::nullopt;
}

}  // namespace

OperationHeader::OperationHeader(ui::Form* form, const std::shared_ptr<VXObjectUIO>& object)
    : fraHeader(form, "fraHeader"),
      dtpDate(form, "dtpDate", "Data"),
      lblNumber(form, "lblNumber", "Operacijos Nr"),
      txtSerija(form, "txtSerija", {}, 6),
      txtNumber(form, "txtNumber", {}, 16),
      cmbVAT(form, "cmbVAT", "PVM sąsk. faktūrų registras", 28),
      txtGroup(form, "txtGroup", "Grupė"),
      cmdOperGroup(form, "cmdOperGroup", "…", ui::Role::Small),
      txtComment(form, "txtComment", "Komentaras"),
      cmdCommentList(form, "cmdCommentList", "…", ui::Role::Small),
      form_(*form),
      object_(object) {
  txtGroup.readOnly = true;
  // Blank means that the operation is in neither register.
  cmbVAT.setTexts({"", "Gauta PVM sąskaita faktūra", "Išrašyta PVM sąskaita faktūra"});
  lblNumber.tip = "Dukart spustelėkite, kad gautumėte kitą numerį";
  cmdOperGroup.shortcut = "F4";
  wire();
}

void OperationHeader::wire() {
  dtpDate.onChange = [this] { changeDate(); };
  for (ui::Control* box :
       std::initializer_list<ui::Control*>{&txtSerija, &txtNumber, &txtComment, &cmbVAT}) {
    box->onChange = [this] { changed(); };
  }
  lblNumber.onDoubleClick = [this] {
    if (!form_.readOnly) takeNumber();
  };
  cmdOperGroup.onClick = [this] { pickGroup(); };
  cmdCommentList.onClick = [this] { pickComment(); };
}

void OperationHeader::changed() {
  if (onChange) onChange();
}

void OperationHeader::open(bool begins) {
  const int groupId = static_cast<int>(record()["BROperGroupID"].Number());
  group_ =
      readDocumentGroup(host(), *object_, refOf(kGroupKind, groupId), GroupFit::OwnKindOrGeneric);
  dateOpen_ = !isStored(*object_);
  if (!begins) return;
  record()["DateD"] = host().clock().today();
  record()["Serija"] = group_.series;
  if (const auto number = nextNumber(*object_, group_)) record()["Number"] = *number;
}

void OperationHeader::show() {
  RowSet& row = record();
  dtpDate.value = dateIn(row["DateD"]);
  txtSerija.text = std::string(row["Serija"].Text());
  txtNumber.text = std::string(row["Number"].Text());
  txtComment.text = std::string(row["Comment"].Text());
  const int kept = static_cast<int>(row["VATRegisterIndication"].Number());
  cmbVAT.index = kept >= 0 && kept <= 2 ? kept : 0;
  showGroup();
}

void OperationHeader::showGroup() {
  txtGroup.text = group_.name;
  txtGroup.tip = group_.path;
  txtSerija.visible = group_.showsSeries || !txtSerija.text().empty();
}

void OperationHeader::enable(bool enabled) {
  for (ui::Control* control :
       std::initializer_list<ui::Control*>{&dtpDate, &cmbVAT, &cmdOperGroup, &cmdCommentList}) {
    control->enabled = enabled;
  }
  for (ui::TextBox* box : {&txtSerija, &txtNumber, &txtComment}) box->readOnly = !enabled;
}

void OperationHeader::write() {
  RowSet& row = record();
  txtComment.text = CutToChars(txtComment.text(), kCommentLength);
  row["BROperGroupID"] = group_.id();
  if (dtpDate.value()) row["DateD"] = *dtpDate.value();
  row["Comment"] = txtComment.text();
  row["Serija"] = txtSerija.text();
  row["Number"] = txtNumber.text();
  row["VATRegisterIndication"] = std::max<int>(cmbVAT.index, 0);
  row.Update();
}

// --- number and group -------------------------------------------------------------------------

void OperationHeader::takeNumber() {
  const std::optional<std::string> number = nextNumber(*object_, group_);
  if (!number) return;
  txtNumber.text = *number;
  changed();
}

void OperationHeader::askNumber() {
  const MethodResult asked = object_->Methods("CheckAutoNumber");
  if (showFailure(host(), asked)) return;
  if (!asked.Value.IsBool() || !asked.Value.AsBool()) return;
  // The save reads the counter out of the text again.
  txtNumber.text = withCounter(group_.numberMask, txtNumber.text(),
                               static_cast<int>(record()["AutoNumber"].Number()));
  changed();
}

void OperationHeader::pickGroup() {
  const auto picked = pickDocumentGroup(host(), group_.reference);
  if (!picked || *picked == group_.reference) return;
  DocumentGroup group = readDocumentGroup(host(), *object_, *picked, GroupFit::OwnKindOrGeneric);
  if (group.reference.empty()) return;
  group_ = std::move(group);
  record()["BROperGroupID"] = group_.id();
  if (!isStored(*object_)) txtSerija.text = group_.series;
  showGroup();
  takeNumber();
  changed();
}

// --- date and comment -------------------------------------------------------------------------

void OperationHeader::changeDate() {
  if (!dtpDate.value()) return;
  const DateTime date = *dtpDate.value();
  const std::optional<DateTime> before = dateIn(record()["DateD"]);
  if (before == date) return;
  const RowSetPtr entries = entriesOf(*object_);
  if (!dateFitsReferences(host(), *entries, date)) {
    warn(host(), "Data neatitinka esančių nuorodų datoms!");
    dtpDate.value = before;
    return;
  }
  record()["DateD"] = date;
  dateOpen_ = false;
  changed();
  if (entries->RecordCount() > 0 &&
      ask(host(), "Pakeisti įrašų datas į operacijos datą?", Answer::Yes)) {
    redateEntries(*entries, date);
  }
  if (onRedate) onRedate();
}

void OperationHeader::setDate(DateTime date) {
  dtpDate.value = date;
  dateOpen_ = false;
}

void OperationHeader::followFirstEntry() {
  if (!dateOpen_ || isStored(*object_)) return;
  dateOpen_ = false;
  const RowSetPtr entries = entriesOf(*object_)->Clone();
  if (entries->RecordCount() == 0) return;
  const std::optional<DateTime> date = dateIn((*entries)["DateD"]);
  if (!date) return;
  record()["DateD"] = *date;
  dtpDate.value = date;
}

void OperationHeader::pickComment() {
  const MethodResult picked = object_->Methods("GetCommentList", {txtComment.text()});
  if (showFailure(host(), picked) || NullToText(picked.Value).empty()) return;
  txtComment.text = withComment(txtComment.text(), NullToText(picked.Value));
  form_.setFocus(txtComment);
  changed();
}

}  // namespace tolvex
