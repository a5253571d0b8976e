#include "host/report/pdf.h"

#include <QPainter>
#include <QPdfWriter>

#include "host/objects/report_service.h"
#include "host/report/saving.h"

namespace tolvex::report {
namespace {

constexpr int kTwipsPerInch = 1440;
constexpr double kLayoutShare = 0.05;  // of the whole work

// False when it was stopped.
bool drawPages(QPdfWriter& writer, const Pages& pages, const ReportProgress& progress) {
  QPainter painter(&writer);
  for (std::size_t page = 0; page < pages.pages.size(); ++page) {
    if (page > 0) writer.newPage();
    draw(painter, pages, page);
    if (progress && !progress(static_cast<double>(page) / static_cast<double>(pages.pages.size())))
      return false;
  }
  return true;
}

}  // namespace

std::string writePdf(const Pages& pages, const std::string& title, const std::string& path,
                     const ReportProgress& progress) {
  SavedFile file(path);
  if (!file.open()) return file.failure();
  bool whole = false;
  {
    QPdfWriter writer(&file);
    const QSizeF mm(double(pages.width) / (kTwipsPerInch / 25.4),
                    double(pages.height) / (kTwipsPerInch / 25.4));
    writer.setPageSize(QPageSize(mm, QPageSize::Millimeter, QString(), QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF());
    writer.setResolution(kTwipsPerInch);
    writer.setTitle(QString::fromStdString(title));
    writer.setCreator(QStringLiteral("Tolvex"));
    whole = drawPages(writer, pages, progress);
  }
  if (!whole) {
    file.cancelWriting();
    return ReportOutput::kStopped;
  }
  return file.put();
}

std::string writePdf(const ReportDocument& document, const std::string& path,
                     const ReportProgress& progress) {
  const auto part = [&progress](double from, double share) -> ReportProgress {
    if (!progress) return {};
    return [&progress, from, share](double done) { return progress(from + done * share); };
  };
  const Pages pages = paginate(document, part(0, kLayoutShare));
  if (pages.pages.empty()) return ReportOutput::kStopped;
  return writePdf(pages, document.title, path, part(kLayoutShare, 1 - kLayoutShare));
}

}  // namespace tolvex::report
