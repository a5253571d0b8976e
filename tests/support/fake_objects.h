// Doubles of the store and of the host's generic objects, all in memory: a module class built over
// them reads, changes and saves records with no store behind it.
#pragma once

#include <deque>
#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "framework/recordset.h"
#include "platform/host.h"

namespace tolvex::test {

// A set of the given columns and rows; a missing trailing value stays empty.
RowSetPtr table(std::initializer_list<ColumnSpec> columns,
                std::initializer_list<std::vector<Variant>> rows = {});

// A deep copy of all rows, whatever filters stand, as loaded from a store.
RowSetPtr storedCopy(RowSet& rows);

// The door of CallBO: serves sets by method name, records every call. A method that nobody serves
// answers 1206, as the store does.
class FakeBusinessObject final : public BusinessObject {
 public:
  struct Call {
    std::string method, parameters;
    bool operator==(const Call&) const = default;
  };
  using Answer = std::function<HostResult(const std::string& parameters)>;

  void CallBO(const std::string& method, const std::string& parameters, std::nullptr_t,
              HostResult& out) override;

  void serve(std::string method, Answer answer) { answers_[std::move(method)] = std::move(answer); }
  void serve(std::string method, RowSetPtr rows);      // a fresh cursor for each call
  void failNext(std::int32_t code, std::string text);  // the next call, whatever it asks
  void failCall(int number, std::int32_t code, std::string text);  // the n-th from now, from 1

  std::vector<Call> calls;
  std::string trace() const;  // "GetAccountList None\n…"

 private:
  std::map<std::string, Answer> answers_;
  std::map<std::size_t, HostResult> failures_;  // by index of the call
};

// What the generic objects of one test share: stored records and what is to go wrong.
struct Shelf {
  std::map<std::string, RowSetPtr> records;         // by reference
  std::map<std::string, RowSetPtr> lists;           // by kind: what GetVXObjectList gives
  std::vector<std::vector<std::string>> listCalls;  // kind and the three arguments
  std::deque<SaveResult> saves, reads;              // outcomes to come; none queued: success
  std::deque<std::int16_t> deletes;                 // likewise; none queued: 0, or 16 when gone
  std::shared_ptr<BusinessObject> bo;
  int nextId = 1;
  int nextGuid = 1;
  int readCount = 0, saveCount = 0;

  // Puts a record on the shelf and gives its reference; `kind` is the document's exact kind.
  std::string put(std::string_view kind, int id, RowSet& header);
};

// The columns of a kind's record; operations, plan nodes, groups and templates are known.
RowSetPtr emptyRecord(std::string_view kind);

class FakeInnerUIO final : public VXObjectUIO {
 public:
  FakeInnerUIO(std::shared_ptr<Shelf> shelf, std::string kind);

  std::string GetGUID() override;  // "G1", "G2", … padded to 36 characters
  void OID(std::string oid) override { oid_ = std::move(oid); }
  std::string OID() const override { return oid_; }
  void OIDR(std::string oidr) override { oid_ = std::move(oidr); }
  std::string OIDR() const override { return oid_; }
  std::string OName() const override { return kind_; }
  void OType(std::string otype) override { otype_ = std::move(otype); }
  std::string OType() const override { return otype_; }
  void Preview(bool readOnly) override { preview_ = readOnly; }
  bool Preview() const override { return preview_; }
  FieldList& Fields() override { return rs_->Fields(); }
  RowSetPtr RsFields() override { return rs_; }
  MethodResult Properties(std::string key, std::string parameters) override;
  MethodResult Methods(std::string key, std::span<const Variant> par) override;  // SetRsFields
  SaveResult Read() override;
  SaveResult Save(RowSetPtr second, RowSetPtr third) override;
  void UI(std::shared_ptr<VXObjectUI> ui) override { ui_ = std::move(ui); }
  std::shared_ptr<VXObjectUI> UI() const override { return ui_; }
  std::shared_ptr<BusinessObject> BO() const override { return bo_ ? bo_ : shelf_->bo; }
  void BO(std::shared_ptr<BusinessObject> bo) override { bo_ = std::move(bo); }
  void CancelUpdate() override;
  using VXObjectUIO::Methods;

 private:
  std::shared_ptr<Shelf> shelf_;
  std::string kind_, oid_, otype_;
  bool preview_ = false;
  RowSetPtr rs_;
  std::shared_ptr<VXObjectUI> ui_;
  std::shared_ptr<BusinessObject> bo_;
};

class FakeInnerUI final : public VXObjectUI {
 public:
  FakeInnerUI(std::shared_ptr<Shelf> shelf, std::string kind);

  void OID(std::string oid) override { oid_ = std::move(oid); }
  std::string OID() const override { return oid_; }
  std::string OName() const override { return kind_; }
  std::vector<MenuEntry> GetMenu(std::string, std::string, std::string) override { return {}; }
  MenuAction ClickMenu(std::string, std::string, std::string, std::string) override { return {}; }
  bool DragOK(std::string, std::string, std::string) override { return false; }
  bool DropOK(std::string) override { return true; }
  RowSetPtr GetVXObjectList(std::string parent, std::string filter1, std::string filter2) override;
  bool AddToDeskTopVXObject(std::string) override { return false; }
  std::shared_ptr<VXObjectUIO> GetVXObject(std::string id) override;
  const IconsTable& GetIconsTable() const override { return icons_; }
  std::int16_t DeleteVXObject(std::string id) override;
  void VXS(HostContext&) override {}
  void BO(std::shared_ptr<BusinessObject> bo) override { bo_ = std::move(bo); }
  std::shared_ptr<BusinessObject> BO() const override { return bo_ ? bo_ : shelf_->bo; }

 private:
  std::shared_ptr<Shelf> shelf_;
  std::string kind_, oid_;
  IconsTable icons_;
  std::shared_ptr<BusinessObject> bo_;
};

// The factory: what a test put under a reference or a kind, else generic objects over the shelf.
class FakeObjects final : public ObjectFactory {
 public:
  std::shared_ptr<VXObjectUIO> open(std::string_view reference) override;
  std::shared_ptr<VXObjectUIO> create(std::string_view kind) override;
  std::shared_ptr<VXObjectUI> kind(std::string_view code) override;
  std::shared_ptr<VXObjectUI> innerUI(std::string_view code) override;
  std::shared_ptr<VXObjectUIO> innerUIO(std::string_view code) override;

  std::shared_ptr<Shelf> shelf = std::make_shared<Shelf>();
  std::map<std::string, std::shared_ptr<VXObjectUIO>, std::less<>> opened;  // by reference
  std::map<std::string, std::function<std::shared_ptr<VXObjectUIO>()>, std::less<>> makers;
  std::map<std::string, std::shared_ptr<VXObjectUI>, std::less<>> kinds;
  std::vector<std::string> asked;  // "open O02015005", "create O0201500", "kind O0200500"
};

}  // namespace tolvex::test
