// Running numbers of documents: taken inside the saving transaction, so without doubles, and with
// gaps only where somebody typed or deleted one.
//
// Every group counts in buckets (by group, user, kind; by day, month, quarter or year); a bucket is
// one row and is never reset. An offer reserves nothing: a cancelled document leaves no gap.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/store/oper_rows.h"
#include "host/store/session.h"

namespace tolvex::store {

struct NumberRules {  // of an operation group
  int groupId = 0;
  bool common = false;              // a group of groups, which holds no operations
  std::string mask, prefix, width;  // width: as many characters as the number has digits
  int minimal = 1, groupBy = 1, cycle = 3, dayFrom = 0;
  bool appliesOn(int day) const { return !mask.empty() && day >= dayFrom; }
  bool byUser() const;  // every user has counters of his own
};

// Null for a group that does not exist.
std::optional<NumberRules> readNumberRules(Database& db, int groupId);

// The counter that a document of this user, kind and date draws from.
std::string bucketKey(const NumberRules& rules, int userId, std::string_view otype, int day);

// The bucket's row, made when absent and held until the end of the transaction.
int lockBucket(Database& db, const std::string& key);

// The number text by the mask: parts joined by "-".
std::string composeNumber(const NumberRules& rules, std::string_view userPrefix, int today,
                          int number);

// What GetAutoNumber answers: the next number of the counter, nothing reserved; remembered in the
// session as its offer. 0 where the group does not number on that day. Throws Refusal 1204 when the
// counter has run out.
int offerNumber(Session& session, const NumberRules& rules, int userId, std::string_view userPrefix,
                std::string_view otype, int day);

// Settles number, text and bucket of `after` at its save. `before` is null for a new operation. A
// number that this session was offered last for the group gives way to the next one when it was
// taken meanwhile or the document belongs to another counter. Throws Refusal 3604 for a typed
// number that is taken.
void settleNumber(Session& session, const NumberRules& rules, const HeaderRow* before,
                  HeaderRow& after);

// The number of an operation that is put back as it was: its own, or, where another operation took
// that meanwhile, the next of its counter, in the text as well.
void regainNumber(Session& session, const NumberRules& rules, HeaderRow& after);

}  // namespace tolvex::store
