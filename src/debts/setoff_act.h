// The act of a mutual set-off: which debts of two parties were set off and what is left of them.
#pragma once

#include "debts/cover_posting.h"
#include "platform/host.h"
#include "platform/report.h"

namespace tolvex {

struct SetOffAct {
  FirmRecord own, client;       // name, code, phone and fax are printed
  std::string clientReference;  // whose debts count; "" for all
  DateTime date;
  CoverParty primary, secondary;  // ticked debts are set off; the others count in the rest
};
ReportDocument setOffAct(const SetOffAct& act, const NumberFormat& format);

}  // namespace tolvex
