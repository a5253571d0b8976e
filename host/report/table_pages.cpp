#include "host/report/table_pages.h"

#include <algorithm>
#include <cmath>

#include "host/report/parts.h"

namespace tolvex::report {
namespace {

constexpr float kSideMm = 1;          // beside the text of a cell
constexpr float kRowMm = 0.35F;       // above and below it
constexpr float kHeadMm = 0.7F;       // the same in the head
constexpr float kHeadShare = 0.4F;    // of a page, that a head takes at the most
constexpr float kStep = 0.5F;         // points by which a long number is made smaller
constexpr std::size_t kFewLines = 2;  // of a row higher than a page, that are worth beginning it

float halfPoints(float points) { return std::floor(points * 2) / 2; }

}  // namespace

ColumnPlan planColumns(const ReportTable& table, const PageSetup& page, double width) {
  ColumnPlan plan;
  float whole = 0;
  for (const ReportColumn& column : table.columns) whole += twips(10 * column.cm);
  plan.points = page.size;
  const auto room = static_cast<float>(width);
  if (whole > room) {
    plan.share = room / whole;
    plan.points =
        std::min(page.size, std::max(kSmallestPoints, halfPoints(page.size * plan.share)));
  }
  plan.pad = twips(kSideMm) * std::max(plan.share, 0.3F);
  for (const ReportColumn& column : table.columns)
    plan.widths.push_back(twips(10 * column.cm) * plan.share);
  return plan;
}

TablePages::TablePages(const ReportTable& table, const PageSetup& page, PageFlow& flow)
    : table_(table), flow_(flow), plan_(planColumns(table, page, flow.width)) {
  edges_.push_back(flow.left);
  for (const float width : plan_.widths) edges_.push_back(edges_.back() + width);
  shapeHead();
}

// --- shapes --------------------------------------------------------------------------------------

void TablePages::measure(Shape& shape) {
  shape.lines = 1;
  shape.ascent = shape.lineHeight = 0;
  for (const Cell& cell : shape.cells) {
    const Typeface& face = flow_.fonts[cell.font];
    shape.lines = std::max(shape.lines, static_cast<std::size_t>(cell.lines.size()));
    shape.ascent = std::max(shape.ascent, face.ascent());
    shape.lineHeight = std::max(shape.lineHeight, face.lineHeight());
  }
  shape.height = static_cast<float>(shape.lineHeight * static_cast<double>(shape.lines));
}

// A number is made smaller before it is broken: its last digits on a line of their own would be
// read as another number.
TablePages::Cell TablePages::cellOf(const ReportColumn& column, const std::string& words,
                                    float width, const ReportRow& row, float points) {
  Cell cell;
  cell.align = column.align;
  const QString text = QString::fromStdString(words);
  const double room = std::max(0.0, double(width) - 2 * double(plan_.pad));
  cell.font = flow_.fonts.find(points, row.style.bold, row.style.italic);
  if (column.kind == CellKind::Number) {
    while (points - kStep >= kSmallestPoints && flow_.fonts[cell.font].width(text) > room) {
      points -= kStep;
      cell.font = flow_.fonts.find(points, row.style.bold, row.style.italic);
    }
  }
  cell.lines = wrap(text, room, flow_.fonts[cell.font]);
  return cell;
}

TablePages::Shape TablePages::shapeOf(const ReportRow& row) {
  Shape shape;
  float points = plan_.points;
  if (row.style.size > 0)
    points = plan_.share < 1 ? std::max(kSmallestPoints, halfPoints(row.style.size * plan_.share))
                             : row.style.size;
  static const std::string kNothing;
  shape.cells.reserve(table_.columns.size());
  for (std::size_t c = 0; c < table_.columns.size(); ++c) {
    const std::string& words = c < row.cells.size() ? row.cells[c] : kNothing;
    shape.cells.push_back(cellOf(table_.columns[c], words, plan_.widths[c], row, points));
    if (static_cast<int>(c) == row.alignedCell) shape.cells.back().align = row.style.align;
  }
  measure(shape);
  shape.height += 2 * twips(kRowMm);
  return shape;
}

void TablePages::shapeHead() {
  const std::size_t columns = table_.columns.size();
  const bool hasHead = !table_.groups.empty() ||
                       std::any_of(table_.columns.begin(), table_.columns.end(),
                                   [](const ReportColumn& one) { return !one.caption.empty(); });
  if (!hasHead) return;
  const std::uint16_t font = flow_.fonts.find(plan_.points, true);
  const Typeface& face = flow_.fonts[font];
  const float most = (flow_.bottom() - flow_.top()) * kHeadShare / 2;
  const auto mostLines =
      std::max<qsizetype>(1, static_cast<qsizetype>(double(most) / face.lineHeight()));
  const auto caption = [&](const std::string& words, float width) {
    const double room = std::max(0.0, double(width) - 2 * double(plan_.pad));
    Cell cell{wrap(QString::fromStdString(words), room, face), font, ui::Align::Center};
    if (cell.lines.size() > mostLines) cell.lines = cell.lines.first(mostLines);
    return cell;
  };
  groupOf_.assign(columns, -1);
  for (const ColumnGroup& group : table_.groups) {
    const auto first = static_cast<std::size_t>(std::clamp(group.first, 0, int(columns)));
    const auto end = std::min(columns, first + static_cast<std::size_t>(std::max(0, group.count)));
    for (std::size_t c = first; c < end; ++c) groupOf_[c] = static_cast<int>(groups_.cells.size());
    groups_.cells.push_back(caption(group.caption, edges_[end] - edges_[first]));
  }
  for (std::size_t c = 0; c < columns; ++c)
    captions_.cells.push_back(caption(table_.columns[c].caption, plan_.widths[c]));
  Shape below, alone;
  for (std::size_t c = 0; c < columns; ++c)
    (groupOf_[c] < 0 ? alone : below).cells.push_back(captions_.cells[c]);
  for (Shape* shape : {&captions_, &groups_, &below, &alone}) measure(*shape);
  const auto padded = [](const Shape& shape) {
    return shape.cells.empty() ? 0 : shape.height + 2 * twips(kHeadMm);
  };
  groupHeight_ = padded(groups_);
  headHeight_ = std::max(groupHeight_ + padded(below), padded(alone));
}

// --- what stays together -------------------------------------------------------------------------

bool TablePages::isTied(std::size_t row) const {
  return row + 1 < table_.rows.size() && (table_.rows[row].heading || isTotal(table_, row + 1));
}

const TablePages::Shape& TablePages::ahead(std::size_t row) {
  while (firstAhead_ < row && !ahead_.empty()) {
    ahead_.pop_front();
    ++firstAhead_;
  }
  if (ahead_.empty()) firstAhead_ = row;
  while (firstAhead_ + ahead_.size() <= row)
    ahead_.push_back(shapeOf(table_.rows[firstAhead_ + ahead_.size()]));
  return ahead_[row - firstAhead_];
}

float TablePages::tiedHeight(std::size_t row) {
  ahead(row);  // drops what lies before it
  float sum = ahead_.front().height;
  for (std::size_t next = row; isTied(next); ++next) {
    while (ahead_.size() <= next + 1 - firstAhead_)
      ahead_.push_back(shapeOf(table_.rows[firstAhead_ + ahead_.size()]));
    const float more = ahead_[next + 1 - firstAhead_].height;
    if (sum + more > wholePage()) break;
    sum += more;
  }
  return sum;
}

float TablePages::wholePage() const { return flow_.bottom() - flow_.top() - headHeight_; }

float TablePages::leastHeight() { return headHeight_ + (table_.rows.empty() ? 0 : tiedHeight(0)); }

// --- marks ---------------------------------------------------------------------------------------

void TablePages::headCell(const Cell& cell, const Shape& shape, float x, float width, float top,
                          float height) {
  const auto used = static_cast<float>(shape.lineHeight * double(cell.lines.size()));
  float baseline = top + (height - used) / 2 + static_cast<float>(shape.ascent);
  for (const QString& line : cell.lines) {
    flow_.text(x + plan_.pad, x + width - plan_.pad, baseline, cell.font, line, cell.align);
    baseline += static_cast<float>(shape.lineHeight);
  }
}

void TablePages::placeHead() {
  if (headHeight_ <= 0) return;
  const float top = flow_.y, bottom = top + headHeight_, right = edges_.back();
  flow_.fill(edges_.front(), top, right - edges_.front(), headHeight_, kHeadGray);
  flow_.line(edges_.front(), top, right, top, kStrong);
  flow_.line(edges_.front(), bottom, right, bottom, kStrong);
  for (std::size_t c = 0; c < captions_.cells.size(); ++c) {
    const int group = groupOf_[c];
    const float cellTop = group < 0 ? top : top + groupHeight_;
    headCell(captions_.cells[c], captions_, edges_[c], plan_.widths[c], cellTop, bottom - cellTop);
    const bool sameGroup = group >= 0 && c > 0 && groupOf_[c - 1] == group;
    if (table_.vLines && c > 0)
      flow_.line(edges_[c], sameGroup ? cellTop : top, edges_[c], bottom, kHair);
    if (group < 0 || sameGroup) continue;
    std::size_t end = c;
    while (end < groupOf_.size() && groupOf_[end] == group) ++end;
    const float width = edges_[end] - edges_[c];
    headCell(groups_.cells[static_cast<std::size_t>(group)], groups_, edges_[c], width, top,
             groupHeight_);
    flow_.line(edges_[c], cellTop, edges_[end], cellTop, kHair);
  }
  flow_.y = bottom;
}

void TablePages::beginPage() {
  tableTop_ = flow_.y;
  placeHead();
  if (headHeight_ <= 0 && table_.hLines)
    flow_.line(edges_.front(), flow_.y, edges_.back(), flow_.y, kFine);
  bodyTop_ = flow_.y;
  ruleAbove_ = true;
}

void TablePages::endPage() {
  const float y = flow_.y;
  if (table_.hLines || headHeight_ > 0)
    if (y > bodyTop_) flow_.line(edges_.front(), y, edges_.back(), y, kFine);
  if (!table_.vLines) return;
  for (std::size_t c = 1; c + 1 < edges_.size(); ++c)
    if (y > bodyTop_) flow_.line(edges_[c], bodyTop_, edges_[c], y, kHair, kColumnGray);
  for (const float edge : {edges_.front(), edges_.back()})
    flow_.line(edge, tableTop_, edge, y, kFine);
}

void TablePages::nextPage() {
  endPage();
  flow_.newPage();
  beginPage();
}

void TablePages::placeLines(const Shape& shape, std::size_t from, std::size_t count) {
  const float first = flow_.y + twips(kRowMm) + static_cast<float>(shape.ascent);
  for (std::size_t c = 0; c < shape.cells.size(); ++c) {
    const Cell& cell = shape.cells[c];
    const auto end =
        std::min<std::size_t>(from + count, static_cast<std::size_t>(cell.lines.size()));
    for (std::size_t i = from; i < end; ++i) {
      const float baseline = first + static_cast<float>(shape.lineHeight * double(i - from));
      flow_.text(edges_[c] + plan_.pad, edges_[c + 1] - plan_.pad, baseline, cell.font,
                 cell.lines[static_cast<qsizetype>(i)], cell.align);
    }
  }
  flow_.y += static_cast<float>(shape.lineHeight * double(count)) + 2 * twips(kRowMm);
}

void TablePages::placeRow(std::size_t row, const Shape& shape) {
  if (isTotal(table_, row) && !ruleAbove_)
    flow_.line(edges_.front(), flow_.y, edges_.back(), flow_.y, kStrong);
  else if (!ruleAbove_ && table_.hLines)
    flow_.line(edges_.front(), flow_.y, edges_.back(), flow_.y, kHair, kRowGray);
  ruleAbove_ = false;
  std::size_t done = 0;
  while (done < shape.lines) {
    const double room = double(flow_.room()) - 2 * double(twips(kRowMm));
    auto fitting = static_cast<std::size_t>(std::max(0.0, room / shape.lineHeight + 1e-3));
    if (flow_.y <= bodyTop_) fitting = std::max<std::size_t>(fitting, 1);
    const std::size_t count = std::min(fitting, shape.lines - done);
    if (count > 0) placeLines(shape, done, count);
    done += count;
    if (done < shape.lines) {
      nextPage();
      ruleAbove_ = false;
    }
  }
}

bool TablePages::place(const std::function<bool()>& more) {
  if (table_.columns.empty()) return true;
  if (leastHeight() > flow_.room() && !flow_.atTop()) flow_.newPage();
  beginPage();
  for (std::size_t row = 0; row < table_.rows.size(); ++row) {
    const float needed = tiedHeight(row);
    const Shape& shape = ahead(row);
    const bool tooHigh = shape.height > wholePage();
    const float least = tooHigh ? static_cast<float>(shape.lineHeight * double(kFewLines)) : needed;
    if (least > flow_.room() && flow_.y > bodyTop_) nextPage();
    placeRow(row, shape);
    if (!more()) return false;
  }
  endPage();
  return true;
}

}  // namespace tolvex::report
