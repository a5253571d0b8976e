#include "operations/UI0201500.h"

#include "framework/parameters.h"
#include "framework/references.h"
#include "operations/document_form.h"
#include "operations/operation_menu.h"

namespace tolvex {

UI0201500::UI0201500(OperationTablesPtr tables)
    : ForwardingUI(kOperationKind), tables_(std::move(tables)) {}

RightFlags UI0201500::rightsOf(std::string_view id, std::string_view parent) const {
  const std::string group = isRef(parent) ? std::string(parent) : groupOf(tables_, id);
  return hostContext().rights().of(operationRights(idOf(group)));
}

std::vector<MenuEntry> UI0201500::GetMenu(std::string id, std::string kind, std::string parent) {
  std::vector<MenuEntry> menu;
  if (!isRow(id)) return menu;
  const RightFlags rights = rightsOf(id, parent);
  if (rights.view) menu.push_back(menuEntry(kToDesktop));
  if (rights.create) addDocumentEntries(tables_->forms, kind, menu);
  if (rights.remove) menu.push_back(menuEntry(kDelete));
  menu.push_back(menuEntry(kFilterRows));
  menu.push_back(menuEntry(kSearch, tables_->forms.has("frmBROperPreview")));
  return menu;
}

MenuAction UI0201500::ClickMenu(std::string id, std::string, std::string caption,
                                std::string extra) {
  if (id == OID()) return {};
  if (caption == kFilterRows) {
    return clickFilter(*this, kOperationKind, [](VXObjectUI& ui, const std::string& filter) {
      return ui.GetVXObjectList("''," + quoted(filter), "", "");
    });
  }
  if (caption == kToDesktop) return showForm(openDocument(tables_, id).form);
  if (caption == kTelebankExport) return clickTelebank(tables_, "");
  if (caption == kDelete) return clickDelete(*this, id);
  if (caption == kSearch) return clickSearch(tables_);
  if (kindOfCaption(caption, "").empty()) return {};
  return clickNewDocument(tables_, shared_from_this(), groupOf(tables_, id), caption, extra);
}

RowSetPtr UI0201500::GetVXObjectList(std::string parent, std::string, std::string) {
  return inner().GetVXObjectList(std::move(parent), "", "");
}

bool UI0201500::AddToDeskTopVXObject(std::string id) {
  const OpenedDocument opened = openDocument(tables_, id);
  if (opened.form) hostContext().desktop().put(opened.form);
  return opened.form || opened.byHost;
}

std::shared_ptr<VXObjectUIO> UI0201500::GetVXObject(std::string id) {
  const std::shared_ptr<UIO0201500> operation = readOperation(tables_, id);
  if (!operation) return nullptr;
  operation->UI(shared_from_this());
  operation->RsFields()->SetMarshalOptions(1);
  return operation;
}

const IconsTable& UI0201500::GetIconsTable() const {
  static const IconsTable kIcons = {
      {"O0201500", "C0201500"}, {"O0201501", "C0201501"}, {"O0201502", "C0201502"},
      {"O0201503", "C0201503"}, {"O0201504", "C0201504"}, {"O0201505", "C0201505"},
      {"O0201506", "C0201506"}, {"O0300100", "C0201500"}, {"O0202000", "C0201500"},
      {"TJ", "C0200500J"},      {"RJ", "C0200500J"},      {"IJ", "C0200500J"},
      {"PJ", "C0200500J"}};
  return kIcons;
}

std::int16_t UI0201500::DeleteVXObject(std::string id) {
  const std::shared_ptr<UIO0201500> operation = readOperation(tables_, id);
  if (!operation || isGone(*operation)) return kGone;
  const int group = static_cast<int>(operation->Fields()["BROperGroupID"].Number());
  if (hostContext().rights().of(operationRights(group)).remove == 0) return kNoRight;
  return inner().DeleteVXObject(std::move(id));
}

}  // namespace tolvex
