#include "operations/screen/document_group.h"

#include "framework/parameters.h"
#include "framework/references.h"
#include "framework/told.h"
#include "operations/UIO0201400.h"
#include "operations/UIO0201500.h"
#include "platform/save_outcome.h"

namespace tolvex {
namespace {

// Operations that a trade module writes bear no series and no number of ours.
constexpr std::string_view kTradeOperation = "O1000100";

std::string textIn(RowSet& row, const char* column) {
  return row.Fields().contains(column) ? std::string(row[column].Text()) : std::string();
}

int numberIn(RowSet& row, const char* column) {
  return row.Fields().contains(column) ? static_cast<int>(row[column].Number()) : 0;
}

}  // namespace

int DocumentGroup::id() const { return idOf(reference); }

DocumentGroup readDocumentGroup(HostContext& host, VXObjectUIO& object, std::string_view reference,
                                GroupFit fit) {
  DocumentGroup group;
  if (!isRef(reference)) return group;
  const RowSetPtr rows = toldRows(object.Properties("Parent", Parameters().text(reference).str()));
  if (!rows) return group;
  RowSet& row = *rows;
  row.MoveFirst();
  if (row.Eof()) return group;

  const std::string kind = textIn(row, "FormOID");
  const bool generic = kind == kOperationKind && fit == GroupFit::OwnKindOrGeneric;
  if (!generic && kind != object.OType()) {
    warn(host, "Grupės tipas neatitinka operacijos tipo!");
    return group;
  }
  group.reference = textIn(row, "OIDR");
  group.name = textIn(row, "Preview");
  group.path = textIn(row, "PreviewPath");
  group.templateId = numberIn(row, "BRTemplateID");
  group.defaultTemplateId = numberIn(row, "DefaultTemplateID");
  group.parameters = textIn(row, "Parameters");
  group.showsSeries = true;
  if (object.OType() == kTradeOperation) return group;
  group.series = textIn(row, "Serija");
  group.showsSeries = numberIn(row, "SerijaIndication") != 0;
  group.numberMask = textIn(row, "ANMask");
  return group;
}

std::optional<std::string> pickDocumentGroup(HostContext& host, std::string_view current) {
  PickRequest request;
  request.kinds = {kGroupKind};
  request.prompt = "Pažymėkite norimą grupę";
  request.current = current;
  const std::optional<Picked> picked = host.pickers().pick(request);
  if (!picked || !isRef(picked->reference)) return std::nullopt;
  return picked->reference;
}

std::optional<std::string> nextNumber(VXObjectUIO& object, const DocumentGroup& group) {
  if (group.numberMask.empty()) return std::nullopt;
  const MethodResult number = object.Methods("GetAutoNumber");
  if (showFailure(hostContext(), number)) return std::nullopt;
  return number.Value.Show();
}

}  // namespace tolvex
