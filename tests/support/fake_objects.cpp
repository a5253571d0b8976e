#include "tests/support/fake_objects.h"

#include <iterator>

#include "framework/references.h"
#include "operations/entry_rules.h"

namespace tolvex::test {

namespace {

constexpr ColumnSpec kPlanNode[] = {
    {"ID", FieldType::Integer},       {"OIDR", FieldType::Text, 20},
    {"OID", FieldType::Text, 20},     {"OType", FieldType::Text, 8},
    {"Preview", FieldType::Text},     {"ParentID", FieldType::Integer},
    {"Account", FieldType::Text, 20}, {"Name", FieldType::Text, 200},
    {"Type", FieldType::Text, 1},     {"GroupFlag", FieldType::Integer},
    {"NewID", FieldType::Integer},    {"BRAPropertyID", FieldType::Integer},
    {"OwnCode", FieldType::Text}};

constexpr ColumnSpec kGroup[] = {
    {"ID", FieldType::Integer},           {"OIDR", FieldType::Text, 20},
    {"OID", FieldType::Text, 20},         {"OType", FieldType::Text, 8},
    {"Preview", FieldType::Text},         {"PreviewPath", FieldType::Text},
    {"ParentID", FieldType::Integer},     {"Name", FieldType::Text, 200},
    {"GroupFlag", FieldType::Integer},    {"FormOID", FieldType::Text, 8},
    {"Parameters", FieldType::Text},      {"AccountCode", FieldType::Text},
    {"BRTemplateID", FieldType::Integer}, {"DefaultTemplateID", FieldType::Integer},
    {"Serija", FieldType::Text},          {"SerijaIndication", FieldType::Integer},
    {"ANMask", FieldType::Text},          {"ANPrefix", FieldType::Text},
    {"ANTemplate", FieldType::Text},      {"ANMinimal", FieldType::Integer},
    {"ANGroupBy", FieldType::Integer},    {"ANCycle", FieldType::Integer},
    {"ANDateFrom", FieldType::Date}};

constexpr ColumnSpec kTemplateAcc[] = {
    {"ID", FieldType::Integer},          {"GUID", FieldType::Text},
    {"BRTemplateGUID", FieldType::Text}, {"AccountD", FieldType::Text},
    {"AccountC", FieldType::Text},       {"Factor", FieldType::Double}};
constexpr ColumnSpec kTemplateAddr[] = {{"ID", FieldType::Integer},
                                        {"BRTemplateAccGUID", FieldType::Text},
                                        {"FOID", FieldType::Text, 8},
                                        {"Sign", FieldType::SmallInt},
                                        {"FOIDR", FieldType::Text, 30}};
// Templates of operations, and those of payments, which have no lines.
constexpr ColumnSpec kTemplate[] = {{"ID", FieldType::Integer},
                                    {"OIDR", FieldType::Text, 20},
                                    {"OID", FieldType::Text, 20},
                                    {"OType", FieldType::Text, 8},
                                    {"Preview", FieldType::Text},
                                    {"ParentID", FieldType::Integer},
                                    {"GroupFlag", FieldType::Integer},
                                    {"Name", FieldType::Text, 200},
                                    {"Comment", FieldType::Text, 1000},
                                    nestedColumn("BRTemplateAcc", kTemplateAcc),
                                    nestedColumn("BRTemplateAddr", kTemplateAddr)};

void copyRows(RowSet& from, RowSet& to) {
  const KeepPlace place(from);
  from.SetFilter("");
  ForEachRow(from, [&](RowSet&) {
    to.LoadRow();
    for (std::size_t i = 0; i < from.Fields().size(); ++i) {
      Field field = from.Fields()[i], target = to.Fields()[i];
      if (field.Type() == FieldType::Nested) {
        copyRows(*field.Rows(), *target.Rows());
      } else if (!field.IsAbsent()) {
        target = field.Value();
      }
    }
  });
  if (to.RecordCount() > 0) to.MoveFirst();
}

// Gives every row that has none an identity, children included.
void giveIds(RowSet& rows, int& nextId) {
  const KeepPlace place(rows);
  rows.SetFilter("");
  ForEachRow(rows, [&](RowSet&) {
    if (rows.Fields().contains("ID") && rows["ID"].IsAbsent()) rows["ID"] = Variant(nextId++);
    for (std::size_t i = 0; i < rows.Fields().size(); ++i) {
      Field field = rows.Fields()[i];
      if (field.Type() == FieldType::Nested) giveIds(*field.Rows(), nextId);
    }
  });
}

// Documents share the family of the financial operation, the new plan that of the plan.
std::string familyOf(std::string_view kind) {
  if (kind.starts_with("O02015")) return "O0201500";
  if (kind.starts_with("O02004")) return "O0200400";
  if (kind.starts_with("O02017") || kind.starts_with("O00016")) return "O0201700";
  return std::string(kindOf(kind));
}

}  // namespace

RowSetPtr table(std::initializer_list<ColumnSpec> columns,
                std::initializer_list<std::vector<Variant>> rows) {
  RowSetPtr set = RowSet::make(columns.begin(), static_cast<int>(columns.size()));
  for (const std::vector<Variant>& row : rows) {
    set->LoadRow();
    for (std::size_t i = 0; i < row.size(); ++i) set->Fields()[i] = row[i];
  }
  if (rows.size() > 0) set->MoveFirst();
  return set;
}

RowSetPtr storedCopy(RowSet& rows) {
  RowSetPtr copy = rows.EmptyCopy();
  copyRows(rows, *copy);
  return copy;
}

RowSetPtr emptyRecord(std::string_view kind) {
  const std::string family = familyOf(kind);
  if (family == "O0200400") return RowSet::make(kPlanNode);
  if (family == "O0201400") return RowSet::make(kGroup);
  if (family == "O0201600" || family == "O0201700") return RowSet::make(kTemplate);
  return RowSet::make(kOperation);
}

// --- FakeBusinessObject ------------------------------------------------------------------------

void FakeBusinessObject::CallBO(const std::string& method, const std::string& parameters,
                                std::nullptr_t, HostResult& out) {
  calls.push_back({method, parameters});
  if (const auto failure = failures_.find(calls.size() - 1); failure != failures_.end()) {
    out = failure->second;
  } else if (const auto answer = answers_.find(method); answer != answers_.end()) {
    out = answer->second(parameters);
  } else {
    out = {1206, "Nežinoma procedūra: " + method, {}};
  }
}

void FakeBusinessObject::serve(std::string method, RowSetPtr rows) {
  serve(std::move(method), [rows](const std::string&) {
    return HostResult{kDone, "", Variant(rows->Clone())};
  });
}

void FakeBusinessObject::failNext(std::int32_t code, std::string text) {
  failCall(1, code, std::move(text));
}

void FakeBusinessObject::failCall(int number, std::int32_t code, std::string text) {
  failures_[calls.size() + static_cast<std::size_t>(number) - 1] = {code, std::move(text), {}};
}

std::string FakeBusinessObject::trace() const {
  std::string text;
  for (const Call& call : calls) text += call.method + " " + call.parameters + "\n";
  return text;
}

std::string Shelf::put(std::string_view kind, int id, RowSet& header) {
  const bool document = familyOf(kind) == "O0201500";
  const std::string reference = refOf(document ? "O0201500" : kindOf(kind), id);
  RowSetPtr record = storedCopy(header);
  record->MoveFirst();
  (*record)["ID"] = Variant(id);
  (*record)["OIDR"] = reference;
  (*record)["OID"] = reference;
  (*record)["OType"] = kindOf(kind);
  if (record->Fields().contains("FOIDR")) (*record)["FOIDR"] = refOf(kind, id);
  record->AcceptChanges();
  records[reference] = record;
  if (id >= nextId) nextId = id + 1;
  return reference;
}

// --- FakeInnerUIO ------------------------------------------------------------------------------

FakeInnerUIO::FakeInnerUIO(std::shared_ptr<Shelf> shelf, std::string kind)
    : shelf_(std::move(shelf)), kind_(std::move(kind)), otype_(kind_), rs_(emptyRecord(kind_)) {
  rs_->AddNew();
}

std::string FakeInnerUIO::GetGUID() {
  std::string guid = "G" + std::to_string(shelf_->nextGuid++);
  guid.resize(36, '-');
  return guid;
}

MethodResult FakeInnerUIO::Properties(std::string key, std::string) {
  return refused("inner object was asked for " + key);
}

MethodResult FakeInnerUIO::Methods(std::string key, std::span<const Variant> par) {
  if (key != "SetRsFields") return refused("inner object was told " + key);
  rs_ = par[0].AsRows();
  return done();
}

SaveResult FakeInnerUIO::Read() {
  ++shelf_->readCount;
  if (!shelf_->reads.empty()) {
    const SaveResult result = shelf_->reads.front();
    shelf_->reads.pop_front();
    if (result.Code != kDone) return result;
  }
  if (isNew(oid_)) {
    rs_ = emptyRecord(kind_);
    rs_->AddNew();
    return {};
  }
  const auto found = shelf_->records.find(oid_);
  if (found != shelf_->records.end()) {
    rs_ = storedCopy(*found->second);
    otype_ = (*rs_)["OType"].Text();
    return {};
  }
  if (familyOf(kind_) != "O0201500") return {16, "Objekto nėra."};
  rs_ = emptyRecord(kind_);  // an operation that is gone: one row without identity
  rs_->LoadRow();
  return {};
}

SaveResult FakeInnerUIO::Save(RowSetPtr, RowSetPtr) {
  ++shelf_->saveCount;
  if (!shelf_->saves.empty()) {
    const SaveResult result = shelf_->saves.front();
    shelf_->saves.pop_front();
    if (result.Code != kDone) return result;
  }
  const int id = isNew(oid_) ? shelf_->nextId++ : idOf(oid_);
  (*rs_)["ID"] = Variant(id);
  giveIds(*rs_, shelf_->nextId);
  oid_ = shelf_->put(familyOf(kind_) == "O0201500" ? otype_ : kind_, id, *rs_);
  RowSet& stored = *shelf_->records[oid_];
  for (const char* name : {"OIDR", "OID", "OType", "FOIDR"}) {
    if (stored.Fields().contains(name)) (*rs_)[name] = stored[name].Value();
  }
  rs_->AcceptChanges();
  return {};
}

void FakeInnerUIO::CancelUpdate() {
  if (isNew(oid_)) {
    (void)Read();
  } else {
    rs_->CancelBatch();
  }
}

// --- FakeInnerUI -------------------------------------------------------------------------------

FakeInnerUI::FakeInnerUI(std::shared_ptr<Shelf> shelf, std::string kind)
    : shelf_(std::move(shelf)), kind_(kind), oid_(std::move(kind)) {}

RowSetPtr FakeInnerUI::GetVXObjectList(std::string parent, std::string filter1,
                                       std::string filter2) {
  shelf_->listCalls.push_back({kind_, parent, filter1, filter2});
  const auto found = shelf_->lists.find(kind_);
  return found == shelf_->lists.end() ? nullptr : found->second->Clone();
}

std::shared_ptr<VXObjectUIO> FakeInnerUI::GetVXObject(std::string id) {
  auto object = std::make_shared<FakeInnerUIO>(shelf_, kind_);
  object->OID(std::move(id));
  return object->Read().Code == kDone ? object : nullptr;
}

std::int16_t FakeInnerUI::DeleteVXObject(std::string id) {
  if (!shelf_->deletes.empty()) {
    const std::int16_t status = shelf_->deletes.front();
    shelf_->deletes.pop_front();
    if (status != kDeleted) return status;
  }
  return shelf_->records.erase(id) ? kDeleted : kGone;
}

// --- FakeObjects -------------------------------------------------------------------------------

std::shared_ptr<VXObjectUIO> FakeObjects::open(std::string_view reference) {
  asked.push_back("open " + std::string(reference));
  if (const auto found = opened.find(reference); found != opened.end()) return found->second;
  if (!shelf->records.contains(std::string(reference))) return nullptr;
  auto object = std::make_shared<FakeInnerUIO>(shelf, std::string(kindOf(reference)));
  object->OID(std::string(reference));
  return object->Read().Code == kDone ? object : nullptr;
}

std::shared_ptr<VXObjectUIO> FakeObjects::create(std::string_view kind) {
  asked.push_back("create " + std::string(kind));
  if (const auto found = makers.find(kind); found != makers.end()) return found->second();
  return innerUIO(kind);
}

std::shared_ptr<VXObjectUI> FakeObjects::kind(std::string_view code) {
  asked.push_back("kind " + std::string(code));
  const auto found = kinds.find(code);
  return found == kinds.end() ? innerUI(code) : found->second;
}

std::shared_ptr<VXObjectUI> FakeObjects::innerUI(std::string_view code) {
  return std::make_shared<FakeInnerUI>(shelf, std::string(code));
}

std::shared_ptr<VXObjectUIO> FakeObjects::innerUIO(std::string_view code) {
  return std::make_shared<FakeInnerUIO>(shelf, std::string(code));
}

}  // namespace tolvex::test
