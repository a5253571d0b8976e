#include "host/objects/inner_ui.h"

#include "framework/parameters.h"
#include "host/objects/inner_uio.h"
#include "host/objects/kinds.h"

namespace tolvex {
namespace {
constexpr const char* kFilter = "Atrinkti";
}

InnerUI::InnerUI(HostContext& host, store::StorePort& store, std::string code)
    : host_(host), store_(store), code_(std::move(code)), oid_(code_) {
  bo_ = store::businessObject(store_, code_);
}

std::string InnerUI::OName() const { return kindCaption(code_); }

std::vector<MenuEntry> InnerUI::GetMenu(std::string, std::string, std::string) {
  return {{kFilter, kFilter}};
}

MenuAction InnerUI::ClickMenu(std::string, std::string, std::string caption, std::string) {
  if (caption != kFilter) return {};
  const std::string filter = host_.dialogs().filter(code_);
  if (filter.empty()) return {};
  RowSetPtr rows = GetVXObjectList(quoted(filter), "", "");
  if (!rows) return {};
  return {MenuAction::ShowRows, Variant(Variant::Array{rows, filter})};
}

RowSetPtr InnerUI::GetVXObjectList(std::string parent, std::string filter1, std::string filter2) {
  HostResult result = store_.list(code_, parent, filter1, filter2);
  if (result.Code != kDone) {
    warn(host_, result.Text);
    return nullptr;
  }
  return result.Data.IsRows() ? result.Data.AsRows() : nullptr;
}

std::shared_ptr<VXObjectUIO> InnerUI::GetVXObject(std::string id) {
  auto object = std::make_shared<InnerUIO>(host_, store_, code_);
  object->OID(std::move(id));
  if (object->Read().Code != kDone) return nullptr;
  return object;
}

const IconsTable& InnerUI::GetIconsTable() const {
  static const IconsTable none;
  return none;
}

std::int16_t InnerUI::DeleteVXObject(std::string id) {
  const HostResult result = store_.erase(code_, id);
  if (result.Code != kDone) warn(host_, result.Text);
  return static_cast<std::int16_t>(result.Code);
}

}  // namespace tolvex
