// What the files of a report share: where columns end, how a head is built, what a cell holds, what
// the footer is made of.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "framework/date_time.h"
#include "platform/report.h"

namespace tolvex::report {

inline constexpr float kPaperWidthMm = 210, kPaperHeightMm = 297;

float roomMm(const PageSetup& page);  // across, between the margins

// The columns' edges in millimetres from 0, as they were asked for.
std::vector<float> columnEdges(const ReportTable& table);

struct HeadCell {
  int row = 0, column = 0, rows = 1, columns = 1;
  std::string caption;
};
// No row, one row of captions, or two where some stand under a common one; by row and column.
std::vector<HeadCell> headOf(const ReportTable& table);
int headRows(const ReportTable& table);
bool isTotal(const ReportTable& table, std::size_t row);  // a strong line stands above it

const std::string& cellAt(const ReportRow& row, std::size_t column);  // "" for one that it lacks
ui::Align alignOf(const ReportTable& table, const ReportRow& row, std::size_t column);

// The number in a text, with either decimal mark, blanks between thousands and at most 15 digits;
// nothing when it is anything else.
std::optional<double> numberIn(std::string_view text);
// The day in a text "yyyy.mm.dd"; nothing when it is anything else.
std::optional<DateTime> dayIn(std::string_view text);

enum class Standing { Top, Middle, Bottom };
Standing standingOf(const Box& box);  // where the text of a box stands in its height

// The footer in pieces: words, the number of the page, the number of pages.
struct FooterPiece {
  enum Kind { Words, Page, Pages } kind;
  std::string words;
};
std::vector<FooterPiece> footerPieces(std::string_view footer);

}  // namespace tolvex::report
