// Journals and their groups, with the rows of statements.
#include <map>

#include "framework/text.h"
#include "host/store/guid.h"
#include "host/store/mapped_records.h"
#include "host/store/record_table.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

constexpr FieldMap kPointerFields[] = {
    computed("BROperJournalRowGUID", FieldType::Text,
             "(SELECT r.guid FROM journal_row r WHERE r.id = t.row_id)"),
    text("PointedRowGUID", "pointed_guid", 40).needed(),
    small("SubstractIndication", "subtract").zero(),
    computed("Rule", FieldType::Text, "''"),
};
constexpr ChildMap kPointers[] = {
    {"JournalRowPointers", "journal_row_pointer", "t.row_id = $1", "row_id", kPointerFields}};

constexpr FieldMap kRowFields[] = {
    key("GUID", "guid"),
    computed("JournalGUID", FieldType::Text,
             "(SELECT j.guid FROM journal j WHERE j.id = t.journal_id)"),
    number("SortOrder", "sort_order").zero(),
    text("CurrentNumber", "current_number", 20).zero(),
    text("RowCaption", "row_caption", 300).zero(),
    text("RowParameter1", "parameter1", 500).zero(),
    text("RowParameter2", "parameter2", 500).zero(),
    text("RowParameter3", "parameter3", 1).zero(),
    number("FontSize", "font_size").zero(),
    small("FontItalic", "font_italic").zero(),
    small("FontBold", "font_bold").zero(),
    number("Alignment", "alignment").zero(),
};
constexpr ChildMap kSets[] = {
    {"JournalRows", "journal_row", "t.journal_id = $1", "journal_id", kRowFields, kPointers}};

constexpr FieldMap kFields[] = {
    number("ParentID", "parent_id").zeroIsNull(), number("GroupFlag", "group_flag").zero(),
    text("Name", "name", 200).needed(),           text("ConfigList", "config_list", 0).zero(),
    text("ParamList", "param_list", 0).zero(),    key("GUID", "guid"),
};
constexpr FieldMap kList[] = {text("ParamList", "param_list", 0)};

void copyRow(Database& db, int journal, int fromRow, const std::string& guid) {
  run(db,
      "INSERT INTO journal_row (journal_id, guid, sort_order, current_number, row_caption,"
      " parameter1, parameter2, parameter3, font_size, font_italic, font_bold, alignment)"
      " SELECT $1, $2, sort_order, current_number, row_caption, parameter1, parameter2,"
      " parameter3, font_size, font_italic, font_bold, alignment FROM journal_row WHERE id = $3",
      journal, guid, fromRow);
}

// A new journal begins like its group: columns and parameters where none were sent, and the rows of
// a statement with keys of their own, pointers following.
void beginLikeGroup(const Saving& saving) {
  const int group = static_cast<int>(saving.row["ParentID"].Number());
  if (!saving.isNew || group == 0) return;
  Database& db = saving.session.db();
  for (const char* column : {"config_list", "param_list"}) {
    const std::string name(column);
    run(db,
        "UPDATE journal SET " + name + " = (SELECT g." + name +
            " FROM journal g WHERE g.id = $2) WHERE id = $1 AND " + name + " = ''",
        saving.id, group);
  }
  if (anyRow(db, "SELECT 1 FROM journal_row WHERE journal_id = $1", saving.id)) return;
  std::map<std::string, std::string> keys;  // of the group's rows, of the journal's
  auto rows =
      bound(db, "SELECT id, guid FROM journal_row WHERE journal_id = $1 ORDER BY id", group);
  while (rows->step()) {
    const std::string& fresh = keys[std::string(rows->text(1))] = newGuid();
    copyRow(db, saving.id, rows->whole(0), fresh);
  }
  auto pointers = bound(db,
                        "SELECT r.guid, p.pointed_guid, p.subtract FROM journal_row_pointer p"
                        " JOIN journal_row r ON r.id = p.row_id WHERE r.journal_id = $1"
                        " ORDER BY p.id",
                        group);
  while (pointers->step()) {
    const auto pointed = keys.find(std::string(pointers->text(1)));
    if (pointed == keys.end()) continue;  // it named a row that is gone
    run(db,
        "INSERT INTO journal_row_pointer (row_id, pointed_guid, subtract)"
        " SELECT id, $1, $2 FROM journal_row WHERE journal_id = $3 AND guid = $4",
        pointed->second, pointers->integer(2), saving.id, keys[std::string(pointers->text(0))]);
  }
}

constexpr RecordMap kJournals = {
    .table = "journal",
    .fields = kFields,
    .children = kSets,
    .listFields = kList,
    .component = "O0200500",
    .tree = true,
    .kindColumn = "otype",
    .kindOfRow = "t.otype",
    .listType = "CASE WHEN t.group_flag <> 0 THEN 'GR' || t.otype ELSE t.otype END",
    .stored = beginLikeGroup};

}  // namespace

std::span<const HandlerRow> journalRecords() {
  static const MappedRecords journals(kJournals);
  static const HandlerRow rows[] = {
      {"O0200500 O0200501 O0200502 O0200503 O0200504 O0200505 O0200506 O0200507 O0200508 O0200509"
       " O0200510 O0200511",
       &journals}};
  return rows;
}

}  // namespace tolvex::store
