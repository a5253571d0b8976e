#include "operations/operation_log.h"

#include <algorithm>

#include "framework/parameters.h"
#include "framework/text.h"
#include "framework/told.h"

namespace tolvex {
namespace {

constexpr std::size_t kShownChanges = 8;
constexpr std::size_t kShownChars = 80;

std::string actionInWords(std::string_view action) {
  if (action == "C") return "Sukurta";
  if (action == "U") return "Pakeista";
  if (action == "D") return "Panaikinta";
  if (action == "A") return "Atšauktas įrašymas";
  return std::string(action);
}

LogLine lineOf(RowSet& row) {
  LogLine line;
  line.id = std::to_string(static_cast<int>(row["ID"].Number()));
  const Variant date = row["Date"].Value();
  if (date.IsDate()) line.date = date.AsDate().LongText();
  line.user = row["User"].Text();
  line.action = actionInWords(row["Action"].Text());
  return line;
}

std::string shortened(const std::string& text) {
  return length(text) > kShownChars ? CutToChars(text, kShownChars) + "…" : text;
}

std::string changeInWords(const LogChange& change) {
  std::string text = change.what;
  if (!change.before.empty() || !change.after.empty()) text += ": ";
  text += shortened(change.before);
  if (!change.before.empty() && !change.after.empty()) text += " → ";
  return text + shortened(change.after);
}

}  // namespace

std::vector<LogLine> readLog(VXObjectUIO& operation) {
  const RowSetPtr rows = toldRows(operation.Properties("GetBROperLog", quoted(operation.OIDR())));
  std::vector<LogLine> lines;
  if (!rows) return lines;
  ForEachRow(*rows, [&](RowSet& row) { lines.push_back(lineOf(row)); });
  return lines;
}

std::vector<LogChange> readLogChanges(VXObjectUIO& operation, const std::string& id) {
  const RowSetPtr rows =
      toldRows(operation.Properties("GetBROperLogDetail", quoted(operation.OIDR()) + "," + id));
  std::vector<LogChange> changes;
  if (!rows) return changes;
  ForEachRow(*rows, [&](RowSet& row) {
    changes.push_back({std::string(row["Name"].Text()), std::string(row["Old"].Text()),
                       std::string(row["New"].Text())});
  });
  return changes;
}

std::optional<std::string> undoQuestion(VXObjectUIO& operation) {
  const RowSetPtr rows = toldRows(operation.Properties("GetUndo", quoted(operation.OIDR())));
  if (!rows || rows->RecordCount() == 0) return std::nullopt;
  rows->MoveFirst();
  const LogLine line = lineOf(*rows);
  std::vector<std::string> lines = {"Atšaukti paskutinį įrašymą?",
                                    line.date + " " + line.user + ": " + line.action, ""};
  if ((*rows)["Action"].Text() == "C") {
    lines.emplace_back("Operacija bus panaikinta!");
    return join(lines, kLineBreak);
  }
  const std::vector<LogChange> changes = readLogChanges(operation, line.id);
  const std::size_t shown = std::min(changes.size(), kShownChanges);
  for (std::size_t i = 0; i < shown; ++i) lines.push_back(changeInWords(changes[i]));
  if (changes.size() > shown) {
    lines.push_back("… ir dar " + std::to_string(changes.size() - shown));
  }
  return join(lines, kLineBreak);
}

MethodResult UndoLastSave(VXObjectUIO& operation) {
  HostResult result;
  const int version = static_cast<int>(operation.Fields()["RowVersion"].Number());
  operation.BO()->CallBO("UndoSave", quoted(operation.OIDR()) + "," + std::to_string(version),
                         nullptr, result);
  return passOn(result);
}

}  // namespace tolvex
