#include "accounts/counterpart.h"

#include "accounts/UIO0200400.h"
#include "framework/references.h"

namespace tolvex {

bool isNewPlanNode(std::string_view reference) {
  return isRef(reference) && kindOf(reference) == kNewPlanKind;
}

std::optional<Counterpart> counterpartOf(HostContext& host, std::string_view reference) {
  const auto [node, read] = readPlanNode(kNewPlanKind, std::string(reference));
  if (read.Code != kDone) {
    warn(host, read.Text);
    return std::nullopt;
  }
  FieldList& fields = node->Fields();
  if (fields["GroupFlag"].Number() != 0) return std::nullopt;
  return Counterpart{
      static_cast<int>(fields["ID"].Number()),
      std::string(fields["Account"].Text()).append(" ").append(fields["Preview"].Text())};
}

std::optional<Counterpart> pickCounterpart(HostContext& host, int currentId) {
  PickRequest request;
  request.kinds = {kNewPlanKind};
  request.prompt = "Pasirinkite atitinkamą sąskaitą";
  if (currentId != 0) request.current = refOf(kNewPlanKind, currentId);
  const std::optional<Picked> picked = host.pickers().pick(request);
  if (!picked) return std::nullopt;
  return isRef(picked->reference) ? counterpartOf(host, picked->reference) : Counterpart{};
}

}  // namespace tolvex
