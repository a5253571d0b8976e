#include "debts/cover_posting.h"

#include <algorithm>

#include "framework/references.h"
#include "framework/rounding.h"
#include "framework/text.h"
#include "operations/entry_rules.h"
#include "operations/new_entry.h"
#include "operations/screen/pointers.h"

namespace tolvex {
namespace {

constexpr int kRateDecimals = 9;
constexpr std::size_t kCommentLength = 1000;

double round2(double x) { return roundHalfEven(x, 2); }

// What an entry closes of one row.
struct CoverSide {
  double sumCurr = 0;
  std::string code = std::string(kNoCurrency);
  double rate = 0;
};

// The rate at which a part's currency sum comes to its litas.
double rateOfPart(double lt, double sumCurr, double rate) {
  if (sumCurr <= 0) return 0;
  if (roundLt(sumCurr * rate) == lt) return rate;
  return roundHalfEven(lt / sumCurr, kRateDecimals);
}

// A walk over the ticked rows of one side.
class Walk {
 public:
  Walk(VXObjectUIO& operation, const CoverParty& party) : operation_(operation), party_(party) {}

  // Stands on a row with something left to post; false when there is none any more.
  bool stands() {
    while (!row_ || row_->PaymentLt == 0) {
      if (next_ == party_.rows->size()) return false;
      DebtRow& next = (*party_.rows)[next_++];
      if (!next.ticked) continue;
      row_ = &next;
      named_ = false;
    }
    return true;
  }

  // Reads whom the debt is with; false when that failed.
  bool name() {
    if (named_) return true;
    pointers_.clear();
    const Debt& debt = row_->debt;
    if (isRef(debt.OIDR)) {
      addAddressee(pointers_, party_.sign, debt.OIDR, debt.DateD.Text() + " " + debt.Number);
      if (!AddDebtAddressees(operation_, pointers_, debt.OIDR, party_.account, party_.addressee,
                             party_.sign)) {
        return false;
      }
    }
    return named_ = true;
  }

  CoverSide part(double lt) const {
    CoverSide side;
    if (isCurrency(row_->LikutisCurrCode)) side.code = row_->LikutisCurrCode;
    side.sumCurr = lt == row_->PaymentLt ? row_->PaymentSumCurr : shareOf(lt);
    side.rate = rateOfPart(lt, side.sumCurr, row_->PaymentCurrRate);
    return side;
  }

  // Of the row as a whole; it is posted with the row's first part.
  Influence influence(DateTime date) const { return influenceOf(date, row_->influence()); }
  Influence rest(DateTime date) const { return influenceOf(date, party_.sign * row_->PaymentLt); }

  DebtRow& row() const { return *row_; }
  const Variant::Array& pointers() const { return pointers_; }

 private:
  double shareOf(double lt) const {
    if (row_->PaymentCurrRate <= 0) return 0;
    return std::min(roundLt(lt / row_->PaymentCurrRate), row_->PaymentSumCurr);
  }

  Influence influenceOf(DateTime date, double amount) const {
    return {party_.account, pointers_, party_.sign, row_->LikutisCurrCode, date, amount};
  }

  VXObjectUIO& operation_;
  const CoverParty& party_;
  std::size_t next_ = 0;
  DebtRow* row_ = nullptr;
  bool named_ = false;
  Variant::Array pointers_;
};

// A sum of ten million units and more may have no rate of nine decimals that comes to the cent.
bool comesTo(double lt, const CoverSide& side) {
  return side.sumCurr <= 0 || roundLt(side.sumCurr * side.rate) == lt;
}

NewEntry entryOf(const CoverPosting& posting, DateTime date, double lt, const CoverSide& primary,
                 const CoverSide& secondary) {
  const bool primaryOnDebit = posting.primary.sign == 1;
  NewEntry entry;
  entry.AccountD = primaryOnDebit ? posting.primary.account : posting.secondary.account;
  entry.AccountC = primaryOnDebit ? posting.secondary.account : posting.primary.account;
  entry.sums.sum = lt;
  if (primary.sumCurr > 0) entry.sums.sum = primary.sumCurr;
  if (secondary.sumCurr > 0) entry.sums.sum = secondary.sumCurr;
  entry.sums.sign = posting.secondary.sign;
  entry.sums.code = secondary.code;
  entry.sums.rate = secondary.rate;
  entry.sums.sumCurr2 = primary.sumCurr;
  entry.sums.code2 = primary.code;
  entry.sums.rate2 = primary.rate;
  entry.date = date.Text();
  return entry;
}

MethodResult add(VXObjectUIO& operation, const NewEntry& entry) {
  return operation.Methods("AddBR", entry.arguments());
}

MethodResult unnamed() { return refused(kUnreadAddressees); }

// What both rows have in common, and the differences of the rows that it begins.
MethodResult postPart(VXObjectUIO& operation, const CoverPosting& posting, DateTime date,
                      Walk& primary, Walk& secondary) {
  if (!primary.name() || !secondary.name()) return unnamed();
  for (Walk* walk : {&primary, &secondary}) {
    MethodResult result = PostInfluence(operation, posting.accounts, walk->influence(date));
    if (result.Code != kDone) return result;
    differencePosted(walk->row());
  }
  const double lt = std::min(primary.row().PaymentLt, secondary.row().PaymentLt);
  const CoverSide first = primary.part(lt), second = secondary.part(lt);
  if (!comesTo(lt, first) || !comesTo(lt, second)) return refused(std::string(kRateMismatch));
  NewEntry entry = entryOf(posting, date, lt, first, second);
  entry.addressees = primary.pointers();
  entry.addressees.insert(entry.addressees.end(), secondary.pointers().begin(),
                          secondary.pointers().end());
  MethodResult result = add(operation, entry);
  if (result.Code != kDone) return result;
  partPosted(primary.row(), lt, first.sumCurr);
  partPosted(secondary.row(), lt, second.sumCurr);
  return result;
}

MethodResult postRest(VXObjectUIO& operation, const CoverPosting& posting, DateTime date,
                      Walk& walk) {
  if (!walk.stands() || !leavesLitas(walk.row())) return done();
  if (!walk.name()) return unnamed();
  MethodResult result = PostInfluence(operation, posting.accounts, walk.rest(date));
  if (result.Code == kDone) partPosted(walk.row(), walk.row().PaymentLt, 0);
  return result;
}

}  // namespace

MethodResult PostCover(VXObjectUIO& operation, const CoverPosting& posting) {
  Walk primary(operation, posting.primary), secondary(operation, posting.secondary);
  DateTime date = posting.date;
  while (primary.stands() && secondary.stands()) {
    if (posting.dateOfDebts) {
      date = std::max(primary.row().debt.DateD, secondary.row().debt.DateD);
    }
    MethodResult result = postPart(operation, posting, date, primary, secondary);
    if (result.Code != kDone) return result;
  }
  for (Walk* walk : {&primary, &secondary}) {
    MethodResult result = postRest(operation, posting, date, *walk);
    if (result.Code != kDone) return result;
  }
  return done(true);
}

MethodResult PostInfluence(VXObjectUIO& operation, const InfluenceAccounts& accounts,
                           const Influence& influence) {
  if (influence.amount == 0) return done();
  const bool gain = influence.amount > 0;
  const int sign = gain ? 1 : -1;
  NewEntry entry;
  entry.AccountD = gain ? influence.account : accounts.loss;
  entry.AccountC = gain ? accounts.gain : influence.account;
  entry.sums.sum = gain ? influence.amount : round2(-influence.amount);
  entry.sums.sign = sign;
  entry.sums.code = influence.code;
  entry.addressees =
      onBothSides(sign == influence.sign ? influence.pointers : negated(influence.pointers));
  entry.date = influence.date.Text();
  return add(operation, entry);
}

std::string coverComment(std::string_view comment, bool firstPair, std::string_view primary,
                         std::string_view secondary) {
  std::string pair(primary);
  if (secondary != primary) pair.append(" - ").append(secondary);
  if (firstPair) return CutToChars("Skolų dengimas - " + pair, kCommentLength);
  const std::string longer = std::string(comment) + ", " + pair;
  return length(longer) <= kCommentLength ? longer : std::string(comment);
}

}  // namespace tolvex
