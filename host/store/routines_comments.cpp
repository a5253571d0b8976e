// Stock comments, and the settings that a tool keeps for its user.
#include <algorithm>

#include "framework/text.h"
#include "host/store/answer.h"
#include "host/store/records.h"
#include "host/store/routine_table.h"
#include "host/store/settings.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

constexpr ColumnSpec kComments[] = {col::integer("ID"), col::text("Name", 1000)};
constexpr std::size_t kLongestComment = 1000;

Variant GetCommentList(Session& session, const Arguments& arguments, std::string_view) {
  struct Comment {
    std::int64_t id = 0;
    std::string name;
  };
  auto select = bound(session.db(), "SELECT id, name FROM comment_text WHERE kind = $1 ORDER BY id",
                      arguments[2].str());
  auto comments = readAll<Comment>(*select, [](Statement& row) {
    return Comment{row.integer(0), std::string(row.text(1))};
  });
  if (arguments[1].integer() == 1)
    std::erase_if(comments, [&](const Comment& comment) {
      return !startsWithNoCase(comment.name, arguments[0].str());
    });
  std::stable_sort(comments.begin(), comments.end(), [](const Comment& a, const Comment& b) {
    return compareLithuanian(a.name, b.name) < 0;
  });
  Answer answer(kComments);
  for (const Comment& comment : comments) answer.row().integer(comment.id).text(comment.name);
  return answer.done();
}

constexpr ColumnSpec kCommentId[] = {col::integer("ID")};

// Stock comments belong to all who write operations.
void requireWriter(Session& session) {
  const Flags flags = session.rights("CBROperRights");
  if (!flags.edit && !flags.create) refuseSave();
}

Variant SaveComment(Session& session, const Arguments& arguments, std::string_view) {
  requireWriter(session);
  int id = arguments[0].integer();
  const std::string name = trim(arguments[1].str());
  if (name.empty()) refuseRule("Nenurodytas komentaro tekstas!");
  if (length(name) > kLongestComment) refuseRule("Komentaras ilgesnis negu 1000 simbolių!");
  if (id == 0) {
    id = insertedId(session.db(),
                    "INSERT INTO comment_text (kind, name) VALUES ($1, $2) RETURNING id",
                    arguments[2].str(), name);
  } else if (run(session.db(), "UPDATE comment_text SET name = $2 WHERE id = $1 AND kind = $3", id,
                 name, arguments[2].str()) == 0) {
    refuseEditedGone();
  }
  Answer answer(kCommentId);
  answer.row().integer(id);
  return answer.done();
}

Variant DeleteComment(Session& session, const Arguments& arguments, std::string_view) {
  requireWriter(session);
  const int id = arguments[0].integer();
  if (run(session.db(), "DELETE FROM comment_text WHERE id = $1", id) == 0) refuseGone();
  Answer answer(kCommentId);
  answer.row().integer(id);
  return answer.done();
}

constexpr ColumnSpec kSetting[] = {col::text("Value", 5000)};
constexpr std::string_view kToolSettings = "O0201500";

// Reads the user's setting of that name; with an argument writes it first.
Variant toolSetting(Session& session, const Arguments& arguments, std::string_view name) {
  if (!arguments[0].absent()) storeSetting(session, kToolSettings, name, arguments[0].str());
  Answer answer(kSetting);
  answer.row().text(settingOf(session, kToolSettings, name).value_or(""));
  return answer.done();
}

Variant DebtsCoverParameters(Session& session, const Arguments& arguments, std::string_view) {
  return toolSetting(session, arguments, "DebtsCoverParameters");
}

Variant CurrencyRecalculateParameters(Session& session, const Arguments& arguments,
                                      std::string_view) {
  return toolSetting(session, arguments, "CurrencyRecalculateParameters");
}

constexpr Routine kRoutines[] = {
    {"O0201500", "GetCommentList", "tit", false, GetCommentList},
    {"O0201500", "SaveComment", "itt", true, SaveComment},
    {"O0201500", "DeleteComment", "i", true, DeleteComment},
    {"O0201500", "DebtsCoverParameters", "T", true, DebtsCoverParameters},
    {"O0201500", "CurrencyRecalculateParameters", "T", true, CurrencyRecalculateParameters},
};

}  // namespace

std::span<const Routine> commentRoutines() { return kRoutines; }

}  // namespace tolvex::store
