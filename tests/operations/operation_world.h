// One operation over doubles of host and store, ready for entries.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "framework/object_contract.h"
#include "operations/UIO0201500.h"
#include "operations/entries.h"
#include "operations/operation_methods.h"
#include "tests/support/fake_host.h"

namespace tolvex::test {

// Forgets the host at the end, before the double goes.
struct HostScope {
  explicit HostScope(HostContext& host) { adoptHostContext(&host); }
  ~HostScope() { adoptHostContext(nullptr); }
  HostScope(const HostScope&) = delete;
};

inline std::shared_ptr<OperationTables> entryTables() {
  auto tables = std::make_shared<OperationTables>();
  addOperationMethods(tables->methods);
  return tables;
}

class OperationWorld : public testing::Test {
 protected:
  OperationWorld() {
    serveStandingLists(host.store());
    operation = std::make_shared<UIO0201500>(tables);
    EXPECT_EQ(operation->Read().Code, kDone);
  }

  RowSet& BR() { return *entriesOf(*operation); }
  std::string printed() { return dump(*operation->RsFields()); }
  MethodResult call(const char* key, std::vector<Variant> par) {
    return operation->Methods(key, std::span<const Variant>(par));
  }
  // A plain entry; its GUID.
  std::string add(const char* debit, const char* credit, double sum,
                  const Variant::Array& addressees = {}) {
    return call("AddBR", {debit, credit, sum, Variant(addressees)}).Value.AsText();
  }
  void require(int sign, const char* kind) {
    const RowSetPtr required = BR()["RequiredAddr"].Rows();
    required->AddNew();
    (*required)["FOID"] = kind;
    (*required)["Sign"] = sign;
  }
  std::vector<std::string> texts() { return host.dialogs().takeTexts(); }

  FakeHost host;
  HostScope scope{host};
  std::shared_ptr<OperationTables> tables = entryTables();
  std::shared_ptr<UIO0201500> operation;
};

// A set of BR from the columns that a case names.
inline Variant::Array triple(int sign, const char* reference, const char* text) {
  Variant::Array list;
  addAddressee(list, sign, reference, text);
  return list;
}

}  // namespace tolvex::test
