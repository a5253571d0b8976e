#include "debts/new_covers.h"

#include <algorithm>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>

#include "framework/references.h"
#include "framework/rounding.h"

namespace tolvex {
namespace {

// Operations of all kinds are one family of references.
constexpr std::string_view kOperations = "O020150";

// One side of an entry.
struct Posting {
  int sign = 1;  // 1: it is a debit
  double lt = 0, curr = 0;
  std::string code = std::string(kNoCurrency);
  int operation = 0;            // that it points at; 0 when at none
  std::set<std::string> whose;  // its addressees
};

Posting postingOf(RowSet& entry, int sign) {
  Posting posting;
  posting.sign = sign;
  posting.lt = entry["SumA"].Number();
  ForEachRow(*entry["BRCurrency"].Rows(), [&](RowSet& row) {
    if (row["Sign"].Number() != sign) return;
    posting.code = row["FCurrencyCode"].Text();
    posting.curr = row["SumCurr"].Number();
  });
  ForEachRow(*entry["BRProperties"].Rows(), [&](RowSet& row) {
    if (row["Sign"].Number() != sign) return;
    const std::string reference(row["FOIDR"].Text());
    if (!reference.starts_with(kOperations)) {
      posting.whose.insert(reference);
    } else if (posting.operation == 0) {
      posting.operation = idOf(reference);
    }
  });
  return posting;
}

// What the new entries post to debts of the account.
std::vector<Posting> newPostings(std::string_view account, RowSet& BR) {
  std::vector<Posting> postings;
  ForEachRow(*BR.Clone(), [&](RowSet& entry) {
    if (entry.State() != RowState::Added) return;
    for (const int sign : {1, -1}) {
      if (entry[sign == 1 ? "AccountD" : "AccountC"].Text() != account) continue;
      Posting posting = postingOf(entry, sign);
      if (posting.operation != 0) postings.push_back(std::move(posting));
    }
  });
  return postings;
}

using DebtsByOperation = std::unordered_map<int, std::vector<Debt*>>;

// The debt that a posting belongs to: one of the operation it points at, in its currency and with
// its addressee where there are several.
Debt* debtOf(const DebtsByOperation& debts, const Posting& posting) {
  const auto ofOperation = debts.find(posting.operation);
  if (ofOperation == debts.end()) return nullptr;
  return *std::ranges::max_element(ofOperation->second, {}, [&](const Debt* debt) {
    return 2 * static_cast<int>(debt->FCurrencyCode == posting.code) +
           static_cast<int>(posting.whose.contains(debt->AddrOIDR));
  });
}

void takeOff(Debt& debt, const Posting& posting) {
  const int effect = posting.sign * debt.InfluenceSign;  // a debit closes what lies on the credit
  debt.LikutisLt = roundHalfEven(debt.LikutisLt - effect * posting.lt, 2);
  if (debt.FCurrencyCode == posting.code)
    debt.LikutisCurr = roundHalfEven(debt.LikutisCurr - effect * posting.curr, 2);
}

}  // namespace

void takeOffNewCovers(std::vector<Debt>& debts, std::string_view account, RowSet& BR) {
  const std::vector<Posting> postings = newPostings(account, BR);
  if (postings.empty()) return;
  DebtsByOperation byOperation;
  for (Debt& debt : debts) byOperation[idOf(debt.OIDR)].push_back(&debt);
  for (const Posting& posting : postings)
    if (Debt* debt = debtOf(byOperation, posting)) takeOff(*debt, posting);
  std::erase_if(debts,
                [](const Debt& debt) { return debt.LikutisLt == 0 && debt.LikutisCurr == 0; });
}

}  // namespace tolvex
