#include "accounts/UIO0200400.h"

#include "framework/conversions.h"
#include "framework/parameters.h"
#include "framework/references.h"
#include "framework/text.h"
#include "platform/save_outcome.h"

namespace tolvex {

PlanNode readPlanNode(std::string_view plan, std::string oid) {
  auto node = std::make_shared<UIO0200400>(plan);
  node->OID(std::move(oid));
  SaveResult read = node->Read();
  return {std::move(node), std::move(read)};
}

// The plan that the node belongs to; its code stands at the beginning of the node's reference.
std::string UIO0200400::planKind() const {
  const std::string oid = OID();
  return isRef(oid) ? std::string(kindOf(oid)) : kind_;
}

MethodResult UIO0200400::Properties(std::string key, std::string parameters) {
  return guarded([&] {
    if (equalNoCase(key, "Parent")) {
      const int parent = static_cast<int>(Fields()["ParentID"].Number());
      if (parent == 0) return done();
      return nodeAt(refOf(planKind(), parent));
    }
    if (equalNoCase(key, "Class")) return parentClass();
    if (equalNoCase(key, "NewAccount")) return newAccount();
    return read("D" + planKind() + "_Get" + key, parameters);
  });
}

// Empty for a node that is gone; one that could not be read is told.
MethodResult UIO0200400::nodeAt(const std::string& reference) const {
  auto [node, read] = readPlanNode(kindOf(reference), reference);
  if (read.Code == kDone) return done(Variant(ObjectPtr(std::move(node))));
  if (read.Code == kGone) return done();
  return told(hostContext(), {read.Code, read.Text, {}});
}

MethodResult UIO0200400::parentClass() {
  const MethodResult above = Properties("Parent", "");
  const auto parent = above.Value.As<VXObjectUIO>();
  if (!parent) return above;
  const std::string ownCode(parent->Fields()["OwnCode"].Text());
  const std::string classID = ownCode.substr(0, ownCode.find('*'));
  if (classID.empty()) return done();
  // The path holds bare ids; a whole reference is taken as it is.
  return nodeAt(isRef(classID) ? classID : planKind() + classID);
}

MethodResult UIO0200400::newAccount() {
  Field NewID = Fields()["NewID"];
  if (NewID.IsAbsent()) return done("");
  const MethodResult found = nodeAt(refOf(kNewPlanKind, static_cast<int>(NewID.Number())));
  if (found.Code != kDone) return found;
  const auto counterpart = found.Value.As<VXObjectUIO>();
  if (!counterpart) {
    NewID = Variant(Null{});
    return done("");
  }
  return done(std::string(counterpart->Fields()["Account"].Text()) + " " +
              std::string(counterpart->Fields()["Name"].Text()));
}

MethodResult UIO0200400::Methods(std::string key, std::span<const Variant> par) {
  return guarded([&] {
    std::string parameters;
    if (!par.empty()) {
      parameters = NullToText(par[0]);
      if (equalNoCase(key, "MoveAccountDown")) parameters = quoted(parameters);
    }
    return read(key, parameters);
  });
}

}  // namespace tolvex
