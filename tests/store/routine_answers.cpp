#include "tests/store/routine_answers.h"

#include "framework/text.h"

namespace tolvex::store {

std::string answerText(Session& session, const std::string& kind, const std::string& method,
                       const std::string& parameters, const std::string& columns) {
  const HostResult result = session.call(kind, method, parameters);
  if (result.Code != kDone) return std::to_string(result.Code) + " " + result.Text;
  if (!result.Data.IsRows()) return "no rows";
  RowSet& rows = *result.Data.AsRows();
  std::string text;
  ForEachRow(rows, [&](RowSet& row) {
    std::vector<std::string> cells;
    for (const std::string& column : split(columns, ','))
      cells.push_back(row[column].Value().Show());
    text += (text.empty() ? "" : "\n") + join(cells, "|");
  });
  return text;
}

}  // namespace tolvex::store
