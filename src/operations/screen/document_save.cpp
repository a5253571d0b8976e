#include "operations/screen/document_save.h"

#include "operations/document_form.h"
#include "operations/operation_log.h"
#include "operations/screen/operation_rows.h"
#include "platform/save_outcome.h"

namespace tolvex {
namespace {

std::string groupIdText(VXObjectUIO& object) {
  return std::to_string(static_cast<int>(object.Fields()["BROperGroupID"].Number()));
}

SaveResult prepareAndSave(HostContext& host, VXObjectUIO& object, const std::string& numberMask,
                          const std::string& numberText) {
  if (!isStored(object)) (*object.RsFields())["LockGUID"] = host.workplace().lockKey();
  const MethodResult number = object.Methods("SaveAutoNumber", {numberMask, numberText});
  if (number.Code != kDone) return {number.Code, number.Text};
  const MethodResult protocol = object.Methods("CreateProtocol");
  if (protocol.Code != kDone) return {protocol.Code, protocol.Text};
  return object.Save(nullptr, nullptr);
}

}  // namespace

DocumentRights documentRights(HostContext& host, VXObjectUIO& object) {
  const RightFlags flags = host.rights().of("CBROperRights" + groupIdText(object));
  DocumentRights rights;
  rights.create = flags.create != 0;
  rights.change = flags.change != 0 || (rights.create && !isStored(object));
  rights.remove = flags.remove != 0;
  return rights;
}

bool saveDocument(HostContext& host, VXObjectUIO& object, const std::string& numberMask,
                  const std::string& numberText) {
  const SaveResult saved = prepareAndSave(host, object, numberMask, numberText);
  if (saved.Code != kDone) {
    showFailedSave(host, saved.Text);
    return false;
  }
  const SaveResult read = object.Read();
  if (read.Code != kDone) warn(host, read.Text);
  host.desktop().rename(object.OIDR(), documentName(object));
  host.tree().redraw(kOperationKind);
  return true;
}

std::string documentName(VXObjectUIO& object) {
  const Variant date = object.Fields()["DateD"].Value();
  std::string name = date.IsDate() ? date.AsDate().Text() : std::string();
  return name.append(" ").append(object.Fields()["Number"].Text());
}

bool deleteDocument(HostContext& host, VXObjectUIO& object) {
  Message question;
  question.text = "Ar tikrai norite panaikinti?";
  question.text.append(kLineBreak).append(object.OName());
  question.icon = Icon::Question;
  question.buttons = Buttons::OkCancel;
  question.preset = Answer::Cancel;
  if (host.dialogs().message(question) != Answer::Ok) return false;

  std::shared_ptr<VXObjectUI> kind = object.UI();
  if (!kind) kind = host.objects().kind(kOperationKind);
  const std::int16_t status = kind ? kind->DeleteVXObject(object.OIDR()) : kGone;
  switch (status) {
    case kDeleted:
      host.tree().redraw(kOperationKind);
      return true;
    case kGone:
      showStop(host, "Operacija panaikinta !");
      return true;
    case kNoRight:
      warn(host, "Nėra teisės panaikinti operaciją.");
      return false;
    default:
      warn(host, "Operacijos panaikinti nepavyko.");
      return false;
  }
}

bool undoDocument(HostContext& host, VXObjectUIO& object) {
  const MethodResult undone = UndoLastSave(object);
  if (undone.Code != kDone) {
    showStop(host, undone.Text);
    return false;
  }
  const SaveResult read = object.Read();
  if (read.Code != kDone) warn(host, read.Text);
  if (!isGone(object)) host.desktop().rename(object.OIDR(), documentName(object));
  host.tree().redraw(kOperationKind);
  return true;
}

std::shared_ptr<VXObjectUIO> newDocument(HostContext& host, VXObjectUIO& like) {
  const std::string kind = like.OType().empty() ? std::string(kOperationKind) : like.OType();
  std::shared_ptr<VXObjectUIO> object = host.objects().create(kind);
  if (!object) return nullptr;
  (*object->RsFields())["BROperGroupID"] = like.Fields()["BROperGroupID"].Value();
  return object;
}

}  // namespace tolvex
