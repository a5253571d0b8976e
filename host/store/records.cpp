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
          clientRecords(), listRecords(), dayRateRecords(), operationRecords(), userRecords()}) {
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

void refuseLongList(std::size_t rows) {
  if (rows > kLongestList) {
    throw Refusal(kWrongParameters,
                  "Sąrašas per ilgas, susiaurinkite laikotarpį arba atrankos sąlygą!");
  }
}

std::optional<ListPage> readListPage(std::string_view argument) {
  constexpr std::string_view kSign = "page:";
  if (!argument.starts_with(kSign)) return std::nullopt;
  const auto parts = split(argument.substr(kSign.size()), ';');
  double after = 0, rows = 0;
  if (parts.size() != 2 || !parsePlainNumber(parts[0], after) ||
      !parsePlainNumber(parts[1], rows) || rows < 1)
    throw Refusal(kWrongParameters, "Klaidingas sąrašo puslapis: " + std::string(argument));
  return ListPage{static_cast<int>(after), static_cast<int>(rows)};
}

RowSetPtr readRecord(Session& session, std::string_view kind, int id) {
  const RecordHandler* const handler = recordHandler(kind);
  if (!handler) throw Refusal(kUnknownRoutine, "Nežinoma objekto rūšis: " + std::string(kind));
  RowSetPtr record = handler->load(session, kind, id);
  if (!record) refuseGone();
  const std::string guard = handler->guard(kind, id);
  if (!guard.empty() && !session.rights(guard).view) refuseView();
  record->MoveFirst();
  return record;
}

std::string filterIn(std::span<const std::string> arguments) {
  for (const std::string& argument : arguments) {
    if (std::string filter = trim(argument); !filter.empty()) return filter;
  }
  return {};
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
  refuseLongList(rows->RecordCount());
  if (rows->RecordCount() > 0) rows->MoveFirst();
  return rows;
}

}  // namespace tolvex::store
