// An operation over the fake host, with its screens, for tests of screens.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "framework/object_contract.h"
#include "operations/UIO0201500.h"
#include "operations/entries.h"
#include "operations/entry_editor.h"
#include "operations/entry_rules.h"
#include "operations/frmBROper.h"
#include "operations/frmBROperRecord.h"
#include "operations/operation_forms.h"
#include "operations/operation_methods.h"
#include "platform/input.h"
#include "tests/support/fake_host.h"

namespace tolvex::test {

class ScreenTest : public testing::Test {
 protected:
  ScreenTest() {
    adoptHostContext(nullptr);
    adoptHostContext(&host);
    addOperationMethods(tables->methods);
    registerOperationForms(tables->forms);
    serveStandingLists(host.store());
    serveGroup("O0201500");
    host.store().serve("DO0001629_GetVATtariffs",
                       table({{"Value", FieldType::Double}}, {{18.0}, {9.0}, {5.0}}));
    host.store().serve("GetRelatedBR", table({{"OIDR", FieldType::Text}}));
    host.store().serve("DO0201500_CheckBRPointerClient",
                       table({{"OIDR", FieldType::Text}}, {{"O02015009"}}));
  }
  ~ScreenTest() override { adoptHostContext(nullptr); }

  void serveGroup(const std::string& kind, const std::string& mask = "", int defaultTemplate = 0) {
    host.store().serve(
        "GetParent", table({{"OIDR", FieldType::Text},
                            {"Preview", FieldType::Text},
                            {"FormOID", FieldType::Text},
                            {"BRTemplateID", FieldType::Integer},
                            {"DefaultTemplateID", FieldType::Integer},
                            {"Serija", FieldType::Text},
                            {"SerijaIndication", FieldType::Integer},
                            {"ANMask", FieldType::Text}},
                           {{"O02014003", "Pirkimai", kind, 0, defaultTemplate, "PIR", 1, mask}}));
  }

  std::shared_ptr<UIO0201500> newOperation() {
    auto object = std::make_shared<UIO0201500>(tables);
    object->OType("O0201500");
    EXPECT_EQ(object->Read().Code, kDone);
    (*object->RsFields())["BROperGroupID"] = 3;
    return object;
  }

  // Adds an entry and gives its GUID.
  static std::string add(VXObjectUIO& object, const std::string& debit, const std::string& credit,
                         double sum) {
    NewEntry entry;
    entry.AccountD = debit;
    entry.AccountC = credit;
    entry.sums.sum = sum;
    return AddBR(object, entry).Value.AsText();
  }

  std::shared_ptr<frmBROper> open(std::shared_ptr<VXObjectUIO> object, bool modal = false) {
    auto form = std::make_shared<frmBROper>(ObjectFormRequest{host, std::move(object), "", modal},
                                            tables->forms);
    form->markOpen(true);
    form->opened();
    return form;
  }

  std::shared_ptr<frmBROperRecord> edit(std::shared_ptr<VXObjectUIO> object,
                                        const std::string& guid, bool readOnly = false,
                                        std::int16_t mode = 0, const std::string& allowed = "") {
    const RowSetPtr set = entriesOf(*object);
    auto form = std::make_shared<frmBROperRecord>(
        EntryEditorRequest{host, std::move(object), set, guid, readOnly, true, mode, allowed});
    form->markOpen(true);
    form->opened();
    return form;
  }

  std::vector<std::string> told() { return host.dialogs().takeTexts(); }

  FakeHost host;
  std::shared_ptr<OperationTables> tables = std::make_shared<OperationTables>();
};

// An act of the user that must be possible.
#define DO(act) EXPECT_EQ(act, "")

}  // namespace tolvex::test
