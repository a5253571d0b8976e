#include "host/objects/report_service.h"

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
  const std::string ending = endingOf(format);
  const auto path = host_.dialogs().saveFile("(*." + ending + ")|*." + ending, "",
                                             std::string(stem) + "." + ending);
  if (!path || path->empty()) return false;
  MessagePump& pump = host_.pump();
  pump.busy(true);
  const std::string why = output_->write(document, format, *path, [&pump](double share) {
    pump.progress("Rašoma byla", share);
    return !pump.stopped();
  });
  pump.busy(false);
  if (!why.empty()) warn(host_, why);
  return why.empty();
}

}  // namespace tolvex
