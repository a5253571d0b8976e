// Files of reports read back: what a spreadsheet or a word processor would find in them.
#pragma once

#include <map>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <vector>

namespace tolvex::test {

std::string readFile(const std::string& path);

// A part of a zip package; "" when there is none.
std::string partOf(const std::string& package, const std::string& name);

struct SheetCell {
  std::string place;             // "B6"
  std::string text;              // of a text
  std::optional<double> number;  // of a number or a day
  std::string format;            // "#,##0.00", "yyyy.mm.dd", "@", "General"
  bool bold = false;
  std::string align;
};
struct Sheet {
  std::map<std::string, SheetCell> cells;    // blank ones as well, by place
  std::vector<std::vector<SheetCell>> rows;  // filled cells by row, left to right
  std::map<int, double> heights;             // by row from 1, where one is set
  std::vector<std::string> merged;           // "A1:C2"
  pugi::xml_document xml, workbook;
};
// Fails the test and leaves an empty sheet when the file is no workbook.
void readSheet(const std::string& path, Sheet& sheet);

struct RtfContents {
  bool balanced = false;                       // braces, and as many \cell as \cellx in every row
  std::vector<std::vector<std::string>> rows;  // of tables: the texts of cells
  std::vector<std::string> paragraphs;         // beside tables, the empty ones left out
  std::string footer;
};
RtfContents readRtf(const std::string& path);

}  // namespace tolvex::test
