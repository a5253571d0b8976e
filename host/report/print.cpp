#include "host/report/print.h"

#include <QLocale>
#include <QPainter>
#include <QPrinter>
#include <algorithm>
#include <cmath>

#include "framework/text.h"

namespace tolvex::report {
namespace {

constexpr double kTwipsPerInch = 1440;
constexpr double kSlackMm = 0.05;  // printers tell their margins in rounded points

}  // namespace

std::string lostEdges(const PageSetup& page, const QMarginsF& unreachable) {
  const struct {
    const char* which;
    double own, printers;
  } edges[] = {{"kairiojo", double(page.leftMm), unreachable.left()},
               {"viršutinio", double(page.topMm), unreachable.top()},
               {"dešiniojo", double(page.rightMm), unreachable.right()},
               {"apatinio", double(page.bottomMm), unreachable.bottom()}};
  QLocale numbers(QLocale::Lithuanian);
  numbers.setNumberOptions(QLocale::OmitGroupSeparator);
  std::vector<std::string> lost;
  for (const auto& edge : edges) {
    if (edge.own + kSlackMm >= edge.printers) continue;
    lost.push_back(
        std::string(edge.which) + " – " +
        numbers.toString(std::ceil(edge.printers * 10 - kSlackMm) / 10, 'f', 1).toStdString() +
        " mm");
  }
  if (lost.empty()) return {};
  return "Spausdintuvas nepasiekia lapo krašto (" + join(lost, ", ") +
         "), todėl dalis ataskaitos gali būti neatspausdinta.";
}

void preparePrinter(QPrinter& printer, const ReportDocument& document) {
  printer.setFullPage(true);
  printer.setPageSize(QPageSize(QPageSize::A4));
  printer.setPageOrientation(document.page.landscape ? QPageLayout::Landscape
                                                     : QPageLayout::Portrait);
  printer.setDocName(QString::fromStdString(document.title));
  printer.setCreator(QStringLiteral("Tolvex"));
}

bool print(QPrinter& printer, const Pages& pages, const ReportProgress& progress) {
  const auto count = static_cast<int>(pages.pages.size());
  const int first = printer.fromPage() > 0 ? printer.fromPage() : 1;
  const int last = printer.toPage() > 0 ? std::min(printer.toPage(), count) : count;
  printer.setFullPage(true);  // a dialog may have taken it back
  QPainter painter;
  if (!painter.begin(&printer)) return false;
  const double scale = printer.resolution() / kTwipsPerInch;
  painter.scale(scale, scale);
  for (int page = first; page <= last; ++page) {
    if (page > first) printer.newPage();
    draw(painter, pages, static_cast<std::size_t>(page - 1));
    if (progress && !progress(static_cast<double>(page - first + 1) / (last - first + 1))) {
      printer.abort();
      return false;
    }
  }
  return painter.end();
}

}  // namespace tolvex::report
