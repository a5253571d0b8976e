// Firms, persons, employees, banks and bank accounts.
#include "framework/references.h"
#include "host/store/mapped_records.h"
#include "host/store/record_log.h"
#include "host/store/record_table.h"
#include "host/store/referrers.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

// A mark that one record bears passes to another: the records that had it are changed by this save,
// so whoever has one of them open is told. `bearers` gives their ids and names.
void takeMark(const Saving& saving, const char* column, Statement& bearers) {
  struct Bearer {
    int id;
    std::string name;
  };
  std::vector<Bearer> all;
  while (bearers.step()) all.push_back({bearers.whole(0), std::string(bearers.text(1))});
  for (const Bearer& bearer : all) {
    run(saving.session.db(),
        "UPDATE " + std::string(saving.map.table) + " SET " + column +
            " = 0, row_version = row_version + 1 WHERE id = $1",
        bearer.id);
    writeRecordLog(saving.session, Action::Update,
                   {saving.kind, bearer.id, bearer.name, std::string(column) + ": 1 -> 0"});
  }
}

// --- firms

constexpr const char* kAddress =
    "COALESCE(t.street, '') ||"
    " CASE WHEN COALESCE(t.street, '') <> '' AND COALESCE(t.city, '') <> '' THEN ', ' ELSE '' END"
    " || COALESCE(t.city, '') ||"
    " CASE WHEN COALESCE(t.street, '') || COALESCE(t.city, '') <> '' AND"
    " COALESCE(t.country, '') <> '' THEN ', ' ELSE '' END || COALESCE(t.country, '')";

constexpr FieldMap kFirmFields[] = {
    number("ParentID", "parent_id").zeroIsNull(),
    number("GroupFlag", "group_flag").zero(),
    text("Name", "name", 300).needed(),
    text("Code", "code", 30),
    text("VATCode", "vat_code", 30),
    text("Street", "street", 200),
    text("City", "city", 100),
    text("Country", "country", 100),
    text("Index", "post_index", 20),
    text("Phone", "phone", 60),
    text("Fax", "fax", 60),
    text("Financier", "financier", 200),
    text("Cashier", "cashier", 200),
    text("Director", "director", 200),
    text("DirectorTitle", "director_title", 100),
    small("OwnFirm", "own_firm").zero(),
    computed("Address", FieldType::Text, kAddress),
};
constexpr FieldMap kFirmList[] = {text("Code", "code", 30), text("VATCode", "vat_code", 30),
                                  text("City", "city", 100)};

// Exactly one firm is the company itself: taking the mark takes it from the one that had it.
void keepOneOwnFirm(const Saving& saving) {
  Database& db = saving.session.db();
  const bool own = saving.row["OwnFirm"].Number() != 0;
  if (own) {
    takeMark(saving, "own_firm",
             *bound(db, "SELECT id, name FROM firm WHERE own_firm = 1 AND id <> $1", saving.id));
  } else if (!anyRow(db, "SELECT 1 FROM firm WHERE own_firm = 1 AND id <> $1", saving.id)) {
    refuseRule("Viena įmonė turi būti pažymėta kaip sava!");
  }
}

constexpr RecordMap kFirms = {.table = "firm",
                              .fields = kFirmFields,
                              .referrers = kAddresseeReferrers,
                              .listFields = kFirmList,
                              .component = "CFirms",
                              .tree = true,
                              .check = keepOneOwnFirm};

class FirmRecords final : public MappedRecords {
 public:
  using MappedRecords::MappedRecords;
  void erase(Session& session, std::string_view kind, int id) const override {
    if (anyRow(session.db(), "SELECT 1 FROM firm WHERE id = $1 AND own_firm = 1", id)) {
      throw Refusal(kReferred, "Savos įmonės panaikinti negalima!");
    }
    MappedRecords::erase(session, kind, id);
  }
};

// --- persons and employees

constexpr const char* kFullName =
    "t.name || CASE WHEN COALESCE(t.last_name, '') = '' THEN '' ELSE ' ' || t.last_name END";

constexpr FieldMap kPersonFields[] = {
    number("ParentID", "parent_id").zeroIsNull(),
    number("GroupFlag", "group_flag").zero(),
    text("Name", "name", 100).needed(),
    text("LastName", "last_name", 100),
    text("PersCode", "pers_code", 30),
    text("VATCode", "vat_code", 30),
    text("Street", "street", 200),
    text("City", "city", 100),
    text("Country", "country", 100),
    text("Phone", "phone", 60),
    computed("Address", FieldType::Text, kAddress),
};
constexpr FieldMap kPersonList[] = {text("PersCode", "pers_code", 30)};
constexpr RecordMap kPersons = {.table = "person",
                                .fields = kPersonFields,
                                .referrers = kAddresseeReferrers,
                                .listFields = kPersonList,
                                .component = "CPerson",
                                .tree = true,
                                .preview = kFullName};

constexpr FieldMap kEmployeeFields[] = {
    number("ParentID", "parent_id").zeroIsNull(),
    number("GroupFlag", "group_flag").zero(),
    text("Name", "name", 100).needed(),
    text("LastName", "last_name", 100),
    text("UsrTitle", "title", 100),
    text("UsrPersCode", "pers_code", 30),
};
constexpr FieldMap kEmployeeList[] = {text("UsrTitle", "title", 100),
                                      text("UsrPersCode", "pers_code", 30)};
constexpr RecordMap kEmployees = {.table = "employee",
                                  .fields = kEmployeeFields,
                                  .referrers = kAddresseeReferrers,
                                  .listFields = kEmployeeList,
                                  .component = "CPerson",
                                  .tree = true,
                                  .preview = kFullName};

// --- banks and bank accounts

constexpr FieldMap kBankFields[] = {
    text("Name", "name", 200).needed(), text("Code", "code", 20),  text("SWIFT", "swift", 20),
    text("Street", "street", 200),      text("City", "city", 100), text("Country", "country", 100),
};
constexpr Referrer kBankReferrers[] = {
    {"Bankas nurodytas banko sąskaitoje: ",
     "SELECT account_number FROM bank_account WHERE bank_id = $1 LIMIT 1"},
    kAddresseeReferrers[0],
    kAddresseeReferrers[1],
    kAddresseeReferrers[2],
};
constexpr FieldMap kBankList[] = {text("Code", "code", 20), text("SWIFT", "swift", 20)};
constexpr RecordMap kBanks = {.table = "bank",
                              .fields = kBankFields,
                              .referrers = kBankReferrers,
                              .listFields = kBankList,
                              .component = "CBanks"};

constexpr const char* kBankName = "(SELECT b.name FROM bank b WHERE b.id = t.bank_id)";
constexpr FieldMap kAccountFields[] = {
    text("AccountNumber", "account_number", 40).needed(),
    number("BankID", "bank_id"),
    computed("BankName", FieldType::Text, kBankName),
    text("OwnerOIDR", "owner_ref", 30).needed(),
    small("MainAccountFlag", "main_flag").zero(),
    text("IntermediaryBankName", "im_name", 200),
    text("IntermediaryBankCode", "im_code", 20),
    text("IntermediaryBankStreet", "im_street", 200),
    text("IntermediaryBankCity", "im_city", 100),
    text("IntermediaryBankCountry", "im_country", 100),
    text("IntermediaryBankSWIFT", "im_swift", 20),
    text("IntermediaryAccountNumber", "im_account", 40),
};
// Whom a reference names; the store saw to it that it names somebody.
constexpr const char* kOwnerName =
    "CASE SUBSTR(t.owner_ref, 1, 8)"
    " WHEN 'O0000100' THEN (SELECT o.name FROM firm o"
    " WHERE o.id = CAST(SUBSTR(t.owner_ref, 9) AS INTEGER))"
    " WHEN 'O0001402' THEN (SELECT o.name || ' ' || COALESCE(o.last_name, '') FROM person o"
    " WHERE o.id = CAST(SUBSTR(t.owner_ref, 9) AS INTEGER))"
    " WHEN 'O0001401' THEN (SELECT o.name || ' ' || COALESCE(o.last_name, '') FROM employee o"
    " WHERE o.id = CAST(SUBSTR(t.owner_ref, 9) AS INTEGER)) END";
constexpr FieldMap kAccountList[] = {
    text("AccountNumber", "account_number", 40),
    computed("BankName", FieldType::Text, kBankName),
    computed("BankOIDR", FieldType::Text, "'O0000300' || CAST(t.bank_id AS VARCHAR(12))"),
    text("OwnerOIDR", "owner_ref", 30),
    computed("OwnerName", FieldType::Text, kOwnerName),
    small("MainAccountFlag", "main_flag"),
};

void requireOwner(const Saving& saving) {
  const std::string owner(saving.row["OwnerOIDR"].Text());
  for (const auto& [kind, table] :
       {std::pair("O0000100", "firm"), {"O0001402", "person"}, {"O0001401", "employee"}}) {
    if (kindOf(owner) == kind &&
        anyRow(saving.session.db(), "SELECT 1 FROM " + std::string(table) + " WHERE id = $1",
               idOf(owner)))
      return;
  }
  throw Refusal(kReferred, "Nurodytas sąskaitos savininkas neegzistuoja!");
}

void checkAccount(const Saving& saving) {
  Database& db = saving.session.db();
  requireOwner(saving);
  if (!anyRow(db, "SELECT 1 FROM bank WHERE id = $1",
              static_cast<int>(saving.row["BankID"].Number()))) {
    throw Refusal(kReferred, "Nurodytas bankas neegzistuoja!");
  }
  if (saving.row["MainAccountFlag"].Number() == 0) return;
  takeMark(saving, "main_flag",
           *bound(db,
                  "SELECT id, account_number FROM bank_account"
                  " WHERE main_flag = 1 AND owner_ref = $1 AND id <> $2",
                  saving.row["OwnerOIDR"].Text(), saving.id));
}

constexpr RecordMap kBankAccounts = {
    .table = "bank_account",
    .fields = kAccountFields,
    .referrers = kAddresseeReferrers,
    .listFields = kAccountList,
    .component = "CBanks",
    .preview = "(SELECT b.name FROM bank b WHERE b.id = t.bank_id) || ', ' || t.account_number",
    .name = "t.account_number",
    .check = checkAccount};

}  // namespace

std::span<const HandlerRow> clientRecords() {
  static const FirmRecords firms(kFirms);
  static const MappedRecords persons(kPersons), employees(kEmployees), banks(kBanks),
      accounts(kBankAccounts);
  static const HandlerRow rows[] = {{"O0000100", &firms},
                                    {"O0001402", &persons},
                                    {"O0001401", &employees},
                                    {"O0000300", &banks},
                                    {"O0000500", &accounts}};
  return rows;
}

}  // namespace tolvex::store
