// InnerUI: the generic list side of a kind, over the store.
//
// The module's classes wrap one and add what is accounting; kinds that have no class of the module
// (firms, persons, banks, currencies) are served by it alone: a list, a filter, a picker, and with
// a card also a screen and the commands new and delete.
#pragma once

#include "host/objects/card_set.h"
#include "host/store/store_port.h"
#include "platform/host.h"

namespace tolvex {

class InnerUI final : public VXObjectUI {
 public:
  // `card` is null for a kind without a screen of the program; it outlives this object.
  InnerUI(HostContext& host, store::StorePort& store, std::string code, const Card* card);

  // The list of the code that is set; until then of the kind itself.
  void OID(std::string oid) override { oid_ = std::move(oid); }
  std::string OID() const override { return oid_; }
  std::string OName() const override;
  std::vector<MenuEntry> GetMenu(std::string id, std::string kind, std::string parent) override;
  MenuAction ClickMenu(std::string id, std::string kind, std::string caption,
                       std::string extra) override;
  bool DragOK(std::string, std::string, std::string) override { return true; }
  bool DropOK(std::string) override { return false; }
  RowSetPtr GetVXObjectList(std::string parent, std::string filter1, std::string filter2) override;
  bool AddToDeskTopVXObject(std::string id) override;
  std::shared_ptr<VXObjectUIO> GetVXObject(std::string id) override;
  const IconsTable& GetIconsTable() const override;
  // Shows the store's text of a refusal.
  std::int16_t DeleteVXObject(std::string id) override;
  void VXS(HostContext&) override {}
  void BO(std::shared_ptr<BusinessObject> bo) override { bo_ = std::move(bo); }
  std::shared_ptr<BusinessObject> BO() const override { return bo_; }

 private:
  HostContext& host_;
  store::StorePort& store_;
  std::shared_ptr<VXObjectUIO> readTold(std::string id);  // null after the user was told why
  MenuAction filtered();
  MenuAction newObject();
  MenuAction deleted(const std::string& id);

  const std::string code_;
  const Card* card_;
  std::string oid_;
  std::shared_ptr<BusinessObject> bo_;
};

}  // namespace tolvex
