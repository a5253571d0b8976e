// The contract between a host program and the kinds of objects that the module brings.
//
// Every kind is a pair: VXObjectUI, the list side (lists, menus, deleting), and VXObjectUIO, one
// object (its record, reading, saving, and two doors with string keys: Properties for reads,
// Methods for actions). The host shows trees and screens and knows nothing of accounting.
//
// References, ids and "new": see framework/references.h; OID holds the full reference of a stored
// object, and at most its kind while the object is new.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "framework/recordset.h"
#include "framework/results.h"

namespace tolvex {

class HostContext;
class VXObjectUIO;

// The one door to the store. Method names and parameter texts: framework/parameters.h; a name
// without a kind ("GetAccountList") is asked of the kind this object was made for.
class BusinessObject {
 public:
  virtual ~BusinessObject() = default;
  // One attempt, never repeated. `reserved` is always nullptr.
  virtual void CallBO(const std::string& method, const std::string& parameters,
                      std::nullptr_t reserved, HostResult& out) = 0;
};

struct MenuEntry {
  std::string caption;  // "-" is a separator
  std::string id;       // what ClickMenu receives; the caption where a kind uses captions
  bool enabled = true;
  bool checked = false;
};

// What a menu command asks of the host.
struct MenuAction {
  enum : std::int32_t { Nothing = 0, ShowForm = 1, Removed = 2, ShowRows = 4 };
  std::int32_t Action = Nothing;
  Variant Value;  // ShowForm: the form; ShowRows: array of a RowSet and the filter's caption
};

// Status of a delete.
inline constexpr std::int16_t kDeleted = 0;
inline constexpr std::int16_t kGone = 16;
inline constexpr std::int16_t kNoRight = 32;

using IconsTable = std::vector<std::pair<std::string, std::string>>;  // node kind -> image key

class VXObjectUI : public Object {
 public:
  virtual void OID(std::string oid) = 0;  // the kind's own code until set
  virtual std::string OID() const = 0;
  virtual std::string OName() const = 0;
  // Entries for the clicked row. `id` and `kind` are the row's OIDR and OType, `parent` its parent.
  virtual std::vector<MenuEntry> GetMenu(std::string id, std::string kind, std::string parent) = 0;
  virtual MenuAction ClickMenu(std::string id, std::string kind, std::string caption,
                               std::string extra) = 0;
  virtual bool DragOK(std::string id, std::string kind, std::string target) = 0;
  virtual bool DropOK(std::string id) = 0;
  // Rows of the list, or null when the store refused (the refusal has been shown). Columns of
  // every kind: OIDR, OID, ParentID, ParentOIDR, OType, GroupFlag, Name, Preview.
  virtual RowSetPtr GetVXObjectList(std::string parent, std::string filter1,
                                    std::string filter2) = 0;
  virtual bool AddToDeskTopVXObject(std::string id) = 0;
  virtual std::shared_ptr<VXObjectUIO> GetVXObject(std::string id) = 0;  // read; null on failure
  virtual const IconsTable& GetIconsTable() const = 0;
  virtual std::int16_t DeleteVXObject(std::string id) = 0;  // 0 deleted, 16 gone, 32 no right, …
  virtual void VXS(HostContext& host) = 0;
  virtual void BO(std::shared_ptr<BusinessObject> bo) = 0;
  virtual std::shared_ptr<BusinessObject> BO() const = 0;
};

class VXObjectUIO : public Object {
 public:
  virtual std::string GetGUID() = 0;  // a fresh unique text
  virtual void OID(std::string oid) = 0;
  virtual std::string OID() const = 0;
  virtual void OIDR(std::string oidr) = 0;
  virtual std::string OIDR() const = 0;
  virtual std::string OName() const = 0;
  virtual void OType(std::string otype) = 0;
  virtual std::string OType() const = 0;
  virtual void Preview(bool readOnly) = 0;
  virtual bool Preview() const = 0;
  virtual FieldList& Fields() = 0;   // of the header row
  virtual RowSetPtr RsFields() = 0;  // the header: one row with nested sets; may be replaced by a
                                     // failed save of a new object, so fetch it again after Save
  // A keyed read. A failure of the store is shown here and returned as told; a fault of the program
  // is only returned, see framework/told.h.
  virtual MethodResult Properties(std::string key, std::string parameters) = 0;
  // A keyed action. Its own failures are returned, never shown (the plan's kind is the exception);
  // that of a keyed read which it made comes back as told.
  virtual MethodResult Methods(std::string key, std::span<const Variant> par) = 0;
  virtual SaveResult Read() = 0;
  // On success ids, OID and OIDR are set and the record counts as unchanged; on failure nothing is
  // stored and what was typed is kept.
  virtual SaveResult Save(RowSetPtr second, RowSetPtr third) = 0;
  virtual void UI(std::shared_ptr<VXObjectUI> ui) = 0;
  virtual std::shared_ptr<VXObjectUI> UI() const = 0;
  virtual std::shared_ptr<BusinessObject> BO() const = 0;
  virtual void BO(std::shared_ptr<BusinessObject> bo) = 0;
  virtual void CancelUpdate() = 0;

  MethodResult Methods(std::string key, std::initializer_list<Variant> par) {
    return Methods(std::move(key), std::span<const Variant>(par.begin(), par.size()));
  }
  MethodResult Methods(std::string key) {
    return Methods(std::move(key), std::span<const Variant>{});
  }
};

}  // namespace tolvex
