// Pages on a printer.
#pragma once

#include <QMarginsF>
#include <string>

#include "host/report/pages.h"

class QPrinter;

namespace tolvex::report {

// What of the page a printer cannot reach, for the user; "" when all is within its reach.
// `unreachable` are the printer's own margins in millimetres.
std::string lostEdges(const PageSetup& page, const QMarginsF& unreachable);

// The paper as the report wants it; before a dialog asks the user for the rest.
void preparePrinter(QPrinter& printer, const ReportDocument& document);
// Pages from the first to the last one that the printer was asked for. False when stopped or when
// the printer would not begin.
bool print(QPrinter& printer, const Pages& pages, const ReportProgress& progress = {});

}  // namespace tolvex::report
