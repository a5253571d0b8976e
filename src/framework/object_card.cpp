#include "framework/object_card.h"

#include "framework/references.h"

namespace tolvex {

bool isStored(const VXObjectUIO& object) { return !isNew(object.OID()); }

std::string storedReference(const VXObjectUIO& object) {
  return isStored(object) ? object.OIDR() : std::string();
}

bool mayWrite(const VXObjectUIO& object, const RightFlags& rights) {
  return !object.Preview() && (isStored(object) ? rights.change : rights.create) != 0;
}

SaveResult saveBusy(ui::Form& card, ui::Control& panel, VXObjectUIO& object, RowSetPtr second) {
  const ui::BusyScope busy(card, panel);
  return object.Save(std::move(second), nullptr);
}

void showSaved(ui::Form& card, const VXObjectUIO& object) {
  card.host().desktop().rename(object.OIDR(), card.title());
  card.host().tree().redrawNode(object.OIDR());
}

bool deleteAsked(HostContext& host, VXObjectUIO& object) {
  std::string question = "Ar tikrai norite panaikinti?";
  question.append(kLineBreak).append(object.Fields()["Name"].Text());
  if (!ask(host, std::move(question))) return false;
  const std::shared_ptr<VXObjectUI> kind = object.UI();
  expect(kind != nullptr, "a record knows its kind");
  const std::int16_t status = kind->DeleteVXObject(object.OIDR());
  if (status == kDeleted) host.tree().redraw(kindOf(object.OIDR()));
  return status == kDeleted || status == kGone;
}

std::shared_ptr<VXObjectUIO> newBeside(HostContext& host, VXObjectUIO& like, const char* type) {
  std::shared_ptr<VXObjectUIO> object = host.objects().create(type);
  if (!object) return nullptr;
  object->Fields()["ParentID"] = like.Fields()["ParentID"].Value();
  object->Fields()["GroupFlag"] = 0;
  return object;
}

}  // namespace tolvex
