// Groups of operations. Their list shows, below a group, its subgroups and its operations.
#include "framework/date_time.h"
#include "framework/references.h"
#include "framework/text.h"
#include "host/store/full_sum.h"
#include "host/store/mapped_records.h"
#include "host/store/record_table.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

constexpr const char* kOperation = "O0201500";

// Names from the root, joined by " / ".
constexpr const char* kPath =
    "(WITH RECURSIVE up (id, parent_id, path) AS ("
    " SELECT g.id, g.parent_id, CAST(g.name AS VARCHAR(2000)) FROM oper_group g WHERE g.id = t.id"
    " UNION ALL SELECT g.id, g.parent_id, CAST(g.name || ' / ' || up.path AS VARCHAR(2000))"
    " FROM oper_group g JOIN up ON g.id = up.parent_id)"
    " SELECT path FROM up WHERE parent_id IS NULL)";

constexpr FieldMap kFields[] = {
    number("ParentID", "parent_id").zeroIsNull(),
    text("Name", "name", 200).needed(),
    number("GroupFlag", "group_flag").zero(),
    text("FormOID", "form_oid", 8).preset(kOperation).zero(),
    text("Parameters", "parameters", 2000).zero(),
    text("AccountCode", "account_code", 20).zero(),
    number("BRTemplateID", "template_group_id").preset("0").nullIsZero(),
    number("DefaultTemplateID", "default_template_id").preset("0").nullIsZero(),
    text("Serija", "serija", 20).zero(),
    small("SerijaIndication", "serija_indication").zero(),
    text("ANMask", "an_mask", 100).zero(),
    text("ANPrefix", "an_prefix", 50).zero(),
    text("ANTemplate", "an_template", 20).zero(),
    number("ANMinimal", "an_minimal").preset("0").zero(),
    number("ANGroupBy", "an_group_by").preset("1").zero(),
    number("ANCycle", "an_cycle").preset("3").zero(),
    day("ANDateFrom", "an_day_from"),
    computed("PreviewPath", FieldType::Text, kPath),
};
constexpr FieldMap kList[] = {text("FormOID", "form_oid", 8)};
constexpr Referrer kReferrers[] = {
    {"Grupėje yra operacijų: ", "SELECT number FROM oper WHERE group_id = $1 LIMIT 1"}};

// The root is told apart, since it cannot be removed; a group of groups is a common one.
constexpr const char* kGroupType =
    "CASE WHEN t.parent_id IS NULL THEN 'MainGroup' WHEN t.group_flag <> 0 THEN 'Group'"
    " ELSE 'O0201400' END";

// What the group names must be there.
void requireNamed(Database& db, RowSet& group) {
  for (const char* field : {"BRTemplateID", "DefaultTemplateID"}) {
    const int id = static_cast<int>(group[field].Number());
    if (id != 0 && !anyRow(db, "SELECT 1 FROM template WHERE id = $1", id)) {
      throw Refusal(kReferred, "Nurodytas šablonas neegzistuoja!");
    }
  }
  const std::string code(group["AccountCode"].Text());
  if (!code.empty() && !anyRow(db, "SELECT 1 FROM account_mark WHERE code = $1", code)) {
    throw Refusal(kReferred, "Nurodytas sąskaitos požymis neegzistuoja!");
  }
}

// One group stands above all others; groups stand in common ones only.
void requirePlace(Database& db, const Saving& saving) {
  const int above = static_cast<int>(saving.row["ParentID"].Number());
  if (above == 0) {
    if (anyRow(db, "SELECT 1 FROM oper_group WHERE parent_id IS NULL AND id <> $1", saving.id)) {
      refuseRule("Nenurodyta aukštesnio lygio grupė!");
    }
  } else if (anyRow(db, "SELECT 1 FROM oper_group WHERE id = $1 AND group_flag = 0", above)) {
    refuseRule("Operacijų grupėje kitų grupių būti negali!");
  }
}

// A group that holds something stays what it is: its documents were made for their kind.
void requireSameUse(Database& db, const Saving& saving) {
  const bool common = saving.row["GroupFlag"].Number() != 0;
  if (!common && anyRow(db, "SELECT 1 FROM oper_group WHERE parent_id = $1", saving.id)) {
    refuseRule("Grupė, kurioje yra kitų grupių, turi būti bendra!");
  }
  if (!anyRow(db, "SELECT 1 FROM oper WHERE group_id = $1 LIMIT 1", saving.id)) return;
  if (common) refuseRule("Grupė, kurioje yra operacijų, negali būti bendra!");
  const std::string kind = textFrom(db, "SELECT form_oid FROM oper_group WHERE id = $1", saving.id);
  if (kind != saving.row["FormOID"].Text()) {
    refuseRule("Grupėje yra operacijų, jos dokumentų tipo pakeisti negalima!");
  }
}

void checkGroup(const Saving& saving) {
  Database& db = saving.session.db();
  requireNamed(db, saving.row);
  requirePlace(db, saving);
  if (!saving.isNew) requireSameUse(db, saving);
}

// A new group can be granted by itself from now on.
void addComponents(const Saving& saving) {
  if (!saving.isNew) return;
  for (const char* family : {"CBROperRights", "CBROperGroupRights"}) {
    run(saving.session.db(),
        "INSERT INTO right_component (component, parent, kind, caption) VALUES ($1, $2, 2, $3)"
        " ON CONFLICT (component) DO UPDATE SET caption = excluded.caption",
        family + std::to_string(saving.id), family,
        left(" Finansinių operacijų grupė" + std::string(saving.row["Name"].Text()), 200));
  }
}

constexpr RecordMap kGroups = {.table = "oper_group",
                               .fields = kFields,
                               .referrers = kReferrers,
                               .listFields = kList,
                               .component = "CBROperGroupRights",
                               .componentByRecord = true,
                               .tree = true,
                               .listType = kGroupType,
                               .check = checkGroup,
                               .stored = addComponents};

// The columns of operations and of groups, so that both stand in one list.
void appendRows(RowSet& to, RowSet& from) {
  ForEachRow(from, [&](RowSet& row) {
    to.LoadRow();
    for (std::size_t i = 0; i < row.Fields().size(); ++i) {
      const Field field = row.Fields()[i];
      if (to.Fields().contains(field.Name())) to[field.Name()] = field.Value();
    }
  });
}

class GroupRecords final : public MappedRecords {
 public:
  using MappedRecords::MappedRecords;

  void erase(Session& session, std::string_view kind, int id) const override {
    if (anyRow(session.db(), "SELECT 1 FROM oper_group WHERE id = $1 AND parent_id IS NULL", id)) {
      throw Refusal(kReferred, "Pagrindinės grupės panaikinti negalima!");
    }
    MappedRecords::erase(session, kind, id);
    dropUnaskedSums(session.db());
  }

  // 'from','to','parent','filter', or 'parent','filter': below the parent ("": the roots). A filter
  // without a parent looks through all groups. Operations of a parent may be asked for page by
  // page, then without a filter; its groups stand on the last one.
  RowSetPtr list(Session& session, std::string_view kind,
                 std::span<const std::string> arguments) const override {
    Asked asked = readArguments(arguments);
    const bool everywhere = asked.parent == 0 && !asked.filter.empty();
    const std::string condition = asked.parent != 0 ? " AND t.parent_id = $1"
                                  : everywhere      ? ""
                                                    : " AND t.parent_id IS NULL";
    const RowSetPtr groups =
        listWhere(session, kind, condition, asked.parent != 0 ? &asked.parent : nullptr);
    const RecordHandler* const operations = recordHandler(kOperation);
    if (asked.parent == 0 || !operations) return finishList(groups, asked.filter);
    const std::string below[] = {refOf(kind, asked.parent), "", asked.from, asked.to, asked.page};
    const RowSetPtr rows = operations->list(session, kOperation, below);
    const auto page = readListPage(asked.page);
    if (page && rows->RecordCount() == static_cast<std::size_t>(page->rows)) return rows;
    appendRows(*rows, *groups);
    return finishList(rows, asked.filter);
  }

 private:
  struct Asked {
    int parent = 0;
    std::string filter, from, to, page;
  };
  static Asked readArguments(std::span<const std::string> arguments) {
    Asked asked;
    for (const std::string& argument : arguments) {
      const std::string text = trim(argument);
      if (text.empty()) continue;
      if (DateTime::Parse(text)) {
        (asked.from.empty() ? asked.from : asked.to) = text;
      } else if (text.starts_with("O0201400") && isRef(text)) {
        asked.parent = idOf(text);
      } else if (readListPage(text)) {
        asked.page = text;
      } else if (text != "O0201400") {
        asked.filter = text;
      }
    }
    return asked;
  }
};

}  // namespace

std::span<const HandlerRow> groupRecords() {
  static const GroupRecords groups(kGroups);
  static const HandlerRow rows[] = {{"O0201400", &groups}};
  return rows;
}

}  // namespace tolvex::store
