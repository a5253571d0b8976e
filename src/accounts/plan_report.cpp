#include "accounts/plan_report.h"

namespace tolvex {

ReportDocument planReport(RowSet& nodes) {
  ReportTable table;
  table.columns = {{"Account", "Sąskaita", 3},
                   {"Name", "Pavadinimas", 12},
                   {"Type", "Tipas", 2, ui::Align::Center}};
  table.rows.reserve(nodes.RecordCount());
  ForEachRow(nodes, [&](RowSet& node) {
    ReportRow row;
    // A class and a group have entries on neither side.
    row.style.bold = row.heading = node["GroupFlag"].Number() != 0;
    row.cells = {std::string(node["Account"].Text()), std::string(node["Name"].Text()),
                 row.style.bold ? std::string() : std::string(node["Type"].Text())};
    table.rows.push_back(std::move(row));
  });

  ReportDocument document;
  document.layout = "ActRepAccPlan";
  document.title = "Sąskaitų planas";
  document.exportStem = "Saskaita";
  Style heading{14, true, false, ui::Align::Center};
  document.body = {Paragraph{document.title, heading, 0, 4}, std::move(table)};
  return document;
}

}  // namespace tolvex
