#include "host/desktop/report_viewer_pages.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "host/desktop/theme.h"

namespace tolvex::desktop {
namespace {

constexpr int kGap = 16;  // around and between pages, in pixels
constexpr int kArrow = 48;
constexpr double kSmallest = 0.2, kLargest = 5, kStep = 1.2, kEasy = 1.15;
constexpr double kTwipsPerInch = 1440;
constexpr QRgb kDesk = 0xFFD9DFE4;
constexpr QRgb kFound = 0xFFFFE58A, kFoundNow = 0xFFFFB547;

}  // namespace

PageView::PageView(QWidget* parent) : QAbstractScrollArea(parent) {
  setObjectName(QStringLiteral("pages"));
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::StrongFocus);
  verticalScrollBar()->setSingleStep(kArrow);
  horizontalScrollBar()->setSingleStep(kArrow);
  viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
}

void PageView::setPages(report::Pages pages) {
  pages_ = std::move(pages);
  hits_.clear();
  fitNow();
  layOut();
  verticalScrollBar()->setValue(0);
  viewport()->update();
  moved();
}

// --- geometry ------------------------------------------------------------------------------------

double PageView::scale() const { return zoom_ * logicalDpiX() / kTwipsPerInch; }

QSizeF PageView::pageSize() const {
  return QSizeF(double(pages_.width), double(pages_.height)) * scale();
}

QPointF PageView::pageCorner(std::size_t page) const {
  const QSizeF size = pageSize();
  const double free = std::max(double(kGap), (viewport()->width() - size.width()) / 2);
  const double y = kGap + static_cast<double>(page) * (size.height() + kGap);
  return {double(qRound(free)) - horizontalScrollBar()->value(),
          double(qRound(y)) - verticalScrollBar()->value()};
}

QRectF PageView::rectOf(const report::Hit& hit) const {
  const report::TextMark& mark = pages_.pages[hit.page].texts[hit.text];
  const QRectF place = report::placeOf(pages_, mark, hit.from, hit.count);
  const QPointF corner = pageCorner(hit.page);
  return {corner + place.topLeft() * scale(), place.size() * scale()};
}

void PageView::layOut() {
  const QSizeF size = pageSize();
  const double count = static_cast<double>(pages_.pages.size());
  const int width = static_cast<int>(size.width()) + 2 * kGap;
  const int height = static_cast<int>(kGap + count * (size.height() + kGap));
  verticalScrollBar()->setRange(0, std::max(0, height - viewport()->height()));
  verticalScrollBar()->setPageStep(viewport()->height());
  horizontalScrollBar()->setRange(0, std::max(0, width - viewport()->width()));
  horizontalScrollBar()->setPageStep(viewport()->width());
}

// What stands in the middle stays there, and a view of the very beginning stays one.
void PageView::keepPlace(const std::function<void()>& change) {
  const bool atBegin = verticalScrollBar()->value() == 0;
  const double height = pageSize().height() + kGap;
  const double before = (verticalScrollBar()->value() + viewport()->height() / 2.0 - kGap) / height;
  change();
  layOut();
  const double after = before * (pageSize().height() + kGap) + kGap;
  verticalScrollBar()->setValue(atBegin ? 0 : qRound(after - viewport()->height() / 2.0));
  viewport()->update();
  moved();
}

void PageView::fitNow() {
  if (fit_ == Fit::None || pages_.pages.empty()) return;
  const double unit = logicalDpiX() / kTwipsPerInch;
  const double byWidth = (viewport()->width() - 2 * kGap) / (double(pages_.width) * unit);
  const double byHeight = (viewport()->height() - 2 * kGap) / (double(pages_.height) * unit);
  const double wanted = fit_ == Fit::Width  ? byWidth
                        : fit_ == Fit::Page ? std::min(byWidth, byHeight)
                                            : std::min(byWidth, kEasy);
  zoom_ = std::clamp(wanted, kSmallest, kLargest);
}

void PageView::setZoom(double zoom) {
  fit_ = Fit::None;
  keepPlace([&] { zoom_ = std::clamp(zoom, kSmallest, kLargest); });
}

void PageView::zoomBy(int steps) { setZoom(zoom_ * std::pow(kStep, steps)); }

void PageView::setFit(Fit fit) {
  fit_ = fit;
  keepPlace([this] { fitNow(); });
}

void PageView::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  keepPlace([this] { fitNow(); });
}

// --- moving --------------------------------------------------------------------------------------

void PageView::moved() const {
  if (onMoved) onMoved();
}

std::size_t PageView::page() const {
  if (pages_.pages.empty()) return 0;
  const double middle = verticalScrollBar()->value() + viewport()->height() / 2.0;
  const auto page =
      static_cast<std::size_t>(std::max(0.0, (middle - kGap) / (pageSize().height() + kGap)));
  return std::min(page, pages_.pages.size() - 1);
}

void PageView::showPage(std::size_t page) {
  const double y = static_cast<double>(page) * (pageSize().height() + kGap);
  verticalScrollBar()->setValue(qRound(y));
}

void PageView::step(int pages) {
  const int share = viewport()->height() - kArrow;
  verticalScrollBar()->setValue(verticalScrollBar()->value() + pages * share);
}

void PageView::scrollContentsBy(int, int) {
  viewport()->update();
  moved();
}

void PageView::wheelEvent(QWheelEvent* event) {
  if (!(event->modifiers() & Qt::ControlModifier)) return QAbstractScrollArea::wheelEvent(event);
  zoomBy(event->angleDelta().y() > 0 ? 1 : -1);
  event->accept();
}

void PageView::keyPressEvent(QKeyEvent* event) {
  QScrollBar& bar = *verticalScrollBar();
  switch (event->key()) {
    case Qt::Key_PageDown:
    case Qt::Key_Space:
      return step(1);
    case Qt::Key_PageUp:
    case Qt::Key_Backspace:
      return step(-1);
    case Qt::Key_Home:
      return bar.setValue(0);
    case Qt::Key_End:
      return bar.setValue(bar.maximum());
    case Qt::Key_Down:
      return bar.setValue(bar.value() + kArrow);
    case Qt::Key_Up:
      return bar.setValue(bar.value() - kArrow);
    case Qt::Key_Right:
      return horizontalScrollBar()->setValue(horizontalScrollBar()->value() + kArrow);
    case Qt::Key_Left:
      return horizontalScrollBar()->setValue(horizontalScrollBar()->value() - kArrow);
    default:
      QAbstractScrollArea::keyPressEvent(event);
  }
}

// --- hits ----------------------------------------------------------------------------------------

void PageView::setHits(std::vector<report::Hit> hits) {
  hits_ = std::move(hits);
  current_ = 0;
  viewport()->update();
}

void PageView::showHit(std::size_t hit) {
  if (hit >= hits_.size()) return;
  current_ = hit;
  const QRectF place = rectOf(hits_[hit]);
  const QRectF seen = QRectF(viewport()->rect()).adjusted(kGap, kGap, -kGap, -kGap);
  if (!seen.contains(place)) {
    QScrollBar &down = *verticalScrollBar(), &across = *horizontalScrollBar();
    down.setValue(down.value() + static_cast<int>(place.center().y() - seen.center().y()));
    across.setValue(across.value() + static_cast<int>(place.center().x() - seen.center().x()));
  }
  viewport()->update();
}

// --- painting ------------------------------------------------------------------------------------

void PageView::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  painter.fillRect(event->rect(), QColor(kDesk));
  if (pages_.pages.empty()) return;
  const QSizeF size = pageSize();
  const double top = -pageCorner(0).y() + event->rect().top();
  const double all = size.height() + kGap;
  auto page = static_cast<std::size_t>(std::max(0.0, std::floor(top / all)));
  for (; page < pages_.pages.size(); ++page) {
    const QRectF paper(pageCorner(page), size);
    if (paper.top() > event->rect().bottom()) break;
    if (!paper.intersects(event->rect())) continue;
    painter.fillRect(paper.translated(2, 3), QColor(0, 0, 0, 28));
    painter.fillRect(paper, Qt::white);
    painter.save();
    painter.setClipRect(paper);
    painter.translate(paper.topLeft());
    painter.scale(scale(), scale());
    report::draw(painter, pages_, page);
    painter.restore();
    const auto first = std::partition_point(hits_.begin(), hits_.end(),
                                            [page](const auto& hit) { return hit.page < page; });
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    for (auto hit = first; hit != hits_.end() && hit->page == page; ++hit) {
      const bool now = static_cast<std::size_t>(hit - hits_.begin()) == current_;
      painter.fillRect(rectOf(*hit).adjusted(-1, -1, 1, 1), QColor(now ? kFoundNow : kFound));
    }
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
  }
}

}  // namespace tolvex::desktop
