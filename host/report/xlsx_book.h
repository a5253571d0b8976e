// A workbook of one sheet being written: cells, their formats made once each, and whether the file
// came out whole.
#pragma once

#include <xlsxwriter.h>

#include <compare>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "host/report/file_notes.h"
#include "platform/report.h"

namespace tolvex::report {

inline constexpr int kMostRows = 1048576;

// How a cell looks.
struct CellLook {
  enum class Show : std::uint8_t { Text, Number, Date };
  enum class Place : std::uint8_t { Bottom, Middle, Top };
  float size = 10;  // points
  bool bold = false, italic = false;
  ui::Align align = ui::Align::Left;
  std::uint8_t edges = 0;  // box flags Top, Bottom, Left, Right
  bool strongTop = false;  // of a total
  bool fine = false;       // its lines are grey
  bool head = false;       // shaded
  bool wrap = false;
  bool shrink = false;  // a text too long for its cell is made smaller
  Place place = Place::Bottom;
  Show show = Show::Text;
  int decimals = 0;  // of a number
  auto operator<=>(const CellLook&) const = default;
};

// A number or a day where the column says so and the text is one; else a text.
CellLook::Show shownAs(CellKind kind, const std::string& text);

struct CellPlace {
  int row = 0, column = 0, rows = 1, columns = 1;
};

class XlsxBook {
 public:
  // `byRows`: cells come row by row, and no cell reaches into the next row; memory then does not
  // grow with the rows.
  XlsxBook(const std::string& path, const ReportDocument& document, const FileNotes& notes,
           bool byRows);
  ~XlsxBook();  // without close() nothing is written
  XlsxBook(const XlsxBook&) = delete;
  XlsxBook& operator=(const XlsxBook&) = delete;

  lxw_worksheet* sheet() { return sheet_; }
  // The text, which must be a number or a day when the look says so.
  void put(const CellPlace& place, const std::string& text, CellLook look);
  void height(int row, float points);
  void noted(lxw_error error);  // the first failure is kept

  // Writes the file, which must then hold so many rows; false when it did not come out whole.
  bool close(int rows);

 private:
  lxw_format* format(const CellLook& look);
  void write(const CellPlace& place, const std::string& text, const CellLook& look);

  std::string path_, font_;
  lxw_workbook* book_;
  lxw_worksheet* sheet_;
  lxw_error error_ = LXW_NO_ERROR;
  std::map<CellLook, lxw_format*> formats_;
};

}  // namespace tolvex::report
