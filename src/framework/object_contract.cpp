#include "framework/object_contract.h"

#include "framework/param_dictionary.h"
#include "framework/parameters.h"
#include "platform/save_outcome.h"

namespace tolvex {

namespace {
HostContext* theHost = nullptr;
}

HostContext& hostContext() {
  expect(theHost != nullptr, "the module knows its host");
  return *theHost;
}

void adoptHostContext(HostContext* host) {
  if (!theHost || !host) theHost = host;
}

// --- ForwardingUI ------------------------------------------------------------------------------

VXObjectUI& ForwardingUI::inner() const {
  expect(inner_ != nullptr, "a kind is used after VXS");
  return *inner_;
}

void ForwardingUI::VXS(HostContext& host) {
  adoptHostContext(&host);
  if (!inner_) inner_ = hostContext().objects().innerUI(kind_);
  expect(inner_ != nullptr, "the host knows the kind");
  if (bo_) inner_->BO(bo_);
  inner_->VXS(host);
}

void ForwardingUI::BO(std::shared_ptr<BusinessObject> bo) {
  bo_ = std::move(bo);
  if (inner_) inner_->BO(bo_);
}

std::shared_ptr<BusinessObject> ForwardingUI::BO() const { return inner_ ? inner_->BO() : bo_; }

std::vector<MenuEntry> ForwardingUI::GetMenu(std::string id, std::string kind, std::string parent) {
  return inner().GetMenu(std::move(id), std::move(kind), std::move(parent));
}
MenuAction ForwardingUI::ClickMenu(std::string id, std::string kind, std::string caption,
                                   std::string extra) {
  return inner().ClickMenu(std::move(id), std::move(kind), std::move(caption), std::move(extra));
}
bool ForwardingUI::DragOK(std::string id, std::string kind, std::string target) {
  return inner().DragOK(std::move(id), std::move(kind), std::move(target));
}
bool ForwardingUI::DropOK(std::string id) { return inner().DropOK(std::move(id)); }
RowSetPtr ForwardingUI::GetVXObjectList(std::string parent, std::string filter1,
                                        std::string filter2) {
  return inner().GetVXObjectList(std::move(parent), std::move(filter1), std::move(filter2));
}
bool ForwardingUI::AddToDeskTopVXObject(std::string id) {
  return inner().AddToDeskTopVXObject(std::move(id));
}
std::shared_ptr<VXObjectUIO> ForwardingUI::GetVXObject(std::string id) {
  return inner().GetVXObject(std::move(id));
}
const IconsTable& ForwardingUI::GetIconsTable() const { return inner().GetIconsTable(); }
std::int16_t ForwardingUI::DeleteVXObject(std::string id) {
  return inner().DeleteVXObject(std::move(id));
}

// --- ForwardingUIO -----------------------------------------------------------------------------

ForwardingUIO::ForwardingUIO(std::string_view kind)
    : inner_(hostContext().objects().innerUIO(kind)) {
  expect(inner_ != nullptr, "the host knows the kind");
}

HostResult ForwardingUIO::call(const std::string& method, const std::string& parameters) const {
  const std::shared_ptr<BusinessObject> bo = BO();
  expect(bo != nullptr, "an object has its business object");
  HostResult result;
  bo->CallBO(method, parameters, nullptr, result);
  return result;
}

MethodResult ForwardingUIO::read(const std::string& method, const std::string& parameters) const {
  return told(hostContext(), call(method, parameters));
}

std::string ForwardingUIO::parentParameters() {
  return Parameters().number(Fields()["ParentID"].Number()).str();
}

MethodResult ForwardingUIO::readAccounts(DictionaryPtr& kept) const {
  if (kept) return done(kept);
  MethodResult list = read("GetAccountList", kNoParameters);
  if (list.Code != kDone) return list;
  auto accounts = std::make_shared<ParamDictionary>();
  accounts->SetItem("0", "Likutis");
  setItems(*accounts, *list.Value.AsRows(), "Account", "Name");
  kept = std::move(accounts);
  return done(kept);
}

}  // namespace tolvex
