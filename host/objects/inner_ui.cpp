#include "host/objects/inner_ui.h"

#include "framework/parameters.h"
#include "framework/references.h"
#include "framework/text.h"
#include "host/objects/inner_uio.h"
#include "host/objects/kinds.h"

namespace tolvex {
namespace {
constexpr const char* kFilter = "Atrinkti";
constexpr const char* kToDesktop = "Padėti ant darbo stalo";
constexpr const char* kDelete = "Panaikinti";
}  // namespace

InnerUI::InnerUI(HostContext& host, store::StorePort& store, std::string code, const Card* card)
    : host_(host), store_(store), code_(std::move(code)), card_(card), oid_(code_) {
  bo_ = store::businessObject(store_, code_);
}

std::string InnerUI::OName() const { return kindCaption(code_); }

std::vector<MenuEntry> InnerUI::GetMenu(std::string id, std::string, std::string) {
  if (!card_) return {{kFilter, kFilter}};
  std::vector<MenuEntry> menu;
  const RightFlags rights = host_.rights().of(card_->component);
  if (isRef(id) && rights.view) menu.push_back({kToDesktop, kToDesktop});
  if (rights.create && !card_->readOnly && !card_->newEntry.empty())
    menu.push_back({card_->newEntry, card_->newEntry});
  if (isRef(id) && rights.remove && !card_->readOnly)
    menu.insert(menu.end(), {{"-", "-"}, {kDelete, kDelete}});
  menu.insert(menu.end(), {{"-", "-"}, {kFilter, kFilter}});
  return menu;
}

MenuAction InnerUI::ClickMenu(std::string id, std::string, std::string caption, std::string) {
  if (caption == kFilter) return filtered();
  if (!card_) return {};
  if (caption == kToDesktop) (void)host_.desktop().putObject(id);
  if (caption == card_->newEntry) return newObject();
  if (caption == kDelete) return deleted(id);
  return {};
}

MenuAction InnerUI::newObject() {
  std::shared_ptr<VXObjectUIO> object = readTold("");
  if (!object) return {};
  return {MenuAction::ShowForm, Variant(ObjectPtr(card_->make(host_, std::move(object))))};
}

MenuAction InnerUI::deleted(const std::string& id) {
  const auto row = host_.pickers().lookup(id);
  const std::string what = row ? std::string(kLineBreak) + row->text : std::string();
  if (!ask(host_, "Ar tikrai norite panaikinti?" + what)) return {};
  return {DeleteVXObject(id) == kDeleted ? MenuAction::Removed : MenuAction::Nothing, {}};
}

bool InnerUI::AddToDeskTopVXObject(std::string id) {
  if (!card_) return false;
  std::shared_ptr<VXObjectUIO> object = readTold(std::move(id));
  return object && host_.desktop().put(card_->make(host_, std::move(object)));
}

MenuAction InnerUI::filtered() {
  const std::string filter = host_.dialogs().filter(code_);
  if (filter.empty()) return {};
  RowSetPtr rows = GetVXObjectList(quoted(filter), "", "");
  if (!rows) return {};
  return {MenuAction::ShowRows, Variant(Variant::Array{rows, filter})};
}

RowSetPtr InnerUI::GetVXObjectList(std::string parent, std::string filter1, std::string filter2) {
  HostResult result = store_.list(oid_, parent, filter1, filter2);
  if (result.Code != kDone) {
    warn(host_, result.Text);
    return nullptr;
  }
  if (result.Data.IsRows()) return result.Data.AsRows();
  warn(host_, "Sąrašas neperskaitytas!");
  return nullptr;
}

std::shared_ptr<VXObjectUIO> InnerUI::GetVXObject(std::string id) {
  auto object = std::make_shared<InnerUIO>(host_, store_, code_, card_);
  object->OID(std::move(id));
  if (object->Read().Code != kDone) return nullptr;
  return object;
}

std::shared_ptr<VXObjectUIO> InnerUI::readTold(std::string id) {
  auto object = std::make_shared<InnerUIO>(host_, store_, code_, card_);
  object->OID(std::move(id));
  const SaveResult read = object->Read();
  if (read.Code == kDone) return object;
  warn(host_, read.Text);
  return nullptr;
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
