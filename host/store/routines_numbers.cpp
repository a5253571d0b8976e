// Numbers of documents: the next one of a group's counter, the highest one in use.
#include <algorithm>
#include <limits>

#include "framework/text.h"
#include "host/store/answer.h"
#include "host/store/numbering.h"
#include "host/store/routine_table.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

constexpr ColumnSpec kAutoNumber[] = {col::integer("AutoNumber"), col::text("ANMask", 100),
                                      col::text("ANPrefix", 50), col::text("ANTemplate", 20)};

// Group, user, prefix of the user, flag, date. Nothing is reserved: the number is drawn at the
// save. The flag tells that a new document asks; the counter answers all alike.
Variant GetAutoNumber(Session& session, const Arguments& arguments, std::string_view) {
  const int today = session.now().DayNumber();
  const int day = arguments[4].day() != 0 ? arguments[4].day() : today;
  const auto rules = readNumberRules(session.db(), arguments[0].integer());
  Answer answer(kAutoNumber);
  if (!rules || !rules->appliesOn(day)) {
    answer.row().integer(0).text("").text("").text("");
    return answer.done();
  }
  const std::string form = textFrom(session.db(), "SELECT form_oid FROM oper_group WHERE id = $1",
                                    arguments[0].integer());
  const int number =
      offerNumber(session, *rules, arguments[1].integer(), arguments[2].str(), form, day);
  answer.row().integer(number).text(rules->mask).text(rules->prefix).text(rules->width);
  return answer.done();
}

// The highest number of the group that is written in digits alone and fits a document's counter.
std::int64_t highestNumber(Session& session, const Arguments& arguments) {
  auto select = bound(session.db(),
                      "SELECT number FROM oper WHERE group_id = $1 AND number <> ''"
                      " AND ($2 = '' OR serija = $2)",
                      arguments[0].integer(), arguments[1].str());
  std::int64_t highest = 0;
  while (select->step()) {
    const std::string_view text = select->text(0);
    const bool digits = text.size() <= 10 && std::all_of(text.begin(), text.end(), [](char c) {
                          return c >= '0' && c <= '9';
                        });
    if (!digits) continue;
    std::int64_t number = 0;
    for (const char c : text) number = number * 10 + (c - '0');
    if (number < std::numeric_limits<std::int32_t>::max()) highest = std::max(highest, number);
  }
  return highest;
}

constexpr ColumnSpec kNumber[] = {col::text("Number", 20)};

Variant GetNumber(Session& session, const Arguments& arguments, std::string_view) {
  Answer answer(kNumber);
  answer.row().text(std::to_string(highestNumber(session, arguments) + 1));
  return answer.done();
}

constexpr ColumnSpec kMaxNumber[] = {col::integer("MaxNumber")};

Variant GetBROperMaxNumber(Session& session, const Arguments& arguments, std::string_view) {
  Answer answer(kMaxNumber);
  answer.row().integer(highestNumber(session, arguments));
  return answer.done();
}

constexpr Routine kRoutines[] = {
    {"O0201500", "GetAutoNumber", "iitid", false, GetAutoNumber},
    {"O0201500", "GetNumber", "iT", false, GetNumber},
    {"O0201500", "GetBROperMaxNumber", "iT", false, GetBROperMaxNumber},
};

}  // namespace

std::span<const Routine> numberRoutines() { return kRoutines; }

}  // namespace tolvex::store
