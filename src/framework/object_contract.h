// The module's side of the object contract: the shell around the host's generic objects.
//
// Each class of the module owns one generic object and forwards to it everything that has no
// accounting in it. The forwarding is written out here, once; a class of the module overrides what
// is its own.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/host.h"
#include "platform/objects.h"

namespace tolvex {

// The program around the module, shared by all classes. Throws RowSetError (Unexpected) before the
// first VXS.
HostContext& hostContext();
// The first host stays; null forgets it (at unloading, and between tests).
void adoptHostContext(HostContext* host);

// Runs a dispatch body; a run-time error inside becomes its number and "Klaida!", a line break and
// its description.
template <class Body>
MethodResult guarded(Body body);

class ForwardingUI : public VXObjectUI, public std::enable_shared_from_this<ForwardingUI> {
 public:
  explicit ForwardingUI(std::string kind) : kind_(std::move(kind)) {}

  void OID(std::string oid) override { inner().OID(std::move(oid)); }
  std::string OID() const override { return inner_ ? inner_->OID() : kind_; }
  std::string OName() const override { return inner_ ? inner_->OName() : std::string(); }
  std::vector<MenuEntry> GetMenu(std::string id, std::string kind, std::string parent) override;
  MenuAction ClickMenu(std::string id, std::string kind, std::string caption,
                       std::string extra) override;
  bool DragOK(std::string id, std::string kind, std::string target) override;
  bool DropOK(std::string id) override;
  RowSetPtr GetVXObjectList(std::string parent, std::string filter1, std::string filter2) override;
  bool AddToDeskTopVXObject(std::string id) override;
  std::shared_ptr<VXObjectUIO> GetVXObject(std::string id) override;
  const IconsTable& GetIconsTable() const override;
  std::int16_t DeleteVXObject(std::string id) override;
  // Adopts the host and makes the inner object.
  void VXS(HostContext& host) override;
  void BO(std::shared_ptr<BusinessObject> bo) override;
  std::shared_ptr<BusinessObject> BO() const override;

 protected:
  // Throws RowSetError (Unexpected) before VXS.
  VXObjectUI& inner() const;
  // Whether a clicked id names a row of the list and not the kind itself: ids compare as texts.
  bool isRow(std::string_view id) const { return id > OID(); }

 private:
  std::string kind_;
  std::shared_ptr<VXObjectUI> inner_;
  std::shared_ptr<BusinessObject> bo_;  // given before there was an inner object
};

class ForwardingUIO : public VXObjectUIO, public std::enable_shared_from_this<ForwardingUIO> {
 public:
  // Makes the inner object through the host.
  explicit ForwardingUIO(std::string_view kind);

  std::string GetGUID() override { return inner_->GetGUID(); }
  void OID(std::string oid) override { inner_->OID(std::move(oid)); }
  std::string OID() const override { return inner_->OID(); }
  void OIDR(std::string oidr) override { inner_->OIDR(std::move(oidr)); }
  std::string OIDR() const override { return inner_->OIDR(); }
  std::string OName() const override { return inner_->OName(); }
  void OType(std::string otype) override { inner_->OType(std::move(otype)); }
  std::string OType() const override { return inner_->OType(); }
  void Preview(bool readOnly) override { inner_->Preview(readOnly); }
  bool Preview() const override { return inner_->Preview(); }
  FieldList& Fields() override { return inner_->Fields(); }
  RowSetPtr RsFields() override { return inner_->RsFields(); }
  SaveResult Read() override { return inner_->Read(); }
  SaveResult Save(RowSetPtr second, RowSetPtr third) override {
    return inner_->Save(std::move(second), std::move(third));
  }
  void UI(std::shared_ptr<VXObjectUI> ui) override { inner_->UI(std::move(ui)); }
  std::shared_ptr<VXObjectUI> UI() const override { return inner_->UI(); }
  std::shared_ptr<BusinessObject> BO() const override { return inner_->BO(); }
  void BO(std::shared_ptr<BusinessObject> bo) override { inner_->BO(std::move(bo)); }
  void CancelUpdate() override { inner_->CancelUpdate(); }
  using VXObjectUIO::Methods;

 protected:
  VXObjectUIO& inner() const { return *inner_; }
  // One call to the store through this object's business object.
  HostResult call(const std::string& method, const std::string& parameters) const;
  // The same for Properties: a refusal is shown and returned as told.
  MethodResult read(const std::string& method, const std::string& parameters) const;
  // The parameter of the key "Parent": the group above, by the record's own ParentID.
  std::string parentParameters();
  // The accounts that a template or a lock may name: account and name, "0" for balances brought in
  // first. Read once into `kept`; a failure leaves it as it is, so that the next call reads again.
  MethodResult readAccounts(DictionaryPtr& kept) const;

 private:
  std::shared_ptr<VXObjectUIO> inner_;
};

template <class Body>
MethodResult guarded(Body body) {
  try {
    return body();
  } catch (const RowSetError& error) {
    return {error.Number, "Klaida!" + std::string(kLineBreak) + error.what(), {}};
  } catch (const std::exception& error) {
    return {RowSetError::Unexpected, "Klaida!" + std::string(kLineBreak) + error.what(), {}};
  }
}

}  // namespace tolvex
