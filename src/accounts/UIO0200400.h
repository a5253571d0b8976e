// UIO0200400: one node of a chart of accounts: a class, an account or a subaccount.
//
// Serves the working plan ("O0200400") and the new plan ("O0200401") alike. Keys are compared
// without regard to case.
#pragma once

#include <memory>
#include <string>

#include "framework/object_contract.h"

namespace tolvex {

inline constexpr const char* kPlanKind = "O0200400";
inline constexpr const char* kNewPlanKind = "O0200401";
inline constexpr const char* kPlanRights = "CAccountPlanRights";

// A node of a plan with how its reading ended; a new one for an oid without an id.
struct PlanNode {
  std::shared_ptr<VXObjectUIO> node;
  SaveResult read;
};
PlanNode readPlanNode(std::string_view plan, std::string oid);

class UIO0200400 final : public ForwardingUIO {
 public:
  explicit UIO0200400(std::string_view kind = kPlanKind) : ForwardingUIO(kind), kind_(kind) {}

  // "Parent" and "Class": the objects above, empty when there is none, or it is gone. "NewAccount":
  // number and name of the counterpart in the new plan; a counterpart that is gone is cleared from
  // the record. Any other name reads the plan's own set of that name. A failure is shown.
  MethodResult Properties(std::string key, std::string parameters) override;
  // Every name is an action of the store: "MoveAccountDown" with the node's id, any other with its
  // argument as given, or with none at all. A failure is shown as well as returned.
  MethodResult Methods(std::string key, std::span<const Variant> par) override;
  using ForwardingUIO::Methods;

 private:
  MethodResult nodeAt(const std::string& reference) const;
  MethodResult parentClass();
  MethodResult newAccount();
  std::string planKind() const;

  std::string kind_;
};

}  // namespace tolvex
