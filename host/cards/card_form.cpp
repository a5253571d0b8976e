#include "host/cards/card_form.h"

#include "framework/references.h"
#include "framework/text.h"
#include "host/cards/frm_record_log.h"
#include "platform/save_outcome.h"

namespace tolvex {
namespace {

// The card's own lines, indented, between the title and the commands.
std::string pictureOf(const CardSpec& spec) {
  std::string whole = "[SOPanel]\n";
  for (const std::string& line : split(spec.picture, '\n'))
    if (!trim(line).empty()) whole += "  " + line + "\n";
  return whole + "  lblRemarks>\nSSCClose | >> | SSCNew | cmdCancel | cmdWrite\n";
}

}  // namespace

CardForm::CardForm(HostContext& host, const CardSpec& spec, std::shared_ptr<VXObjectUIO> object)
    : Form(host, spec.form), spec_(spec), picture_(pictureOf(spec)), object_(std::move(object)) {
  SOPanel.titleBand = true;
  SOPanel.menu = &mnuCard;
  mnuLog.shortcut = "Ctrl+H";
  mnuLog.onClick = [this] { showLog(); };
  tabCard.tabs = spec.tabs;
  tabCard.visible = !spec.tabs.empty();
  lblRemarks.visible = false;
  for (const CardField& field : spec.fields) {
    boxes_.push_back(makeCardBox(*this, field, [this] { touch(); }));
    if (!field.remark && field.kind != CardField::Kind::Reference) continue;
    ui::Control& control = boxes_.back()->control();
    control.onLeave = [this, tidied = control.onLeave] {
      if (tidied) tidied();
      showRemarks();
    };
  }
  if (spec.part) part_ = spec.part(*this);
  cmdWrite.shortcut = "Ctrl+S";
  cmdWrite.isDefault = true;
  cmdWrite.onClick = [this] { save(); };
  SSCNew.shortcut = "Ctrl+N";
  // "Nauja" or "Naujas", as the kind is named.
  if (const auto words = split(spec.newCaption, ' '); words.size() > 1) SSCNew.caption = words[0];
  SSCNew.onClick = [this] { openNext(); };
  cmdCancel.isCancel = true;
  SSCClose.onClick = cmdCancel.onClick = [this] { leave(); };
}

bool CardForm::isStored() const { return isRef(object_->OIDR()); }

void CardForm::opened() {
  (void)layout();  // says which field stands on which page
  rights_ = host().rights().of(spec_.component);
  changed_ = false;
  showRecord();
  if (!boxes_.empty()) lead(boxes_.front()->control());
}

void CardForm::showRecord() {
  const bool stored = isStored();
  readOnly = object_->Preview() || !(stored ? rights_.change : rights_.create);
  RowSet& row = record();
  for (const auto& box : boxes_) {
    box->show(row);
    box->lock(readOnly);
  }
  SOPanel.caption = stored ? spec_.caption : spec_.newCaption;
  setTitle(stored ? std::string(row["Preview"].Text()) : spec_.newCaption);
  cmdWrite.enabled = !readOnly;
  SSCNew.enabled = rights_.create != 0;
  mnuLog.enabled = stored;
  if (part_) part_->shown();
  showRemarks();
}

void CardForm::showRemarks() {
  std::vector<std::string> remarks;
  for (const auto& box : boxes_) {
    if (std::string remark = box->remark(); !remark.empty()) remarks.push_back(std::move(remark));
  }
  lblRemarks.caption = remarks.empty() ? std::string() : "Dėmesio: " + join(remarks, "; ") + ".";
  lblRemarks.visible = !remarks.empty();
}

void CardForm::touch() { changed_ = true; }

void CardForm::lead(ui::Control& control) {
  for (const ui::Control* at = &control; at; at = at->parent)
    if (at->parent == &tabCard) tabCard.current = at->page;
  setFocus(control);
}

bool CardForm::refuse(ui::Control& control, const std::string& text) {
  warn(host(), text);
  lead(control);
  return false;
}

bool CardForm::checkFields() {
  for (const auto& box : boxes_) {
    if (*box->about().missing && box->isEmpty())
      return refuse(box->control(), box->about().missing);
    if (const std::string why = box->refusal(); !why.empty()) return refuse(box->control(), why);
  }
  return true;
}

bool CardForm::save() {
  if (readOnly || !checkFields()) return false;
  for (const auto& box : boxes_) box->write(record());
  if (part_ && !part_->maySave()) return false;
  SaveResult saved;
  {
    ui::BusyScope busy(*this, SOPanel);
    saved = object_->Save(part_ ? part_->secondSet() : nullptr, nullptr);
  }
  if (saved.Code != kDone) {
    showFailedSave(host(), saved.Text);
    return false;
  }
  changed_ = false;
  showRecord();
  host().desktop().rename(object_->OIDR(), title());
  return true;
}

void CardForm::openNext() {
  if (!mayClose()) return;
  const auto next = host().objects().create(spec_.kind);
  if (!next) return;
  object_ = next;
  opened();
}

void CardForm::showLog() {
  frmRecordLog log(host(), object_->OIDR(), spec_.fields);
  host().screens().runModal(log);
}

bool CardForm::mayClose() {
  return !changed_ || readOnly || askCloseUnsaved(host(), SOPanel.caption);
}

void CardForm::leave() {
  if (mayClose()) close();
}

void CardForm::recordsChanged(const std::string& kind) {
  // Another screen may have changed this very record; what was typed here is not thrown away.
  if (kind == spec_.kind && isStored() && !changed_ && object_->Read().Code == kDone) {
    showRecord();
    return;
  }
  for (const auto& box : boxes_)
    if (std::string_view(box->about().kinds).find(kind) != std::string_view::npos) box->refresh();
  if (part_) part_->recordsChanged(kind);
}

Card cardOf(const CardSpec& spec) {
  Card card;
  card.kind = spec.kind;
  card.component = spec.component;
  card.newEntry = spec.newCaption;
  card.make = [&spec](HostContext& host, std::shared_ptr<VXObjectUIO> object) {
    return std::make_shared<CardForm>(host, spec, std::move(object));
  };
  return card;
}

}  // namespace tolvex
