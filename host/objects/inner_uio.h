// InnerUIO: the generic half of one object: its record, read and saved whole through the store.
//
// `Methods("SetRsFields", [set])` puts a record set back in place (after a failed save of a new
// object). Asked for anything else it speaks for kinds without a class of the module: an action is
// answered by the kind's card where that has it; else a read is "Get" and the key, an action the
// key itself, with the arguments written out.
#pragma once

#include "host/objects/card_set.h"
#include "host/store/store_port.h"
#include "platform/host.h"

namespace tolvex {

class Parameters;

class InnerUIO final : public VXObjectUIO {
 public:
  using VXObjectUIO::Methods;
  // `card` is null for a kind that has none; it outlives this object.
  InnerUIO(HostContext& host, store::StorePort& store, std::string code, const Card* card);

  std::string GetGUID() override;
  void OID(std::string oid) override { oid_ = std::move(oid); }
  std::string OID() const override { return oid_; }
  void OIDR(std::string oidr) override { oidr_ = std::move(oidr); }
  std::string OIDR() const override { return oidr_; }
  std::string OName() const override;
  void OType(std::string otype) override { otype_ = std::move(otype); }
  std::string OType() const override { return otype_; }
  void Preview(bool readOnly) override { preview_ = readOnly; }
  bool Preview() const override { return preview_; }
  FieldList& Fields() override;
  RowSetPtr RsFields() override { return header_; }
  MethodResult Properties(std::string key, std::string parameters) override;
  MethodResult Methods(std::string key, std::span<const Variant> par) override;
  SaveResult Read() override;
  SaveResult Save(RowSetPtr second, RowSetPtr third) override;
  void UI(std::shared_ptr<VXObjectUI> ui) override { ui_ = std::move(ui); }
  std::shared_ptr<VXObjectUI> UI() const override { return ui_; }
  std::shared_ptr<BusinessObject> BO() const override { return bo_; }
  void BO(std::shared_ptr<BusinessObject> bo) override { bo_ = std::move(bo); }
  void CancelUpdate() override;

 private:
  HostContext& host_;
  store::StorePort& store_;
  const std::string code_;
  const Card* card_;
  std::string oid_, oidr_, otype_;
  bool preview_ = false;
  RowSetPtr header_;
  std::shared_ptr<VXObjectUI> ui_;
  std::shared_ptr<BusinessObject> bo_;
};

// 36 characters, upper case, hyphens, from the system's source of randomness.
std::string makeGuid();

// A value as an argument of a parameter text: texts and dates quoted, numbers bare, absent as ''.
void appendArgument(Parameters& parameters, const Variant& value);

}  // namespace tolvex
