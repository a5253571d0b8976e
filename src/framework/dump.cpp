#include "framework/recordset.h"

namespace tolvex {

namespace {

std::string cellText(const Field& field) {
  if (field.IsEmpty()) return "~";
  return field.IsNull() ? "-" : field.Value().Show();
}

void append(RowSet& rows, const std::string& indent, std::string& out) {
  std::string names;
  for (std::size_t i = 0; i < rows.Fields().size(); ++i) {
    const Field field = rows.Fields()[i];
    if (field.Type() != FieldType::Nested) names += (names.empty() ? "" : "|") + field.Name();
  }
  out += indent + names + "\n";
  const RowSetPtr all = rows.Clone();
  ForEachRow(*all, [&](RowSet& row) {
    std::string cells, children;
    for (std::size_t i = 0; i < row.Fields().size(); ++i) {
      const Field field = row.Fields()[i];
      if (field.Type() != FieldType::Nested) {
        cells += (cells.empty() ? "" : "|") + cellText(field);
      } else if (field.Rows()->Clone()->RecordCount() > 0) {
        children += indent + "  " + field.Name() + "\n";
        append(*field.Rows(), indent + "    ", children);
      }
    }
    out += indent + cells + "\n" + children;
  });
}

}  // namespace

std::string dump(RowSet& rows) {
  std::string out;
  append(rows, "", out);
  return out;
}

}  // namespace tolvex
