// Templates of operations and of payments.
#include "host/store/mapped_records.h"
#include "host/store/record_table.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

// --- templates of operations: lines, and the addressees that each side of a line requires

constexpr const char* kAccountByCode =
    "SELECT id FROM account WHERE plan IN (0, -9) AND group_flag = 0 AND code = $1";
constexpr const char* kAny = "*";  // the account is chosen when the template is used

constexpr FieldMap kLineFields[] = {
    key("GUID", "guid"),
    computed("BRTemplateGUID", FieldType::Text, "'O0201600' || CAST(t.template_id AS VARCHAR(12))"),
    text("AccountD", "account_d", 20)
        .read("COALESCE((SELECT a.code FROM account a WHERE a.id = t.account_d), '*')")
        .find(kAccountByCode, kAny),
    text("AccountC", "account_c", 20)
        .read("COALESCE((SELECT a.code FROM account a WHERE a.id = t.account_c), '*')")
        .find(kAccountByCode, kAny),
    real("Factor", "factor").zero(),
};
constexpr FieldMap kAddrFields[] = {
    text("BRTemplateAccGUID", "line_id", 40)
        .read("(SELECT l.guid FROM template_line l WHERE l.id = t.line_id)")
        .find("SELECT id FROM template_line WHERE guid = $1 AND template_id = $2"),
    text("FOID", "foid", 8).needed(),
    small("Sign", "sign").zero(),
    text("FOIDR", "foidr", 30),
};
constexpr ChildMap kTemplateSets[] = {
    {"BRTemplateAcc", "template_line", "t.template_id = $1", "template_id", kLineFields},
    {"BRTemplateAddr", "template_addr",
     "t.line_id IN (SELECT l.id FROM template_line l WHERE l.template_id = $1)", nullptr,
     kAddrFields},
};
constexpr FieldMap kTemplateFields[] = {
    number("ParentID", "parent_id").zeroIsNull(),
    number("GroupFlag", "group_flag").zero(),
    text("Name", "name", 200).needed(),
    text("Comment", "comment", 1000),
};
constexpr Referrer kTemplateReferrers[] = {
    {"Šablonas nurodytas operacijų grupėje: ",
     "SELECT name FROM oper_group WHERE template_group_id = $1 OR default_template_id = $1"
     " LIMIT 1"},
};
constexpr FieldMap kTemplateList[] = {text("Comment", "comment", 1000)};
constexpr RecordMap kTemplates = {.table = "template",
                                  .fields = kTemplateFields,
                                  .children = kTemplateSets,
                                  .referrers = kTemplateReferrers,
                                  .listFields = kTemplateList,
                                  .component = "CTemplatesLock",
                                  .tree = true,
                                  .listType =
                                      "CASE WHEN t.group_flag <> 0 THEN 'Group'"
                                      " ELSE 'O0201600' END"};

// --- payment templates: instalments by days, in the second set of a save

constexpr FieldMap kItemFields[] = {
    small("Days", "days").zero(),
    small("Percent", "percent").zero(),
};
constexpr ChildMap kItems[] = {
    {nullptr, "pay_template_item", "t.template_id = $1", "template_id", kItemFields}};
constexpr FieldMap kPaymentFields[] = {
    number("ParentID", "parent_id").zeroIsNull(),
    number("GroupFlag", "group_flag").zero(),
    text("Name", "name", 200).needed(),
};

void checkItems(const Saving& saving) {
  if (!saving.second) return;
  ForEachRow(*saving.second, [](RowSet& row) {
    if (row.State() == RowState::Deleted) return;
    const double percent = row["Percent"].Number();
    if (percent < 1 || percent > 100) refuseRule("Įmokos dydis turi būti nuo 1 iki 100 procentų!");
    if (row["Days"].Number() < 0) refuseRule("Dienų skaičius negali būti neigiamas!");
  });
}

void checkWhole(const Saving& saving) {
  const auto percents =
      integerFrom(saving.session.db(),
                  "SELECT SUM(percent) FROM pay_template_item WHERE template_id = $1", saving.id);
  if (percents.value_or(0) > 100) refuseRule("Įmokų suma viršija 100 procentų!");
}

constexpr RecordMap kPayments = {
    .table = "pay_template",
    .fields = kPaymentFields,
    .children = kItems,
    .component = "CPaymentPlan",
    .tree = true,
    .kindOfRow = "CASE WHEN t.group_flag <> 0 THEN 'O0001600' ELSE 'O0201701' END",
    .kindOfGroup = "O0001600",
    .check = checkItems,
    .stored = checkWhole};

}  // namespace

std::span<const HandlerRow> templateRecords() {
  static const MappedRecords templates(kTemplates), payments(kPayments);
  static const HandlerRow rows[] = {{"O0201600", &templates},
                                    {"O0201700 O0201701 O0001600", &payments}};
  return rows;
}

}  // namespace tolvex::store
