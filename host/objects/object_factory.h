// Objects by kind: the module's classes where the class table names one, generic ones elsewhere.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "host/objects/card_set.h"
#include "host/objects/watched_store.h"
#include "platform/host.h"
#include "platform/registration.h"

namespace tolvex {

class Objects final : public ObjectFactory {
 public:
  Objects(HostContext& host, Module& module, WatchedStore& store, const CardSet& cards);

  // From the module's registration: kinds that its library serves.
  void addClass(const std::string& code, const std::string& caption);
  bool serves(std::string_view code) const;  // a class of the module or a kind of the program

  std::shared_ptr<VXObjectUIO> open(std::string_view reference) override;
  std::shared_ptr<VXObjectUIO> create(std::string_view kind) override;
  std::shared_ptr<VXObjectUI> kind(std::string_view code) override;
  std::shared_ptr<VXObjectUI> innerUI(std::string_view code) override;
  std::shared_ptr<VXObjectUIO> innerUIO(std::string_view code) override;

 private:
  HostContext& host_;
  Module& module_;
  WatchedStore& store_;
  const CardSet& cards_;
  std::map<std::string, std::string, std::less<>> classes_;  // code -> caption
  std::map<std::string, std::shared_ptr<VXObjectUI>, std::less<>> kinds_;
};

}  // namespace tolvex
