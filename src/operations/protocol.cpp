#include "operations/protocol.h"

#include "framework/object_contract.h"
#include "framework/references.h"
#include "framework/text.h"
#include "platform/save_outcome.h"

namespace tolvex {

MethodResult CreateProtocol(VXObjectUIO& operation) {
  const UserRow user = hostContext().user().row().value_or(UserRow{});
  const Variant now(hostContext().clock().now());
  FieldList& header = operation.Fields();
  if (isNew(operation.OID())) {
    header["CreatedByUserOIDR"] = user.reference;
    header["CreatedByUserName"] = user.name;
    header["CreationDate"] = now;
  }
  header["ChangedByUserOIDR"] = user.reference;
  header["ChangedByUserName"] = user.name;
  header["CorrectionDate"] = now;
  return done(true);
}

MethodResult ShowProtocol(VXObjectUIO& operation) {
  FieldList& header = operation.Fields();
  const auto moment = [&](const char* column) {
    const Variant value = header[column].Value();
    return value.IsDate() ? value.AsDate().LongText() : std::string();
  };
  showInfo(hostContext(),
           join({std::string(header["CreatedByUserName"].Text()), moment("CreationDate"),
                 std::string(header["ChangedByUserName"].Text()), moment("CorrectionDate")},
                kLineBreak));
  return done(true);
}

}  // namespace tolvex
