// PageView: the pages of a report below each other, painted from their marks as they come in sight.
#pragma once

#include <QAbstractScrollArea>
#include <functional>
#include <vector>

#include "host/report/find.h"
#include "host/report/pages.h"

namespace tolvex::desktop {

class PageView final : public QAbstractScrollArea {
 public:
  enum class Fit { None, Easy, Width, Page };  // Easy: the width, but not too large

  explicit PageView(QWidget* parent);

  void setPages(report::Pages pages);  // the first page comes in sight
  const report::Pages& pages() const { return pages_; }

  double zoom() const { return zoom_; }  // 1: as large as on paper
  Fit fit() const { return fit_; }
  void setZoom(double zoom);
  void zoomBy(int steps);
  void setFit(Fit fit);

  std::size_t page() const;  // the one most in sight
  void showPage(std::size_t page);
  void step(int pages);  // by as much as is seen at once

  // Marks what was found; the hit at hand is brought in sight and stands out.
  void setHits(std::vector<report::Hit> hits);
  const std::vector<report::Hit>& hits() const { return hits_; }
  std::size_t currentHit() const { return current_; }
  void showHit(std::size_t hit);

  std::function<void()> onMoved;  // another page or zoom

 private:
  double scale() const;  // pixels a twip
  QSizeF pageSize() const;
  QPointF pageCorner(std::size_t page) const;  // in the viewport
  QRectF rectOf(const report::Hit& hit) const;
  void layOut();
  void keepPlace(const std::function<void()>& change);
  void fitNow();
  void moved() const;

  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;

  report::Pages pages_;
  double zoom_ = 1;
  Fit fit_ = Fit::Easy;
  std::vector<report::Hit> hits_;
  std::size_t current_ = 0;
};

}  // namespace tolvex::desktop
