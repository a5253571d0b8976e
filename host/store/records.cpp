#include "host/store/records.h"

#include "framework/references.h"
#include "framework/text.h"
#include "host/store/record_table.h"
#include "host/store/routines.h"

namespace tolvex::store {

const RecordHandler* recordHandler(std::string_view kind) {
  static const std::vector<HandlerRow> table = [] {
    std::vector<HandlerRow> all;
    for (const std::span<const HandlerRow> part :
         {planRecords(), lockRecords(), groupRecords(), templateRecords(), journalRecords(),
          clientRecords(), listRecords(), operationRecords()}) {
      all.insert(all.end(), part.begin(), part.end());
    }
    return all;
  }();
  const std::string code = upper(kindOf(kind));
  if (code.size() != kKindLength) return nullptr;
  for (const HandlerRow& row : table) {
    if (row.kinds.find(code) != std::string_view::npos) return row.handler;
  }
  return nullptr;
}

std::vector<std::string> listArguments(std::string_view first, std::string_view second,
                                       std::string_view third) {
  std::vector<std::string> out;
  if (trim(first).starts_with('\'')) {
    for (const Argument& argument : parseParameters(first)) out.push_back(argument.str());
    return out;
  }
  for (const std::string_view text : {first, second, third}) out.emplace_back(text);
  return out;
}

RowSetPtr finishList(RowSetPtr rows, std::string_view filter) {
  if (!trim(filter).empty()) {
    try {
      rows->SetFilter(filter);
    } catch (const RowSetError& error) {
      throw Refusal(kWrongParameters, "Klaidinga atrankos sąlyga: " + std::string(filter) +
                                          std::string(kLineBreak) + error.what());
    }
  }
  if (rows->RecordCount() > kLongestList) {
    throw Refusal(kWrongParameters,
                  "Sąrašas per ilgas, susiaurinkite laikotarpį arba atrankos sąlygą!");
  }
  if (rows->RecordCount() > 0) rows->MoveFirst();
  return rows;
}

}  // namespace tolvex::store
