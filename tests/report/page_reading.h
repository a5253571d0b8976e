// Reading laid out pages back: which texts stand where.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "host/report/fonts.h"
#include "host/report/pages.h"

namespace tolvex::test {

inline std::string textOf(const report::TextMark& mark) { return mark.text.toStdString(); }

inline std::vector<std::string> textsOf(const report::PageMarks& page) {
  std::vector<std::string> texts;
  for (const report::TextMark& mark : page.texts) texts.push_back(textOf(mark));
  return texts;
}

inline bool inHead(const report::PageMarks& page, const report::TextMark& mark) {
  return std::any_of(page.fills.begin(), page.fills.end(), [&](const report::FillMark& fill) {
    return mark.y > fill.y && mark.y < fill.y + fill.h;
  });
}

// The texts below the head, without the footer.
inline std::vector<std::string> bodyOf(const report::PageMarks& page) {
  std::vector<std::string> texts;
  for (const report::TextMark& mark : page.texts)
    if (!inHead(page, mark)) texts.push_back(textOf(mark));
  return texts;
}

inline ReportDocument documentOf(ReportTable table) {
  ReportDocument document;
  document.footer = "";
  document.body.push_back(std::move(table));
  return document;
}

// A table of `columns` columns of 4 cm.
inline ReportTable tableOf(int columns, int rows) {
  ReportTable table;
  for (int c = 0; c < columns; ++c)
    table.columns.push_back({std::to_string(c), "Stulpelis " + std::to_string(c), 4});
  for (int r = 0; r < rows; ++r) {
    ReportRow row;
    for (int c = 0; c < columns; ++c)
      row.cells.push_back("r" + std::to_string(r) + "c" + std::to_string(c));
    table.rows.push_back(std::move(row));
  }
  return table;
}

}  // namespace tolvex::test
