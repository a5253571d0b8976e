// Long reports: laid out, painted, written as files.
//   report_bench [--quick] [--folder FOLDER]
// Processor time, the middle one of several rounds; a ratio compares a report of ten times the
// rows with the shorter one. --quick takes reports of a fifth.
#include <QImage>
#include <QPainter>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "bench/goals.h"
#include "bench/measure.h"
#include "host/report/find.h"
#include "host/report/fonts.h"
#include "host/report/pdf.h"
#include "host/report/rtf.h"
#include "host/report/xlsx.h"
#include "tests/report/sample_reports.h"

namespace tolvex {
namespace {

constexpr double kSecondsEach = 1;
constexpr double kGrowth = 12;  // for ten times the rows
constexpr double kPageMs = 16;  // a page while it is scrolled

struct Options {
  int rows = 10'000;
  std::string folder = ".";
};

Options parse(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--quick") == 0)
      options.rows /= 5;
    else if (std::strcmp(argv[i], "--folder") == 0 && i + 1 < argc)
      options.folder = argv[++i];
    else
      throw std::runtime_error(std::string("unknown word: ") + argv[i]);
  }
  return options;
}

void mustWrite(const std::string& why) {
  if (!why.empty()) throw std::runtime_error(why);
}

// A page as the preview shows it: about the size of the paper on a screen.
double pageMs(const report::Pages& pages) {
  constexpr double kPixelsATwip = 96.0 / 1440;
  QImage screen(1123, 794, QImage::Format_RGB32);
  std::size_t next = 0;
  const auto paint = [&] {
    screen.fill(Qt::white);
    QPainter painter(&screen);
    painter.scale(kPixelsATwip, kPixelsATwip);
    report::draw(painter, pages, next++ % pages.pages.size());
  };
  return bench::alternate({paint}, kSecondsEach)[0] * 1e3;
}

void measure(const Options& options) {
  const ReportDocument small = test::journal(options.rows);
  const ReportDocument large = test::journal(10 * options.rows);
  const auto grown = [&](const char* goal, const auto& work) {
    const auto seconds =
        bench::alternate({[&] { work(small); }, [&] { work(large); }}, kSecondsEach);
    bench::report(goal, seconds[1] / seconds[0], kGrowth, "x", false);
    bench::note("rows a second of the longer one", 10 * options.rows / seconds[1], "");
    return seconds;
  };
  const auto layout = grown("laying out a report of ten times the rows",
                            [](const ReportDocument& one) { (void)report::paginate(one); });
  bench::note("laying out the longer one", layout[1] * 1e3, "ms");
  const report::Pages pages = report::paginate(large);
  bench::report("painting a page of it", pageMs(pages), kPageMs, "ms", false);
  const double found = bench::alternate(
      {[&] { report::find(pages, QStringLiteral("nėra tokio")); }}, kSecondsEach)[0];
  bench::note("seeking through all pages", found * 1e3, "ms");

  const std::string file = options.folder + "/report";
  grown("XLSX of ten times the rows",
        [&](const ReportDocument& one) { mustWrite(report::writeXlsx(one, file + ".xlsx")); });
  grown("RTF of ten times the rows",
        [&](const ReportDocument& one) { mustWrite(report::writeRtf(one, file + ".rtf")); });
  const report::Pages few = report::paginate(small);
  const double pdf = bench::secondsOf([&] { mustWrite(report::writePdf(few, "", file + ".pdf")); });
  bench::note("PDF: pages a second", static_cast<double>(few.pages.size()) / pdf, "");
  bench::note("PDF: bytes a page",
              static_cast<double>(std::filesystem::file_size(file + ".pdf")) /
                  static_cast<double>(few.pages.size()),
              "");
  for (const char* ending : {".pdf", ".xlsx", ".rtf"}) std::filesystem::remove(file + ending);
}

}  // namespace
}  // namespace tolvex

int main(int argc, char** argv) {
  try {
    const tolvex::Options options = tolvex::parse(argc, argv);
    tolvex::report::needFonts();
    tolvex::measure(options);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 2;
  }
  return tolvex::bench::missed == 0 ? 0 : 1;
}
