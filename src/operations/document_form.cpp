#include "operations/document_form.h"

#include "framework/conversions.h"
#include "framework/references.h"
#include "platform/save_outcome.h"

namespace tolvex {

std::string_view editorOf(std::string_view kind) {
  if (kind == "O0201501" || kind == "O0201502") return "frmTransfer";
  if (kind == "O0201503" || kind == "O0201504") return "frmCashPayment";
  if (kind == "O0201505") return "frmAdvanceReport";
  if (kind == "O0201506") return "frmAccountsClosing";
  return "frmBROper";
}

Variant formValue(std::shared_ptr<ui::Form> form) {
  return form ? Variant(ObjectPtr(std::move(form))) : Variant();
}

void tellMissingScreen() { warn(hostContext(), "Šis langas dar neįdiegtas, jis bus vėliau."); }

std::shared_ptr<ui::Form> makeScreen(const FormRegistry& forms, std::string_view name,
                                     const ObjectFormRequest& request) {
  std::shared_ptr<ui::Form> form = forms.make(name, request);
  if (!form) tellMissingScreen();
  return form;
}

std::shared_ptr<ui::Form> makeEditor(const FormRegistry& forms, std::string_view kind,
                                     const ObjectFormRequest& request) {
  return makeScreen(forms, editorOf(kind), request);
}

std::shared_ptr<UIO0201500> readOperation(const OperationTablesPtr& tables, std::string_view id) {
  auto operation = std::make_shared<UIO0201500>(tables);
  operation->OID(std::string(id));
  return operation->Read().Code == kDone ? operation : nullptr;
}

bool isGone(VXObjectUIO& operation) {
  return operation.Fields()["OIDR"].IsAbsent() && operation.Fields()["FOIDR"].IsAbsent();
}

std::string operationRights(int groupID) { return "CBROperRights" + std::to_string(groupID); }

namespace {

// The kind that chooses the editor. A money document names itself in FOIDR.
std::string editorKind(VXObjectUIO& operation) {
  const std::string kind(kindOf(operation.Fields()["FOIDR"].Text()));
  return kind >= "O0201501" && kind <= "O0201506" ? kind : operation.OType();
}

bool readOrTell(VXObjectUIO& operation) {
  const SaveResult read = operation.Read();
  if (read.Code != kDone) warn(hostContext(), read.Text);
  return read.Code == kDone;
}

// The document of another module behind an operation, or "".
std::string foreignDocument(VXObjectUIO& operation) {
  const std::string reference(operation.Fields()["FOIDR"].Text());
  const bool own =
      kindOf(reference).starts_with("O02015") || reference == operation.Fields()["OIDR"].Text();
  return own || !isRef(reference) ? std::string() : reference;
}

}  // namespace

std::shared_ptr<UIO0201500> toldOperation(const OperationTablesPtr& tables,
                                          std::string_view reference) {
  auto operation = std::make_shared<UIO0201500>(tables);
  operation->OID(std::string(reference));
  if (!readOrTell(*operation)) return nullptr;
  if (!isGone(*operation)) return operation;
  showStop(hostContext(), "Operacija panaikinta !");
  return nullptr;
}

OpenedDocument openDocument(const OperationTablesPtr& tables, std::string_view reference) {
  HostContext& host = hostContext();
  const std::shared_ptr<UIO0201500> operation = toldOperation(tables, reference);
  if (!operation) return {};
  const int group = static_cast<int>(operation->Fields()["BROperGroupID"].Number());
  if (host.rights().of(operationRights(group)).view == 0) {
    warn(host, "Nėra teisės peržiūrėti!");
    return {};
  }
  if (const std::string foreign = foreignDocument(*operation); !foreign.empty()) {
    if (host.objects().open(foreign)) {
      host.desktop().show(foreign);
      return {nullptr, true};
    }
  }
  return {makeEditor(tables->forms, editorKind(*operation), {host, operation, ""}), false};
}

std::shared_ptr<ui::Form> newDocument(const OperationTablesPtr& tables,
                                      std::shared_ptr<VXObjectUI> ui, VXObjectUIO& group,
                                      std::string_view kind, std::string_view extra) {
  const auto operation = std::make_shared<UIO0201500>(tables);
  if (!readOrTell(*operation)) return nullptr;
  const auto copyGroup = [&] {
    operation->Fields()["BROperGroupID"] = group.Fields()["ID"].Value();
    operation->Fields()["Parameters"] = group.Fields()["Parameters"].Value();
  };
  operation->UI(std::move(ui));
  copyGroup();
  operation->OType(std::string(kind));
  if (!readOrTell(*operation)) return nullptr;
  copyGroup();  // the record of the kind is a fresh one
  return makeEditor(tables->forms, kind, {hostContext(), operation, std::string(extra)});
}

}  // namespace tolvex
