#include "host/objects/list_report.h"

#include "platform/form.h"
#include "platform/host.h"
#include "platform/list_report.h"

namespace tolvex {

std::optional<ReportDocument> reportOf(const ui::ListView& list) {
  HostContext& host = list.form.host();
  ui::ListHeading heading;
  heading.title = ui::withoutAccessKey(list.caption());
  if (heading.title.empty()) heading.title = list.form.title();
  if (list.onPrint && !list.onPrint(heading)) return std::nullopt;
  if (list.rows().empty()) return std::nullopt;
  return listReport(host.workplace().firm().name, heading, list);
}

void printList(const ui::ListView& list) {
  if (auto report = reportOf(list)) list.form.host().reports().show(std::move(*report), true);
}

void exportList(const ui::ListView& list) {
  if (const auto report = reportOf(list))
    (void)list.form.host().reports().exportAs(*report, ReportFormat::Excel, report->exportStem);
}

}  // namespace tolvex
