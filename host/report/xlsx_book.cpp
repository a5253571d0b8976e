#include "host/report/xlsx_book.h"

#include <algorithm>
#include <utility>

#include "framework/results.h"
#include "framework/text.h"
#include "host/report/parts.h"
#include "host/report/xlsx_check.h"

namespace tolvex::report {
namespace {

constexpr const char* kSheet = "Ataskaita";
constexpr std::size_t kLongestText = 32767;
constexpr int kFirstYear = 1900;
constexpr lxw_color_t kHeadColour = 0xEEEEEE, kFineColour = 0x969696;
constexpr std::uint8_t kTextFormat = 49;  // "@"

std::string numberFormat(int decimals) {
  return decimals > 0 ? "#,##0." + std::string(static_cast<std::size_t>(decimals), '0') : "#,##0";
}

std::uint8_t alignOfCell(ui::Align align) {
  switch (align) {
    case ui::Align::Right:
      return LXW_ALIGN_RIGHT;
    case ui::Align::Center:
      return LXW_ALIGN_CENTER;
    case ui::Align::Left:
      break;
  }
  return LXW_ALIGN_LEFT;
}

std::uint8_t placeOfCell(CellLook::Place place) {
  switch (place) {
    case CellLook::Place::Middle:
      return LXW_ALIGN_VERTICAL_CENTER;
    case CellLook::Place::Top:
      return LXW_ALIGN_VERTICAL_TOP;
    case CellLook::Place::Bottom:
      break;
  }
  return LXW_ALIGN_VERTICAL_BOTTOM;
}

void setLines(lxw_format* format, const CellLook& look) {
  if (look.fine) format_set_border_color(format, kFineColour);
  if (look.strongTop) {
    format_set_top(format, LXW_BORDER_THIN);
    format_set_top_color(format, LXW_COLOR_BLACK);
  } else if (look.edges & Top) {
    format_set_top(format, LXW_BORDER_THIN);
  }
  if (look.edges & Bottom) format_set_bottom(format, LXW_BORDER_THIN);
  if (look.edges & Left) format_set_left(format, LXW_BORDER_THIN);
  if (look.edges & Right) format_set_right(format, LXW_BORDER_THIN);
}

lxw_row_t rowAt(int row) { return static_cast<lxw_row_t>(row); }
lxw_col_t columnAt(int column) { return static_cast<lxw_col_t>(column); }

}  // namespace

CellLook::Show shownAs(CellKind kind, const std::string& text) {
  if (kind == CellKind::Number && numberIn(text)) return CellLook::Show::Number;
  if (kind == CellKind::Date)
    if (const auto day = dayIn(text); day && day->Year() >= kFirstYear) return CellLook::Show::Date;
  return CellLook::Show::Text;
}

XlsxBook::XlsxBook(const std::string& path, const ReportDocument& document, const FileNotes& notes,
                   bool byRows)
    : path_(path), font_(document.page.font) {
  lxw_workbook_options options{};
  options.constant_memory = byRows ? LXW_TRUE : LXW_FALSE;
  book_ = workbook_new_opt(path_.c_str(), &options);
  sheet_ = workbook_add_worksheet(book_, kSheet);
  std::string title = CutToChars(document.title, 255);
  lxw_doc_properties properties{};
  properties.title = title.data();
  // The format keeps the moment as it is given, so civil time stays civil time.
  if (notes.made) properties.created = static_cast<time_t>(notes.made->Seconds());
  noted(workbook_set_properties(book_, &properties));
}

XlsxBook::~XlsxBook() {
  if (book_) lxw_workbook_free(book_);
}

void XlsxBook::noted(lxw_error error) {
  if (error_ == LXW_NO_ERROR) error_ = error;
}

void XlsxBook::height(int row, float points) {
  constexpr float kHighest = 409;  // of the format
  noted(worksheet_set_row(sheet_, rowAt(row), static_cast<double>(std::min(points, kHighest)),
                          nullptr));
}

lxw_format* XlsxBook::format(const CellLook& look) {
  const auto [known, isNew] = formats_.try_emplace(look, nullptr);
  if (!isNew) return known->second;
  lxw_format* made = known->second = workbook_add_format(book_);
  format_set_font_name(made, font_.c_str());
  format_set_font_size(made, static_cast<double>(look.size));
  if (look.bold) format_set_bold(made);
  if (look.italic) format_set_italic(made);
  format_set_align(made, alignOfCell(look.align));
  format_set_align(made, placeOfCell(look.place));
  setLines(made, look);
  if (look.head) format_set_bg_color(made, kHeadColour);
  if (look.wrap) format_set_text_wrap(made);
  if (look.shrink) format_set_shrink(made);
  switch (look.show) {
    case CellLook::Show::Text:
      format_set_num_format_index(made, kTextFormat);
      break;
    case CellLook::Show::Number:
      format_set_num_format(made, numberFormat(look.decimals).c_str());
      break;
    case CellLook::Show::Date:
      format_set_num_format(made, "yyyy.mm.dd");
      break;
  }
  return made;
}

void XlsxBook::write(const CellPlace& place, const std::string& text, const CellLook& look) {
  const lxw_row_t row = rowAt(place.row);
  const lxw_col_t column = columnAt(place.column);
  if (look.show == CellLook::Show::Number) {
    noted(worksheet_write_number(sheet_, row, column, *numberIn(text), format(look)));
  } else if (look.show == CellLook::Show::Date) {
    const DateTime day = *dayIn(text);
    lxw_datetime value{};
    value.year = day.Year();
    value.month = static_cast<int>(day.Month());
    value.day = static_cast<int>(day.Day());
    noted(worksheet_write_datetime(sheet_, row, column, &value, format(look)));
  } else if (text.empty()) {
    noted(worksheet_write_blank(sheet_, row, column, format(look)));
  } else {
    const std::string plain = CutToChars(replaceAll(text, "\r", ""), kLongestText);
    noted(worksheet_write_string(sheet_, row, column, plain.c_str(), format(look)));
  }
}

void XlsxBook::put(const CellPlace& place, const std::string& text, CellLook look) {
  // A number that does not fit its cell would show as "####".
  if (look.show == CellLook::Show::Number) look.shrink = true;
  if (place.rows > 1 || place.columns > 1) {
    noted(worksheet_merge_range(sheet_, rowAt(place.row), columnAt(place.column),
                                rowAt(place.row + place.rows - 1),
                                columnAt(place.column + place.columns - 1), "", format(look)));
  }
  write(place, text, look);
}

bool XlsxBook::close(int rows) {
  expect(error_ == LXW_NO_ERROR, "every cell of the report fits the format");
  // The library does not look whether its own temporary files came out whole.
  return workbook_close(std::exchange(book_, nullptr)) == LXW_NO_ERROR && isWholeXlsx(path_, rows);
}

}  // namespace tolvex::report
