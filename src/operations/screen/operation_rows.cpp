#include "operations/screen/operation_rows.h"

#include "framework/parameters.h"
#include "framework/references.h"

namespace tolvex {

RowSetPtr entryOf(VXObjectUIO& object, std::string_view guid) {
  RowSetPtr entry = entriesOf(object)->Clone();
  entry->SetFilter("GUID = " + quoted(guid));
  return entry->RecordCount() == 0 ? nullptr : entry;
}

bool pointsAtOperation(std::string_view reference) {
  return isRef(reference) && kindOf(reference) == kOperationKind;
}

}  // namespace tolvex
