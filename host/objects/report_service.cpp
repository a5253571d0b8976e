#include "host/objects/report_service.h"

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

bool endsWithNoCase(const std::string& text, const std::string& end) {
  return text.size() >= end.size() && equalNoCase(text.substr(text.size() - end.size()), end);
}

}  // namespace

void ReportService::show(ReportDocument document, bool withExcel) {
  stage_.report(std::make_shared<const ReportDocument>(std::move(document)), withExcel, *this);
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
