#include <gtest/gtest.h>

#include <functional>

#include "framework/references.h"
#include "host/store/sql.h"
#include "tests/store/oper_books.h"

namespace tolvex::store {
namespace {

RowSetPtr withEntry(Session& session, TestEntry entry) {
  return newOperation(session, {20040115, {std::move(entry)}});
}

RowSetPtr stored(Session& session) {
  return loaded(session, savedId(session, {20040115, {{"240", "500", 20, {{1, kFirmA}}}}}));
}

RowSetPtr edited(Session& session) {
  const RowSetPtr record = stored(session);
  (*record)["Comment"] = "kitas";
  return record;
}

RowSetPtr ofTemplate(Session& session, int lineId, std::vector<TestRef> refs) {
  const RowSetPtr record = withEntry(session, {"204", "450", 5, std::move(refs)});
  (*(*record)["BR"].Rows())["BRTemplateAccID"] = static_cast<double>(lineId);
  return record;
}

int purchaseLine(Session& session) {
  return static_cast<int>(
      *integerFrom(session.db(), "SELECT MIN(id) FROM template_line WHERE template_id = 11"));
}

struct Refused {
  const char* name;
  int code;
  const char* text;  // begins the answer
  std::function<RowSetPtr(Session&)> record;
};

const Refused kSaves[] = {
    {"another user saved it meanwhile", kChangedByOther,
     "Įrašą pakeitė kitas vartotojas: Administratorius, 2004.03.31 12:00:00",
     [](Session& s) {
       const RowSetPtr mine = edited(s);
       const RowSetPtr other = loaded(s, idOf((*mine)["OIDR"].Text()));
       (*(*other)["BR"].Rows())["Info"] = "kito";
       EXPECT_EQ(save(s, *other).Code, kDone);
       return mine;
     }},
    {"it was deleted meanwhile", kEditedGone, "Redaguojamas įrašas nebeegzistuoja!",
     [](Session& s) {
       const RowSetPtr mine = edited(s);
       EXPECT_EQ(s.erase("O0201500", (*mine)["OIDR"].Text()).Code, kDone);
       return mine;
     }},
    {"no right to create", kNoSaveRight, "Nėra teisės įrašyti!",
     [](Session& s) {
       run(s.db(), "UPDATE right_grant SET can_create = 0");
       return withEntry(s, {"240", "500", 1});
     }},
    {"no right to edit in the group that it leaves", kNoSaveRight, "Nėra teisės įrašyti!",
     [](Session& s) {
       const RowSetPtr record = stored(s);
       run(s.db(), "DELETE FROM right_grant WHERE component = 'CBROperRights2'");
       run(s.db(), "INSERT INTO right_grant VALUES (1, 'CBROperRights2', 1, 1, 0, 1, 1)");
       (*record)["BROperGroupID"] = 3.0;
       return record;
     }},
    {"a common group", kReferred, "Operacijų grupė",
     [](Session& s) {
       return newOperation(s, {20040115, {}, 1});
     }},
    {"a group that does not exist", kReferred, "Operacijų grupė",
     [](Session& s) {
       return newOperation(s, {20040115, {}, 999});
     }},
    {"a pointer at nothing", kReferred, "Nurodyta operacija",
     [](Session& s) {
       return withEntry(s, {"240", "500", 1, {{1, "O0201500999"}}});
     }},
    {"a pointer at itself", kRuleBroken, "Esama operacija negali būti adresatu!",
     [](Session& s) {
       const RowSetPtr record = stored(s);
       RowSet& refs = *(*(*record)["BR"].Rows())["BRProperties"].Rows();
       refs["FOIDR"] = std::string((*record)["OIDR"].Text());
       return record;
     }},
    {"a template line that is gone", kReferred, "Operacijos šablono eilutė",
     [](Session& s) { return ofTemplate(s, 9999, {}); }},
    {"the required addressee is missing", kRuleBroken,
     "Nenurodyti būtini adresatai!\r\n204 450 5,00",
     [](Session& s) {
       return ofTemplate(s, purchaseLine(s), {{1, kFirmA}});
     }},
    {"a date before all books", kRuleBroken, "Klaidinga operacijos data: 0204.01.15!",
     [](Session& s) {
       return newOperation(s, {2040115, {{"240", "500", 1}}});
     }},
    {"an entry's date before all books", kRuleBroken,
     "Klaidinga įrašo data: 0204.01.15!\r\n240 500 1,00",
     [](Session& s) {
       return withEntry(s, {"240", "500", 1, {}, {}, 2040115});
     }},
    {"more addressees than a side can hold", kRuleBroken,
     "Vienoje įrašo pusėje per daug adresatų!\r\n240 500 1,00",
     [](Session& s) {
       TestEntry entry{"240", "500", 1};
       for (int i = 0; i < 60; ++i)
         entry.refs.push_back({1, "O0000100" + std::to_string(1000 + i)});
       return withEntry(s, std::move(entry));
     }},
    {"no sum", kRuleBroken, "Klaidinga sumos reikšmė!\r\n240 500 0,00",
     [](Session& s) {
       return withEntry(s, {"240", "500", 0});
     }},
    {"a third decimal", kRuleBroken, "Klaidinga sumos reikšmė!\r\n240 500 1,005",
     [](Session& s) {
       return withEntry(s, {"240", "500", 1.005});
     }},
    {"a sum beyond all measure", kRuleBroken, "Klaidinga sumos reikšmė!",
     [](Session& s) {
       return withEntry(s, {"240", "500", 1e300});
     }},
    {"an unknown account", kRuleBroken, "Klaidinga  balansinės sąskaitos reikšmė!\r\n240 987 1,00",
     [](Session& s) {
       return withEntry(s, {"240", "987", 1});
     }},
    {"a node of the plan that is not posted to", kRuleBroken, "Klaidinga  balansinės",
     [](Session& s) {
       return withEntry(s, {"27", "500", 1});
     }},
    {"no account at all", kRuleBroken, "Klaidinga  balansinės",
     [](Session& s) {
       return withEntry(s, {"0", "0", 1});
     }},
    {"a currency without a code", kRuleBroken, "Nenurodytas valiutos tipas!",
     [](Session& s) {
       return withEntry(s, {"240", "500", 2.8, {}, {{1, "", 2.8, 1}}});
     }},
    {"a currency without a rate", kRuleBroken, "Nenurodytas valiutos kursas!",
     [](Session& s) {
       return withEntry(s, {"240", "500", 2.8, {}, {{1, "USD", 0, 1}}});
     }},
    {"litas that do not fit the rate", kRuleBroken, "Suma Lt neatitinka valiutos kurso!",
     [](Session& s) {
       return withEntry(s, {"240", "500", 2.81, {}, {{-1, "USD", 2.8, 1}}});
     }},
    {"a fifth decimal of a currency sum", kRuleBroken, "Klaidinga sumos reikšmė!",
     [](Session& s) {
       return withEntry(s, {"240", "500", 1, {}, {{1, "USD", 1, 1.00001}}});
     }},
    {"two currencies on one side", kRuleBroken, "Vienoje įrašo pusėje",
     [](Session& s) {
       return withEntry(s, {"240", "500", 1, {}, {{1, "USD", 1, 1}, {1, "EUR", 1, 1}}});
     }},
    {"the second of two good entries is bad", kRuleBroken, "Klaidinga sumos",
     [](Session& s) {
       return newOperation(s, {20040115, {{"240", "500", 1}, {"240", "500", -1}}});
     }},
    {"a typed number that is taken", kDuplicate, "Toks įrašas jau egzistuoja!",
     [](Session& s) {
       const RowSetPtr first = withEntry(s, {"240", "500", 1});
       (*first)["AutoNumber"] = 7.0;
       EXPECT_EQ(save(s, *first).Code, kDone);
       const RowSetPtr second = withEntry(s, {"240", "500", 1});
       (*second)["AutoNumber"] = 7.0;
       return second;
     }},
    {"a bank line that was imported before", kDuplicate, "Toks įrašas jau egzistuoja!",
     [](Session& s) {
       const auto imported = [&s] {
         const RowSetPtr record = newOperation(s, {20040115, {{"2711", "240", 1}}, 6, "O0201502"});
         (*record)["Parameters"] =
             "##LTL##O00005001#O00001001####2004.01.14####IMPORTEDRECORDID:A1";
         return record;
       };
       EXPECT_EQ(save(s, *imported()).Code, kDone);
       return imported();
     }},
    {"too long a comment", kRuleBroken, "Per ilgas tekstas: Comment",
     [](Session& s) {
       const RowSetPtr record = withEntry(s, {"240", "500", 1});
       (*record)["Comment"] = std::string(1001, 'x');
       return record;
     }},
};

TEST(OperRefusals, ARefusedSaveChangesNothing) {
  for (const Refused& c : kSaves) {
    SCOPED_TRACE(c.name);
    const auto session = memoryBooks();
    const RowSetPtr record = c.record(*session);
    const std::string before = allTables(session->db()), typed = dump(*record);
    const SaveOutcome outcome = save(*session, *record);
    EXPECT_EQ(outcome.Code, c.code);
    EXPECT_EQ(outcome.Text.substr(0, std::string(c.text).size()), c.text);
    EXPECT_TRUE(allTables(session->db()) == before) << "tables differ";
    EXPECT_EQ(dump(*record), typed);
  }
}

struct RefusedDelete {
  const char* name;
  int code;
  const char* text;
  std::function<int(Session&)> operation;
};

int savedInvoice(Session& session) {
  return savedId(session, {20040115, {{"240", "500", 20, {{1, kFirmA}}}}});
}

const RefusedDelete kDeletes[] = {
    {"there is none", kObjectGone, "Objektas panaikintas!", [](Session&) { return 999; }},
    {"no right", kEditedGone, "Nėra teisės panaikinti!",
     [](Session& s) {
       run(s.db(), "UPDATE right_grant SET can_delete = 0");
       return savedInvoice(s);
     }},
    {"a payment points at it", kReferred, "Operacija nurodyta kitose operacijose: 2004.02.01",
     [](Session& s) {
       const int id = savedInvoice(s);
       savedId(s, {20040201, {{"2711", "240", 5, {{-1, operRef(id)}}}}});
       return id;
     }},
    {"its account is locked", kLocked, "Sąskaita 500 užblokuota iki 2004.01.15!",
     [](Session& s) {
       const int id = savedInvoice(s);
       run(s.db(),
           "INSERT INTO account_lock (account_id, day_high, user_id)"
           " SELECT id, 20040115, 1 FROM account WHERE code = '500' AND plan = 0");
       return id;
     }},
};

TEST(OperRefusals, ARefusedDeleteChangesNothing) {
  for (const RefusedDelete& c : kDeletes) {
    SCOPED_TRACE(c.name);
    const auto session = memoryBooks();
    const int id = c.operation(*session);
    const std::string before = allTables(session->db());
    const HostResult result = session->erase("O0201500", operRef(id));
    EXPECT_EQ(result.Code, c.code);
    EXPECT_EQ(result.Text, c.text);
    EXPECT_TRUE(allTables(session->db()) == before) << "tables differ";
  }
}

TEST(OperRefusals, AnOperationIsNotShownWithoutTheRightToView) {
  const auto session = memoryBooks();
  const int id = savedInvoice(*session);
  run(session->db(), "UPDATE right_grant SET can_view = 0");
  EXPECT_EQ(session->load("O0201500", operRef(id)).Code, kNoSaveRight);
}

}  // namespace
}  // namespace tolvex::store
