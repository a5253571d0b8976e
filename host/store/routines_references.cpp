// References between operations: who points at whom, with whom, and what was paid.
#include <algorithm>
#include <map>
#include <set>

#include "framework/references.h"
#include "framework/text.h"
#include "host/store/answer.h"
#include "host/store/dimset.h"
#include "host/store/lookups.h"
#include "host/store/routine_table.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

constexpr ColumnSpec kRelated[] = {
    col::text("OIDR", 30),     col::text("FOIDR", 30),    col::text("GUID", 40),
    col::date("DateD"),        col::text("AccountD", 20), col::text("AccountC", 20),
    col::number("SumA"),       col::text("CurrCodeD", 3), col::number("SumCurrD"),
    col::text("CurrCodeC", 3), col::number("SumCurrC"),   col::small("Sign"),
    col::text("Preview"),      col::text("Comment", 1000)};

// The side of the first reference by which each entry names the operation or its document.
std::map<int, int> entriesNaming(Database& db, const std::string& document, int oper) {
  std::map<int, int> signs;
  // Two selects, since each half has an index of its own.
  auto select = bound(db,
                      "SELECT id, entry_id, sign FROM entry_ref WHERE points_to = $1 UNION"
                      " SELECT id, entry_id, sign FROM entry_ref WHERE role = 2 AND foidr = $2"
                      " ORDER BY 1",
                      oper, document);
  while (select->step()) signs.emplace(select->whole(1), select->whole(2));
  return signs;
}

Variant GetRelatedBR(Session& session, const Arguments& arguments, std::string_view) {
  const std::string& document = arguments[0].str();
  const int own = operIdOf(arguments[1].str());
  const int oper = own != 0 ? own : operIdOf(document);
  struct Related {
    std::int64_t day = 0, oper = 0;
    int entry = 0, sign = 0;
  };
  std::vector<Related> related;
  for (const auto& [entry, sign] : entriesNaming(session.db(), document, oper)) {
    auto select = bound(session.db(), "SELECT day, oper_id FROM entry WHERE id = $1", entry);
    if (select->step() && select->integer(1) != oper)
      related.push_back({select->integer(0), select->integer(1), entry, sign});
  }
  std::sort(related.begin(), related.end(), [](const Related& a, const Related& b) {
    return std::tie(a.day, a.oper, a.entry) < std::tie(b.day, b.oper, b.entry);
  });
  Answer answer(kRelated);
  for (const Related& at : related) {
    auto row = bound(session.db(),
                     "SELECT o.otype, o.doc_ref, e.guid, ad.code, ac.code, e.sum_lt, d.cur,"
                     " d.sum_cur, c.cur, c.sum_cur, o.day, o.number, o.comment FROM entry e"
                     " JOIN oper o ON o.id = e.oper_id"
                     " JOIN posting d ON d.entry_id = e.id AND d.sign = 1"
                     " JOIN posting c ON c.entry_id = e.id AND c.sign = -1"
                     " JOIN account ad ON ad.id = d.account_id"
                     " JOIN account ac ON ac.id = c.account_id WHERE e.id = $1",
                     at.entry);
    if (!row->step()) continue;
    answer.row()
        .text(operReference(at.oper))
        .text(documentReference(at.oper, row->text(0), row->text(1)))
        .text(row->text(2))
        .day(at.day)
        .text(row->text(3))
        .text(row->text(4))
        .lt(row->integer(5))
        .text(blankForBase(row->text(6)))
        .cur(row->integer(7))
        .text(blankForBase(row->text(8)))
        .cur(row->integer(9))
        .integer(at.sign)
        .text(shownOperation(row->integer(10), row->text(11)))
        .text(row->text(12));
  }
  return answer.done();
}

constexpr ColumnSpec kProperties[] = {col::text("FOIDR", 30), col::text("ShowString", 800),
                                      col::small("Sign")};

Variant GetBRPropertiesByAcc(Session& session, const Arguments& arguments, std::string_view) {
  const int sign = arguments[3].integer() < 0 ? -1 : 1;
  const std::string wanted = isRef(arguments[2].str()) ? arguments[2].str() : "";
  auto select = bound(session.db(),
                      "SELECT r.foidr, r.show_string FROM entry e"
                      " JOIN posting p ON p.entry_id = e.id AND p.sign = $2"
                      " JOIN account a ON a.id = p.account_id AND a.code = $3"
                      " JOIN entry_ref r ON r.entry_id = e.id AND r.sign = $2 AND r.role <> 1"
                      " WHERE e.oper_id = $1 AND ($4 = '' OR EXISTS (SELECT 1 FROM entry_ref w"
                      " WHERE w.entry_id = e.id AND w.sign = $2 AND w.foidr = $4))"
                      " ORDER BY e.id, r.id",
                      operIdOf(arguments[0].str()), sign, arguments[1].str(), wanted);
  std::set<std::string> seen;
  Answer answer(kProperties);
  while (select->step())
    if (seen.emplace(select->text(0)).second)
      answer.row().text(select->text(0)).text(select->text(1)).integer(sign);
  return answer.done();
}

constexpr ColumnSpec kConfirmed[] = {col::text("OIDR", 30)};

// Confirms a pointer when the operation it names has the account with that client, or with nobody
// who could contradict; a row is the confirmation.
Variant CheckBRPointerClient(Session& session, const Arguments& arguments, std::string_view) {
  Answer answer(kConfirmed);
  const int oper = operIdOf(arguments[0].str());
  if (!anyRow(session.db(), "SELECT 1 FROM oper WHERE id = $1", oper)) return answer.done();
  auto select = bound(session.db(),
                      "SELECT r.foidr FROM entry e JOIN posting p ON p.entry_id = e.id"
                      " JOIN account a ON a.id = p.account_id AND a.code = $2"
                      " JOIN dimset_ref r ON r.dimset_id = p.dimset_id WHERE e.oper_id = $1",
                      oper, arguments[2].str());
  bool anyParty = false, confirmed = false;
  while (select->step()) {
    anyParty |= isParty(select->text(0));
    confirmed |= select->text(0) == arguments[1].str();
  }
  if (confirmed || !anyParty) answer.row().text(operReference(oper));
  return answer.done();
}

constexpr ColumnSpec kPayments[] = {
    col::text("OIDR", 30),  col::date("DateD"),       col::text("Number", 500), col::number("SumA"),
    col::number("SumCurr"), col::text("CurrCode", 3), col::text("Preview")};

// Postings of other operations that count towards this one on the account: a posting belongs to
// the operation that the first pointer on its own side names.
Variant GetPaymentPreview(Session& session, const Arguments& arguments, std::string_view) {
  auto select = bound(session.db(),
                      "SELECT o.id, p.day, o.number, p.sum_lt, p.sum_cur, p.cur, o.day"
                      " FROM entry_ref r"
                      " JOIN posting p ON p.entry_id = r.entry_id AND p.sign = r.sign"
                      " JOIN account a ON a.id = p.account_id AND a.code = $2"
                      " JOIN oper o ON o.id = p.oper_id"
                      " WHERE r.points_to = $1 AND r.role = 1 AND o.id <> $1"
                      " AND r.id = (SELECT MIN(f.id) FROM entry_ref f WHERE f.role = 1"
                      " AND f.entry_id = r.entry_id AND f.sign = r.sign)"
                      " ORDER BY p.day, o.id, p.entry_id",
                      operIdOf(arguments[0].str()), arguments[1].str());
  Answer answer(kPayments);
  while (select->step())
    answer.row()
        .text(operReference(select->integer(0)))
        .day(select->integer(1))
        .text(select->text(2))
        .lt(select->integer(3))
        .cur(select->integer(4))
        .text(blankForBase(select->text(5)))
        .text(shownOperation(select->integer(6), select->text(2)));
  return answer.done();
}

constexpr Routine kRoutines[] = {
    {"O0201500", "GetRelatedBR", "rr", false, GetRelatedBR},
    {"O0201500", "GetBRPropertiesByAcc", "rtti", false, GetBRPropertiesByAcc},
    {"O0201500", "CheckBRPointerClient", "ttt", false, CheckBRPointerClient},
    {"O0201500", "GetPaymentPreview", "rt", false, GetPaymentPreview},
};

}  // namespace

std::span<const Routine> referenceRoutines() { return kRoutines; }

}  // namespace tolvex::store
