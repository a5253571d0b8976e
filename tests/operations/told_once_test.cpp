// What the store cannot answer is told once, whichever way it fails: by a code, by a success
// without data, by throwing.
#include <functional>
#include <stdexcept>

#include "operations/BRLog.h"
#include "operations/comment_list.h"
#include "operations/frmCommentList.h"
#include "operations/screen/addressee_pick.h"
#include "operations/screen/document_group.h"
#include "operations/screen/preset_accounts.h"
#include "tests/operations/screen_fixture.h"
#include "tests/support/rows.h"

namespace tolvex::test {
namespace {

using Texts = std::vector<std::string>;

struct Way {
  const char* name;
  FakeBusinessObject::Answer answer;
};
const Way kWays[] = {
    {"by a code",
     [](const std::string&) {
       return HostResult{1205, "Nutrūko ryšys", {}};
     }},
    {"without data", [](const std::string&) { return HostResult{}; }},
    {"by throwing", [](const std::string&) -> HostResult { throw std::runtime_error("broken"); }},
};

class ToldOnce : public ScreenTest {
 protected:
  ToldOnce() {
    const ColumnSpec id{"ID", FieldType::Integer};
    host.store().serve("GetCommentList", table({id, {"Name", FieldType::Text}}, {{4, "Nuoma"}}));
    host.store().serve(
        "GetBROperLog",
        table(
            {id, {"Date", FieldType::Date}, {"User", FieldType::Text}, {"Action", FieldType::Text}},
            {{8, DateTime::Of(2003, 2, 9), "Ona", "U"}}));
    host.store().serve("GetBROperLogDetail", table({{"Name", FieldType::Text}}));
    host.store().serve("GetAutoNumber", table({{"AutoNumber", FieldType::Integer}}));
    object = newOperation();
    entry = add(*object, "240", "500", 100);
    const RowSetPtr header = object->RsFields();
    reference = host.shelf().put("O0201500", 77, *header);
  }

  std::shared_ptr<UIO0201500> stored() {
    auto read = std::make_shared<UIO0201500>(tables);
    read->OID(reference);
    EXPECT_EQ(read->Read().Code, kDone);
    return read;
  }
  void comments(std::function<void(frmCommentList&, ui::Input&)> acts) {
    std::string chosen;
    frmCommentList form({host, object, "", chosen});
    form.markOpen(true);
    form.opened();
    ui::Input user(form);
    acts(form, user);
  }

  std::shared_ptr<UIO0201500> object;
  std::string entry, reference;
};

TEST_F(ToldOnce, WhateverTheStoreCannotAnswer) {
  const struct {
    const char* routine;
    std::function<void()> act;
  } cases[] = {
      {"GetParent", [&] { (void)open(stored()); }},
      {"GetAccountList", [&] { (void)open(stored()); }},
      {"GetRelatedBR",
       [&] {
         const auto form = open(stored());
         ui::Input user(*form);
         DO(user.choose(form->optRelatedBRList));
       }},
      {"GetAutoNumber",
       [&] {
         DocumentGroup group;
         group.numberMask = "AutoNumber";
         EXPECT_FALSE(nextNumber(*object, group).has_value());
       }},
      {"GetTemplateAccAndAddr",
       [&] {
         serveGroup("O0201500", "", 7);
         (void)open(newOperation());
         serveGroup("O0201500");
       }},
      {"GetCurrencyList", [&] { (void)edit(stored(), entry); }},
      {"GetAddresseeList", [&] { (void)edit(stored(), entry); }},
      {"DO0001629_GetVATtariffs", [&] { (void)edit(stored(), entry); }},
      {"GetCommentList", [&] { comments([](auto&, auto&) {}); }},
      {"GetBROperLog",
       [&] {
         BRLog log({host, stored()});
         log.opened();
       }},
      {"GetBROperLogDetail",
       [&] {
         BRLog log({host, stored()});
         log.opened();
       }},
      {"GetUndo",
       [&] {
         const auto form = open(stored());
         form->mnuUndo.onClick();
       }},
      {"GetPresetAccounts", [&] { (void)presetAccounts(host); }},
      {"GetBankByAccount",
       [&] {
         host.pickers().answers.push_back(Picked{"O00005003", "Sąskaita", false});
         (void)pickAddressee(host, *object, {"O0000500"}, "");
       }},
  };
  for (const auto& one : cases) {
    for (const Way& way : kWays) {
      FakeBusinessObject& store = host.store();
      const FakeBusinessObject before = store;
      store.serve(one.routine, way.answer);
      one.act();
      store = before;
      const Texts boxes = told();
      EXPECT_EQ(boxes.size(), 1U) << one.routine << " fails " << way.name << ": "
                                  << testing::PrintToString(boxes);
    }
  }
}

TEST_F(ToldOnce, AWriteThatFails) {
  for (const Way& way : {kWays[0], kWays[2]}) {
    for (const char* routine : {"SaveComment", "DeleteComment"}) {
      host.store().serve(routine, way.answer);
      host.dialogs().inputs.push_back("Kitas");
      host.dialogs().answers.push_back(Answer::Yes);
      comments([&](frmCommentList& form, ui::Input& user) {
        if (routine == std::string("SaveComment")) {
          DO(user.click(form.cmdNew));
        } else {
          DO(user.deleteKey(form.lvwComments));
        }
        EXPECT_EQ(form.lvwComments.rows().size(), 1U);
      });
      Texts boxes = told();
      std::erase(boxes, "Ar tikrai norite panaikinti?");
      EXPECT_EQ(boxes.size(), 1U) << routine << " fails " << way.name << ": "
                                  << testing::PrintToString(boxes);
      host.dialogs().inputs.clear();
      host.dialogs().answers.clear();
    }
  }
}

}  // namespace
}  // namespace tolvex::test
