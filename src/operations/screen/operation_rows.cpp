#include "operations/screen/operation_rows.h"

#include "framework/references.h"

namespace tolvex {

bool pointsAtOperation(std::string_view reference) {
  return isRef(reference) && kindOf(reference) == kOperationKind;
}

}  // namespace tolvex
