#include "host/objects/object_factory.h"

#include "framework/references.h"
#include "host/objects/inner_ui.h"
#include "host/objects/inner_uio.h"
#include "host/objects/kinds.h"

namespace tolvex {

Objects::Objects(HostContext& host, Module& module, WatchedStore& store, const CardSet& cards)
    : host_(host), module_(module), store_(store), cards_(cards) {}

void Objects::addClass(const std::string& code, const std::string& caption) {
  classes_[code] = caption;
}

bool Objects::serves(std::string_view code) const {
  return classes_.contains(familyCode(code)) || kindView(code) != nullptr;
}

std::shared_ptr<VXObjectUI> Objects::kind(std::string_view code) {
  // One list object a list, for its mode lasts (the plan's "FULL"). Narrow codes without a list of
  // their own share their family's, whose OID must stay the family's code for menus to tell rows
  // from the root.
  const std::string family = familyCode(code);
  const bool ofModule = classes_.contains(family);
  const std::string key = ofModule ? listCode(code) : std::string(kindOf(code));
  if (const auto known = kinds_.find(key); known != kinds_.end()) return known->second;
  std::shared_ptr<VXObjectUI> ui;
  if (ofModule) ui = module_.createUI("UI" + family.substr(1));
  if (ui) {
    ui->VXS(host_);
    ui->BO(store::businessObject(store_, key));
    ui->OID(key);
  } else {
    ui = innerUI(key);
  }
  kinds_[key] = ui;
  return ui;
}

std::shared_ptr<VXObjectUIO> Objects::open(std::string_view reference) {
  if (!isRef(reference)) return nullptr;
  auto object = kind(kindOf(reference))->GetVXObject(std::string(reference));
  if (!object || !object->RsFields() || !object->RsFields()->HasCurrent()) return nullptr;
  // A record that was deleted meanwhile comes back with its reference null.
  if (object->Fields().contains("OIDR") && object->Fields()["OIDR"].IsAbsent()) return nullptr;
  return object;
}

std::shared_ptr<VXObjectUIO> Objects::create(std::string_view code) {
  auto object = kind(code)->GetVXObject("");
  if (object && object->OType() != code) {
    object->OType(std::string(code));
    if (object->Read().Code != kDone) object = nullptr;
  }
  if (!object)
    warn(host_, store_.refusal().empty() ? "Naujas objektas nesukurtas!" : store_.refusal());
  return object;
}

std::shared_ptr<VXObjectUI> Objects::innerUI(std::string_view code) {
  return std::make_shared<InnerUI>(host_, store_, std::string(code), cards_.find(code));
}

std::shared_ptr<VXObjectUIO> Objects::innerUIO(std::string_view code) {
  return std::make_shared<InnerUIO>(host_, store_, std::string(code), cards_.find(code));
}

}  // namespace tolvex
