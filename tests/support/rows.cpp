#include "tests/support/rows.h"

#include "framework/text.h"

namespace tolvex::test {

namespace {

std::vector<std::string> lines(std::string_view table) {
  std::vector<std::string> all = split(table, '\n');
  while (!all.empty() && all.back().empty()) all.pop_back();
  return all;
}

FieldType typeOf(std::string_view name) {
  if (name == "double") return FieldType::Double;
  if (name == "int") return FieldType::Integer;
  if (name == "date") return FieldType::Date;
  if (name == "bool") return FieldType::Boolean;
  expect(name.empty(), "a type that rowsOf knows");
  return FieldType::Text;
}

void fillLines(RowSet& rows, const std::vector<std::string>& table, As as) {
  const std::vector<std::string> names = split(table.at(0), '|');
  for (std::size_t i = 1; i < table.size(); ++i) {
    const std::vector<std::string> cells = split(table[i], '|');
    expect(cells.size() == names.size(), "a cell for every column");
    if (as == As::Stored) {
      rows.LoadRow();
    } else {
      rows.AddNew();
    }
    for (std::size_t c = 0; c < cells.size(); ++c) {
      Field field = rows[split(names[c], ':')[0]];
      if (cells[c] == "~") {
        field = Variant();
      } else if (cells[c] == "-") {
        field = Variant(Null{});
      } else {
        field = cells[c];
      }
    }
    rows.Update();
  }
  rows.MoveFirst();
}

}  // namespace

void fill(RowSet& rows, std::string_view table, As as) { fillLines(rows, lines(table), as); }

RowSetPtr rowsOf(std::string_view table, As as) {
  const std::vector<std::string> all = lines(table);
  RowSetPtr rows = RowSet::make();
  for (const std::string& name : split(all.at(0), '|')) {
    const std::vector<std::string> parts = split(name, ':');
    const FieldType type = typeOf(parts.size() > 1 ? parts[1] : "");
    rows->Fields().Append(parts[0], type, type == FieldType::Text ? 100 : 0);
  }
  rows->Open();
  fillLines(*rows, all, as);
  return rows;
}

std::string column(RowSet& rows, std::string_view name) {
  std::vector<std::string> values;
  ForEachRow(rows, [&](RowSet& row) { values.push_back(row[name].Value().Show()); });
  return join(values, " ");
}

}  // namespace tolvex::test
