// What single kinds do beyond keeping their fields.
#include "framework/references.h"
#include "framework/text.h"
#include "host/store/sql.h"
#include "tests/support/books_fixture.h"

namespace tolvex::store {
namespace {

class RecordRules : public BooksTest {
 protected:
  RowSetPtr created(const char* kind, const char* otype = "") {
    RowSetPtr record = rowsIn(session().create(kind, otype));
    record->MoveFirst();
    return record;
  }
  RowSetPtr loaded(const std::string& reference) {
    RowSetPtr record = rowsIn(session().load(kindOf(reference), reference));
    record->MoveFirst();
    return record;
  }
  SaveOutcome save(const char* kind, RowSet& record, RowSet* second = nullptr) {
    return session().save(kind, "", record, second, nullptr);
  }
  std::string newFirm(const char* name) {
    RowSetPtr firm = created("O0000100");
    (*firm)["Name"] = name;
    return save("O0000100", *firm).reference;
  }
};

TEST_P(RecordRules, ExactlyOneFirmIsTheOwn) {
  const std::string other = newFirm("UAB Kita");
  RowSetPtr own = loaded("O00001001");
  (*own)["OwnFirm"] = Variant(0);
  EXPECT_EQ(save("O0000100", *own).Code, kRuleBroken);
  EXPECT_EQ(session().erase("O0000100", "O00001001").Code, kReferred);

  RowSetPtr taking = loaded(other);
  (*taking)["OwnFirm"] = Variant(1);
  EXPECT_EQ(save("O0000100", *taking).Code, kDone);
  RowSetPtr mine = rowsIn(session().call("O0000100", "GetMyFirm", "None"));
  EXPECT_EQ((*mine)["OIDR"].Text(), other);
  EXPECT_EQ(session().erase("O0000100", "O00001001").Code, kDone);
}

TEST_P(RecordRules, TheProtocolTellsWhoChangedWhatAndASecondSaverHearsIt) {
  const std::string reference = newFirm("UAB Kita");
  RowSetPtr mine = loaded(reference), stale = loaded(reference);
  (*mine)["Name"] = "UAB Kitokia";
  (*mine)["City"] = "Alytus";
  (*mine)["Code"] = Null{};  // as it was
  ASSERT_EQ(save("O0000100", *mine).Code, kDone);
  (*stale)["Name"] = "UAB Pasenusi";
  const SaveOutcome second = save("O0000100", *stale);
  EXPECT_EQ(second.Code, kChangedByOther);
  EXPECT_EQ(second.Text, "Įrašą pakeitė kitas vartotojas: Administratorius, 2004.03.31 12:00:00");
  EXPECT_EQ((*stale)["Name"].Text(), "UAB Pasenusi") << "what was typed stays";
  ASSERT_EQ(session().erase("O0000100", reference).Code, kDone);

  std::string told;
  auto rows = db().prepare("SELECT act, name, detail FROM record_log ORDER BY id");
  while (rows->step()) {
    told += std::string(rows->text(0)) + " " + std::string(rows->text(1)) + "|" +
            std::string(rows->text(2)) + "\n";
  }
  EXPECT_EQ(told,
            "C UAB Kita|\n"
            "U UAB Kitokia|Name: UAB Kita -> UAB Kitokia\nCity:  -> Alytus\n"
            "D UAB Kitokia|\n")
      << "the refused save left no trace";
}

TEST_P(RecordRules, TakingTheMarkOfTheOwnFirmIsAChangeOfBoth) {
  RowSetPtr before = loaded("O00001001");
  RowSetPtr taking = loaded(newFirm("UAB Kita"));
  (*taking)["OwnFirm"] = Variant(1);
  ASSERT_EQ(save("O0000100", *taking).Code, kDone);
  (*before)["Phone"] = "123";  // of a card opened before; it still bears the mark
  EXPECT_EQ(save("O0000100", *before).Code, kChangedByOther);
}

TEST_P(RecordRules, AnAccountBelongsToSomebodyWhoExists) {
  run(db(), "INSERT INTO bank (id, name) VALUES (50, 'Bankas')");
  for (const char* owner : {"O00001009", "O000014021x", "O00003001", "O0201500", "UAB"}) {
    SCOPED_TRACE(owner);
    RowSetPtr record = created("O0000500");
    (*record)["AccountNumber"] = "LT1";
    (*record)["BankID"] = Variant(50);
    (*record)["OwnerOIDR"] = owner;
    EXPECT_EQ(save("O0000500", *record).Code, kReferred);
  }
}

struct TariffCase {
  const char *name, *before, *after;
  int code;
};
constexpr TariffCase kTariffs[] = {
    {"another order and a new one", "18;5;0", "21;0;5.5;18", kDone},
    {"the ends", "18;5;0", "0;100", kDone},
    {"none at all", "18;5;0", "", kDone},
    {"somebody was faster", "18;9;0", "21", kChangedByOther},
    {"below", "18;5;0", "18;-1", kRuleBroken},
    {"above", "18;5;0", "100.01", kRuleBroken},
    {"a third decimal", "18;5;0", "5.125", kRuleBroken},
    {"twice", "18;5;0", "5;18;5.00", kRuleBroken},
    {"no number", "18;5;0", "18;penki", kWrongParameters},
    {"an empty one", "18;5;0", "18;;5", kWrongParameters},
};

TEST_P(RecordRules, TariffsAreSavedAllOrNone) {
  const auto stored = [this] {
    std::string values;
    ForEachRow(*rowsIn(session().call("O0001629", "GetVATtariffs", "None")), [&](RowSet& row) {
      values += (values.empty() ? "" : ";") + plainNumber(row["Value"].Number());
    });
    return values;
  };
  for (const TariffCase& c : kTariffs) {
    SCOPED_TRACE(c.name);
    run(db(), "DELETE FROM vat_tariff");
    run(db(), "INSERT INTO vat_tariff (value, sort_order) VALUES (1800, 1), (500, 2), (0, 3)");
    const std::string both = "'" + std::string(c.before) + "','" + c.after + "'";
    EXPECT_EQ(session().call("O0001629", "SaveVATtariffs", both).Code, c.code);
    EXPECT_EQ(stored(), c.code == kDone ? c.after : "18;5;0");
  }
  RowSetPtr tariff = created("O0001629");
  (*tariff)["Value"] = 100.5;
  EXPECT_EQ(save("O0001629", *tariff).Code, kRuleBroken) << "the same rule at the other door";
}

TEST_P(RecordRules, FirmsOfACodeAreFoundButForTheOwnFamily) {
  const auto add = [this](const char* name, const char* code, int parent) {
    RowSetPtr firm = created("O0000100");
    (*firm)["Name"] = name;
    (*firm)["Code"] = code;
    if (parent) (*firm)["ParentID"] = Variant(parent);
    return idOf(save("O0000100", *firm).reference);
  };
  const int firm = add("UAB Viena", "110", 0);
  const int branch = add("Filialas", "110", firm);
  const int other = add("O'Neil", "110", 0);
  const auto found = [this](int id, int parent) {
    std::string names;
    const std::string arguments = "'110'," + std::to_string(id) + "," + std::to_string(parent);
    ForEachRow(*rowsIn(session().call("O0000100", "GetFirmsByCode", arguments)),
               [&](RowSet& row) { names += std::string(row["Name"].Text()) + ";"; });
    return names;
  };
  EXPECT_EQ(found(0, 0), "UAB Viena;Filialas;O'Neil;");
  EXPECT_EQ(found(firm, 0), "O'Neil;");
  EXPECT_EQ(found(branch, firm), "O'Neil;");
  EXPECT_EQ(found(0, firm), "O'Neil;") << "a new branch";
  EXPECT_EQ(found(other, 0), "UAB Viena;Filialas;");
}

TEST_P(RecordRules, ATemplateKeepsLinesAndWhatTheyRequire) {
  RowSetPtr record = created("O0201600");
  (*record)["Name"] = "Pirkimas";
  (*record)["ParentID"] = Variant(2);
  RowSetPtr lines = (*record)["BRTemplateAcc"].Rows();
  lines->AddNew();
  (*lines)["GUID"] = "g1";
  (*lines)["AccountD"] = "*";
  (*lines)["AccountC"] = "0";
  (*lines)["Factor"] = 0.18;
  lines->AddNew();
  (*lines)["GUID"] = "g2";
  (*lines)["AccountD"] = "204";
  (*lines)["AccountC"] = "450";
  (*lines)["Factor"] = 1.0;
  RowSetPtr required = (*record)["BRTemplateAddr"].Rows();
  required->AddNew();
  (*required)["BRTemplateAccGUID"] = "g2";
  (*required)["FOID"] = "O0000100";
  (*required)["Sign"] = Variant(-1);
  const SaveOutcome outcome = save("O0201600", *record);
  ASSERT_EQ(outcome.Code, kDone) << outcome.Text;

  RowSetPtr again = loaded(outcome.reference);
  lines = (*again)["BRTemplateAcc"].Rows();
  ASSERT_EQ(lines->RecordCount(), 2U);
  EXPECT_EQ((*lines)["AccountD"].Text(), "*");
  EXPECT_EQ((*lines)["AccountC"].Text(), "0");
  EXPECT_EQ((*lines)["Factor"].Number(), 0.18);
  required = (*again)["BRTemplateAddr"].Rows();
  ASSERT_EQ(required->RecordCount(), 1U);
  EXPECT_EQ((*required)["BRTemplateAccGUID"].Text(), "g2");

  lines->MoveFirst();
  lines->MoveNext();
  lines->Delete();
  ASSERT_EQ(save("O0201600", *again).Code, kDone);
  again = loaded(outcome.reference);
  EXPECT_EQ((*again)["BRTemplateAcc"].Rows()->RecordCount(), 1U);
  EXPECT_EQ((*again)["BRTemplateAddr"].Rows()->RecordCount(), 0U) << "goes with its line";

  lines = (*again)["BRTemplateAcc"].Rows();
  lines->MoveFirst();
  (*lines)["AccountD"] = "9999";
  EXPECT_EQ(save("O0201600", *again).Code, kReferred);
  (*lines)["AccountD"] = "27";
  EXPECT_EQ(save("O0201600", *again).Code, kReferred) << "a group account";
}

TEST_P(RecordRules, ATemplateOfAGroupIsNotDeleted) {
  EXPECT_EQ(session().erase("O0201600", "O020160011").Code, kReferred);
  EXPECT_EQ(session().erase("O0201600", "O02016002").Code, kReferred) << "templates below";
  EXPECT_EQ(session().erase("O0201600", "O020160012").Code, kDone);
}

TEST_P(RecordRules, InstalmentsTravelAsTheSecondSetAndDoNotExceedTheWhole) {
  constexpr ColumnSpec kItems[] = {{"ID", FieldType::Integer},
                                   {"PaymentTemplateID", FieldType::Integer},
                                   {"Days", FieldType::SmallInt},
                                   {"Percent", FieldType::SmallInt}};
  RowSetPtr items = RowSet::make(kItems);
  const auto add = [&](int days, int percent) {
    items->AddNew();
    (*items)["Days"] = Variant(days);
    (*items)["Percent"] = Variant(percent);
  };
  RowSetPtr record = loaded("O02017013");  // 30 and 70 of 100
  add(60, 10);
  EXPECT_EQ(save("O0201701", *record, items.get()).Code, kRuleBroken);
  EXPECT_EQ(integerFrom(db(), "SELECT COUNT(*) FROM pay_template_item WHERE template_id = 3"), 2);

  record = created("O0201701", "O0201701");
  (*record)["Name"] = "Trys dalys";
  (*record)["ParentID"] = Variant(1);
  items = RowSet::make(kItems);
  add(0, 50);
  add(30, 25);
  const SaveOutcome outcome = save("O0201701", *record, items.get());
  ASSERT_EQ(outcome.Code, kDone) << outcome.Text;
  EXPECT_FALSE(items->HasChanges());
  items->MoveFirst();
  EXPECT_GT((*items)["ID"].Number(), 0);
  // Only the instalments change now: the header's version still guards them.
  const double version = (*record)["RowVersion"].Number();
  add(60, 25);
  ASSERT_EQ(save("O0201701", *record, items.get()).Code, kDone);
  EXPECT_EQ((*record)["RowVersion"].Number(), version + 1);
  EXPECT_EQ(integerFrom(db(), "SELECT SUM(percent) FROM pay_template_item WHERE template_id = $1",
                        idOf(outcome.reference)),
            100);
}

TEST_P(RecordRules, ANewStatementBeginsWithTheRowsOfItsGroup) {
  RowSetPtr record = created("O0200504", "O0200504");
  (*record)["Name"] = "Mano balansas";
  (*record)["ParentID"] = Variant(4);
  const SaveOutcome outcome = save("O0200504", *record);
  ASSERT_EQ(outcome.Code, kDone) << outcome.Text;
  RowSetPtr journal = loaded(outcome.reference), group = loaded("O02005044");
  EXPECT_EQ((*journal)["ConfigList"].Text(), (*group)["ConfigList"].Text());
  RowSetPtr rows = (*journal)["JournalRows"].Rows(), model = (*group)["JournalRows"].Rows();
  ASSERT_EQ(rows->RecordCount(), model->RecordCount());
  model->MoveFirst();
  std::string keys = " ";
  ForEachRow(*rows, [&](RowSet& row) { keys += std::string(row["GUID"].Text()) + " "; });
  ForEachRow(*rows, [&](RowSet& row) {
    EXPECT_EQ(row["RowCaption"].Text(), (*model)["RowCaption"].Text());
    EXPECT_NE(row["GUID"].Text(), (*model)["GUID"].Text());
    RowSetPtr pointers = row["JournalRowPointers"].Rows();
    EXPECT_EQ(pointers->RecordCount(), (*model)["JournalRowPointers"].Rows()->RecordCount());
    ForEachRow(*pointers, [&](RowSet& pointer) {
      const std::string pointed(pointer["PointedRowGUID"].Text());
      EXPECT_NE(keys.find(" " + pointed + " "), std::string::npos) << "points into its own journal";
    });
    model->MoveNext();
  });
}

TEST_P(RecordRules, ANewGroupCanBeGranted) {
  RowSetPtr record = created("O0201400");
  EXPECT_EQ((*record)["FormOID"].Text(), "O0201500");
  EXPECT_EQ((*record)["ANCycle"].Number(), 3);
  (*record)["Name"] = "Nuoma";
  (*record)["ParentID"] = Variant(1);
  const SaveOutcome outcome = save("O0201400", *record);
  ASSERT_EQ(outcome.Code, kDone) << outcome.Text;
  EXPECT_EQ((*record)["PreviewPath"].Text(), "Finansinių operacijų apskaita / Nuoma");
  EXPECT_EQ(textFrom(db(), "SELECT caption FROM right_component WHERE component = $1",
                     "CBROperRights" + std::to_string(idOf(outcome.reference))),
            " Finansinių operacijų grupėNuoma");
}

TEST_P(RecordRules, TheBaseCurrencyAndUsedCodesStay) {
  RowSetPtr dollar = loaded("O00022003");
  (*dollar)["BaseCurrency"] = Variant(1);
  EXPECT_EQ(save("O0002200", *dollar).Code, kRuleBroken);
  RowSetPtr litas = loaded("O00022001");
  (*litas)["Code"] = "EUR";
  EXPECT_EQ(save("O0002200", *litas).Code, kRuleBroken);
  RowSetPtr second = created("O0002200");
  (*second)["Code"] = "USD";
  (*second)["Name"] = "doleris";
  EXPECT_EQ(save("O0002200", *second).Code, kDuplicate);
}

TEST_P(RecordRules, OneBankAccountOfAnOwnerIsTheMain) {
  run(db(), "INSERT INTO bank (id, name) VALUES (50, 'Bankas')");
  std::string first;
  for (const char* number : {"LT1", "LT2"}) {
    RowSetPtr record = created("O0000500");
    (*record)["AccountNumber"] = number;
    (*record)["BankID"] = Variant(50);
    (*record)["OwnerOIDR"] = "O00001001";
    (*record)["MainAccountFlag"] = Variant(1);
    const SaveOutcome outcome = save("O0000500", *record);
    ASSERT_EQ(outcome.Code, kDone) << outcome.Text;
    if (first.empty()) first = outcome.reference;
  }
  EXPECT_EQ((*loaded(first))["MainAccountFlag"].Number(), 0);
  EXPECT_EQ((*loaded(first))["Preview"].Text(), "Bankas, LT1");
  EXPECT_EQ(session().erase("O0000300", "O000030050").Code, kReferred);
}

TEST_P(RecordRules, SettingsAreTheUsersOwnAndElseForAll) {
  const auto value = [&](const char* parameters) {
    RowSetPtr rows = rowsIn(session().call("O0201500", "GetSetting", parameters));
    return std::string((*rows)["Value"].Text());
  };
  EXPECT_EQ(value("'O0201500','Clone536'"), "");
  EXPECT_EQ(value("'O0201500','Clone536','536'"), "536");
  run(db(), "INSERT INTO user_setting VALUES (0, 'O0201500', 'Clone536', '5361')");
  EXPECT_EQ(value("'O0201500','Clone536','536'"), "5361");
  EXPECT_EQ(session().call("", "SaveSetting", "'O0201500','Clone536','it's mine'").Code, kDone);
  EXPECT_EQ(session().call("", "SaveSetting", "'O0201500','Clone536','it's mine #2'").Code, kDone);
  reopen();
  EXPECT_EQ(value("'O0201500','Clone536','536'"), "it's mine #2");
}

TOLVEX_ALL_STORES(RecordRules);

}  // namespace
}  // namespace tolvex::store
