// The parts of the table of record handlers, one for each file records_*.cpp.
#pragma once

#include <span>
#include <string_view>

#include "host/store/records.h"

namespace tolvex::store {

struct HandlerRow {
  std::string_view kinds;  // object codes joined by blanks
  const RecordHandler* handler;
};

std::span<const HandlerRow> planRecords();
std::span<const HandlerRow> lockRecords();
std::span<const HandlerRow> groupRecords();
std::span<const HandlerRow> templateRecords();
std::span<const HandlerRow> journalRecords();
std::span<const HandlerRow> clientRecords();
std::span<const HandlerRow> listRecords();
std::span<const HandlerRow> dayRateRecords();
std::span<const HandlerRow> operationRecords();
std::span<const HandlerRow> userRecords();

}  // namespace tolvex::store
