#include "host/objects/report_service.h"

#include <charconv>
#include <iterator>

#include "framework/text.h"

namespace tolvex {
namespace {

const char* endingOf(ReportFormat format) {
  switch (format) {
    case ReportFormat::Pdf:
      return "pdf";
    case ReportFormat::Excel:
      return "xlsx";
    case ReportFormat::Rtf:
      break;
  }
  return "rtf";
}

constexpr const char* kPages = "ReportPages";
constexpr float kWidestMm = 80;  // as the dialog allows

// Lists share one layout, but each has columns of its own.
std::string pageKey(const ReportDocument& document) {
  return document.layout == "list" ? document.layout + " " + document.title : document.layout;
}

int tenths(float mm) { return static_cast<int>(mm * 10 + 0.5F); }

// "1 250 150 150 120": lying or not; the margins from the left, clockwise, in tenths.
std::string pageText(const PageSetup& page) {
  std::string text = page.landscape ? "1" : "0";
  for (const float mm : {page.leftMm, page.topMm, page.rightMm, page.bottomMm})
    text += " " + std::to_string(tenths(mm));
  return text;
}

// A text that is not of that shape changes nothing.
void readPage(std::string_view text, PageSetup& page) {
  int values[5] = {};
  const char* at = text.data();
  const char* const end = at + text.size();
  for (int& value : values) {
    if (at != end && *at == ' ') ++at;
    const auto [next, error] = std::from_chars(at, end, value);
    if (error != std::errc() || value < 0 || value > tenths(kWidestMm)) return;
    at = next;
  }
  page.landscape = values[0] != 0;
  float* const margins[] = {&page.leftMm, &page.topMm, &page.rightMm, &page.bottomMm};
  for (std::size_t i = 0; i < std::size(margins); ++i)
    *margins[i] = static_cast<float>(values[i + 1]) / 10;
}

bool endsWithNoCase(const std::string& text, const std::string& end) {
  return text.size() >= end.size() && equalNoCase(text.substr(text.size() - end.size()), end);
}

}  // namespace

void ReportService::show(ReportDocument document, bool withExcel) {
  if (!document.layout.empty())
    readPage(host_.settings().get(kPages, pageKey(document), ""), document.page);
  stage_.report(std::make_shared<const ReportDocument>(std::move(document)), withExcel, *this);
}

void ReportService::keepPage(const ReportDocument& document) {
  if (!document.layout.empty())
    host_.settings().set(kPages, pageKey(document), pageText(document.page));
}

bool ReportService::exportAs(const ReportDocument& document, ReportFormat format,
                             std::string_view stem) {
  if (!output_) {
    warn(host_, "Ataskaitų įrašyti į bylą čia negalima.");
    return false;
  }
  const std::string ending = std::string(".") + endingOf(format);
  auto path =
      host_.dialogs().saveFile("(*" + ending + ")|*" + ending, "", std::string(stem) + ending);
  if (!path || path->empty()) return false;
  if (!endsWithNoCase(*path, ending)) *path += ending;
  std::string why;
  {
    LongWork work(host_.pump());
    why = output_->write(document, format, *path,
                         [&work](double share) { return work.goesOn("Rašoma byla", share); });
  }
  if (!why.empty()) warn(host_, why);
  return why.empty();
}

}  // namespace tolvex
