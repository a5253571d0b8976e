#include "host/store/account_texts.h"

#include <algorithm>
#include <array>
#include <optional>

#include "framework/text.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

// Where the parts of a text stand that name an account each.
struct Places {
  const char* kind;
  char separator;
  std::size_t count;  // the first so many parts
};
constexpr Places kOfGroups[] = {
    {"O0201505", '#', 3},  // advance reports
    {"O0201506", '#', 7},  // closing
};
constexpr Places kOfJournals[] = {
    {"O0200502", ';', 1}, {"O0200505", ';', 1}, {"O0200506", ';', 1},
    {"O0200507", ';', 1}, {"O0200508", ';', 1},
};
constexpr std::string_view kAccountMovements = "O0200508";
constexpr std::size_t kNameOfAccount = 5;  // of these, for the printed summary

struct Stored {
  int id;
  std::string where, kind, text;
};

std::vector<Stored> readTexts(Database& db, std::string_view sql) {
  std::vector<Stored> all;
  auto rows = db.prepare(sql);
  while (rows->step()) {
    all.push_back({rows->whole(0), std::string(rows->text(1)), std::string(rows->text(2)),
                   std::string(rows->text(3))});
  }
  return all;
}

std::vector<Stored> groupTexts(Database& db) {
  return readTexts(db,
                   "SELECT id, name, form_oid, parameters FROM oper_group"
                   " WHERE parameters <> '' ORDER BY id");
}

std::vector<Stored> journalTexts(Database& db) {
  return readTexts(db,
                   "SELECT id, name, otype, param_list FROM journal"
                   " WHERE param_list <> '' ORDER BY id");
}

template <std::size_t N>
const Places* placesOf(const Places (&table)[N], std::string_view kind) {
  const auto found = std::find_if(std::begin(table), std::end(table),
                                  [&](const Places& places) { return kind == places.kind; });
  return found == std::end(table) ? nullptr : found;
}

const AccountName* renamedTo(const RenamedAccounts& renamed, std::string_view code) {
  const auto found = renamed.find(code);
  return found == renamed.end() || found->second.code.empty() ? nullptr : &found->second;
}

std::string rewritten(const Stored& stored, const Places& places, const RenamedAccounts& renamed) {
  std::vector<std::string> parts = split(stored.text, places.separator);
  for (std::size_t i = 0; i < std::min(parts.size(), places.count); ++i) {
    const AccountName* const to = renamedTo(renamed, parts[i]);
    if (!to) continue;
    parts[i] = to->code;
    const bool named = stored.kind == kAccountMovements && parts.size() > kNameOfAccount;
    if (named) parts[kNameOfAccount] = replaceAll(to->name, ";", ",");
  }
  return join(parts, std::string(1, places.separator));
}

template <std::size_t N>
void rewriteAll(Database& db, const std::vector<Stored>& texts, const Places (&table)[N],
                const RenamedAccounts& renamed, std::string_view update) {
  for (const Stored& stored : texts) {
    const Places* const places = placesOf(table, stored.kind);
    if (!places) continue;
    const std::string text = rewritten(stored, *places, renamed);
    if (text != stored.text) run(db, update, stored.id, text);
  }
}

bool isNumber(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

// Whether one of the numbers in the text is, or begins, a number that changes.
bool namesChanged(std::string_view text, const RenamedAccounts& renamed) {
  std::string digits;
  for (const char letter : std::string(text) + " ") {
    if (letter >= '0' && letter <= '9') {
      digits += letter;
      continue;
    }
    if (digits.empty()) continue;
    auto at = renamed.lower_bound(digits);
    for (; at != renamed.end() && at->first.starts_with(digits); ++at) {
      if (at->second.code != at->first) return true;
    }
    digits.clear();
  }
  return false;
}

// Places that hold the beginning of numbers in place of a whole one, or an account that is gone.
template <std::size_t N>
void leftOf(const std::vector<Stored>& texts, const Places (&table)[N],
            const RenamedAccounts& renamed, std::vector<AccountText>& left) {
  for (const Stored& stored : texts) {
    const Places* const places = placesOf(table, stored.kind);
    if (!places) continue;
    const std::vector<std::string> parts = split(stored.text, places->separator);
    for (std::size_t i = 0; i < std::min(parts.size(), places->count); ++i) {
      const bool stays = !renamedTo(renamed, parts[i]) && namesChanged(parts[i], renamed);
      if (stays) left.push_back({stored.where, parts[i]});
    }
  }
}

}  // namespace

void rewriteAccountTexts(Database& db, const RenamedAccounts& renamed) {
  rewriteAll(db, groupTexts(db), kOfGroups, renamed,
             "UPDATE oper_group SET parameters = $2, row_version = row_version + 1 WHERE id = $1");
  rewriteAll(db, journalTexts(db), kOfJournals, renamed,
             "UPDATE journal SET param_list = $2, row_version = row_version + 1 WHERE id = $1");
}

std::vector<AccountText> accountTextsLeft(Database& db, const RenamedAccounts& renamed) {
  std::vector<AccountText> left;
  leftOf(groupTexts(db), kOfGroups, renamed, left);
  leftOf(journalTexts(db), kOfJournals, renamed, left);
  auto formulas = db.prepare(
      "SELECT j.name, r.row_caption, r.parameter1, r.parameter2 FROM journal_row r"
      " JOIN journal j ON j.id = r.journal_id ORDER BY j.id, r.sort_order, r.id");
  while (formulas->step()) {
    const std::string where =
        std::string(formulas->text(0)) + ": " + std::string(formulas->text(1));
    for (const int formula : {2, 3}) {
      if (!namesChanged(formulas->text(formula), renamed)) continue;
      left.push_back({where, std::string(formulas->text(formula))});
    }
  }
  auto settings = db.prepare(
      "SELECT s.name, u.name, s.value FROM user_setting s LEFT JOIN app_user u ON u.id = s.user_id"
      " ORDER BY s.object_code, s.name, s.user_id");
  while (settings->step()) {
    const std::string_view value = settings->text(2);
    if (!isNumber(value) || !renamed.contains(value) || !namesChanged(value, renamed)) continue;
    left.push_back({std::string(settings->text(0)) + " (" + std::string(settings->text(1)) + ")",
                    std::string(value)});
  }
  // A journal and the record that its like begin with say the same.
  std::vector<AccountText> distinct;
  for (AccountText& text : left) {
    const bool known = std::find(distinct.begin(), distinct.end(), text) != distinct.end();
    if (!known) distinct.push_back(std::move(text));
  }
  return distinct;
}

}  // namespace tolvex::store
