// Reports of every shape: what accountants print, for tests, pictures and measurements.
#pragma once

#include "platform/report.h"

namespace tolvex::test {

ReportDocument journal(int rows);  // nine columns over a landscape page, a total at the end
ReportDocument accountPlan();      // headings in bold, accounts below them
ReportDocument grouped();          // captions over several columns, numbers that are too wide
ReportDocument paymentOrder();     // combs, twice on a sheet
ReportDocument cashOrder();        // labels and fields on one base line

// All of them, journal of 300 rows.
std::vector<ReportDocument> sampleReports();

}  // namespace tolvex::test
