#include "host/report/pdf.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

#include "host/objects/report_service.h"

namespace tolvex::report {
namespace {

constexpr int kTwipsPerInch = 1440;
constexpr double kLayoutShare = 0.05;  // of the whole work

std::string whyNot(const QFileDevice& file, const std::string& path) {
  const std::string which = "Nepavyko įrašyti bylos " + path + ".\r\n";
  switch (file.error()) {
    case QFileDevice::ResourceError:
      return which + "Diske nebėra vietos.";
    case QFileDevice::PermissionsError:
      return which + "Nėra teisės čia rašyti arba bylą laiko atvertą kita programa.";
    case QFileDevice::OpenError:
      return which + "Nėra tokio katalogo arba į jį negalima rašyti.";
    default:
      return which + file.errorString().toStdString();
  }
}

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
  QSaveFile file(QString::fromStdString(path));
  if (!file.open(QIODevice::WriteOnly)) return whyNot(file, path);
  // The writer does not ask whether its device took the bytes; so they are gathered first.
  QBuffer bytes;
  bytes.open(QIODevice::WriteOnly);
  bool whole = false;
  {
    QPdfWriter writer(&bytes);
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
  const QByteArray& all = bytes.data();
  const bool written = file.write(all) == all.size() && file.flush();
  if (!written) {
    const std::string why = whyNot(file, path);
    file.cancelWriting();
    return why;
  }
  return file.commit() ? std::string() : whyNot(file, path);
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
