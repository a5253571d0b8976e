#include "operations/operation_menu.h"

#include <array>

#include "framework/references.h"
#include "operations/UIO0201400.h"
#include "operations/document_form.h"
#include "operations/operation_tools.h"

namespace tolvex {

namespace {

struct DocumentCaption {
  const char* kind;
  const char* caption;
};
constexpr std::array<DocumentCaption, 5> kMoneyDocuments = {
    {{"O0201501", "Naujas mokėjimo nurodymas"},
     {"O0201502", "Naujas pinigų gavimas"},
     {"O0201503", "Naujas kasos išlaidų orderis"},
     {"O0201504", "Naujas kasos pajamų orderis"},
     {"O0201505", "Nauja avanso apyskaita"}}};
constexpr const char* kNewOperation = "Nauja operacija";

}  // namespace

void addDocumentEntries(const FormRegistry& forms, std::string_view kind,
                        std::vector<MenuEntry>& menu) {
  if (kind == "O1000100") return;  // documents of trade are made in their own module
  const bool hasScreen = forms.has(editorOf(kind));
  for (const DocumentCaption& document : kMoneyDocuments) {
    if (kind != document.kind) continue;
    menu.push_back(menuEntry(document.caption, hasScreen));
    if (kind == "O0201501") menu.push_back(menuEntry(kTelebankExport, forms.has("frmTelebank")));
    return;
  }
  menu.push_back(menuEntry(kNewOperation, hasScreen));
}

std::string kindOfCaption(std::string_view caption, std::string_view groupKind) {
  for (const DocumentCaption& document : kMoneyDocuments) {
    if (caption == document.caption) return document.kind;
  }
  if (operationTool(caption)) return kOperationKind;
  if (caption != kNewOperation) return {};
  return groupKind.empty() ? kOperationKind : std::string(groupKind);
}

std::string groupOf(const OperationTablesPtr& tables, std::string_view id) {
  if (kindOf(id) == "O0201400") return std::string(id);
  const std::shared_ptr<UIO0201500> operation = toldOperation(tables, id);
  if (!operation) return {};
  return refOf("O0201400", static_cast<int>(operation->Fields()["BROperGroupID"].Number()));
}

MenuAction showForm(std::shared_ptr<ui::Form> form) {
  if (!form) return {};
  return {MenuAction::ShowForm, formValue(std::move(form))};
}

MenuAction clickNewDocument(const OperationTablesPtr& tables, std::shared_ptr<VXObjectUI> ui,
                            std::string_view group, std::string_view caption,
                            std::string_view extra) {
  if (!isRef(group) || kindOfCaption(caption, {}).empty()) return {};
  const std::shared_ptr<UIO0201400> above = toldGroup(std::string(group));
  if (!above) return {};
  const std::string kind = kindOfCaption(caption, above->Fields()["FormOID"].Text());
  const std::string_view asked = operationTool(caption) && extra.empty() ? caption : extra;
  return showForm(newDocument(tables, std::move(ui), *above, kind, asked));
}

MenuAction clickTelebank(const OperationTablesPtr& tables, std::string_view clicked) {
  if (!tables->forms.has("frmTelebank")) {
    tellMissingScreen();
    return {};
  }
  HostContext& host = hostContext();
  auto operation = host.objects().create(kOperationKind);
  if (!operation) return {};
  return showForm(
      makeScreen(tables->forms, "frmTelebank", {host, std::move(operation), std::string(clicked)}));
}

MenuAction clickSearch(const OperationTablesPtr& tables) {
  if (!tables->forms.has("frmBROperPreview")) {
    tellMissingScreen();
    return {};
  }
  HostContext& host = hostContext();
  const std::shared_ptr<VXObjectUI> journals = host.objects().kind("O0200500");
  const RowSetPtr rows = journals ? journals->GetVXObjectList("", "", "") : nullptr;
  if (!rows) return {};
  rows->SetFilter("OType = 'GRO0200501'");
  if (rows->Eof()) return {};
  auto journal = host.objects().open((*rows)["OIDR"].Text());
  if (!journal) return {};
  return showForm(makeScreen(tables->forms, "frmBROperPreview", {host, std::move(journal), ""}));
}

}  // namespace tolvex
