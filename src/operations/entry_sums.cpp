#include "operations/entry_sums.h"

#include "framework/parameters.h"
#include "framework/results.h"
#include "framework/rounding.h"
#include "framework/text.h"
#include "platform/numbers.h"

namespace tolvex {

namespace {

// The first currency has no sum of its own: the sum counts in it as soon as it has a rate.
double firstSumCurr(const EntrySums& sums) { return sums.rate > 0 ? sums.sum : 0; }

bool pairIsComplete(double sumCurr, double rate, std::string_view code) {
  const bool hasCode = length(code) == 3;
  return ((hasCode && rate != 0) || !(sumCurr > 0)) && ((hasCode && sumCurr != 0) || !(rate > 0));
}

bool isForeign(std::string_view code) {
  return length(code) == 3 && code != "LTL" && code.find(' ') == std::string_view::npos;
}

}  // namespace

double litasSum(const EntrySums& sums) {
  if (sums.rate > 0) return roundLt(sums.sum * sums.rate);
  if (sums.sumCurr2 > 0) return roundLt(sums.sumCurr2 * sums.rate2);
  return roundLt(sums.sum);
}

bool sumsAreComplete(const EntrySums& sums) {
  return sums.sign >= -1 && sums.sign <= 1 &&
         pairIsComplete(firstSumCurr(sums), sums.rate, sums.code) &&
         pairIsComplete(sums.sumCurr2, sums.rate2, sums.code2);
}

bool sidesAgree(const EntrySums& sums) {
  const double sumCurr = firstSumCurr(sums);
  return !(sumCurr > 0 && sums.sumCurr2 > 0) ||
         roundLt(sumCurr * sums.rate) == roundLt(sums.sumCurr2 * sums.rate2);
}

std::string describeSums(std::string_view given, const EntrySums& sums) {
  const auto side = [](double sumCurr, double rate, const std::string& code) {
    return quoted(shortNumber(sumCurr)) + "," + quoted(shortNumber(rate)) + "," + quoted(code);
  };
  return join({std::string(given), side(firstSumCurr(sums), sums.rate, sums.code),
               side(sums.sumCurr2, sums.rate2, sums.code2), quoted(std::to_string(sums.sign))},
              kLineBreak);
}

void addCurrencyRows(RowSet& BRCurrency, std::string_view guid, const EntrySums& sums,
                     NoSign rule) {
  const auto add = [&](int sign, double rate, double sumCurr, const std::string& code) {
    BRCurrency.AddNew();
    BRCurrency["BRGUID"] = guid;
    BRCurrency["Sign"] = sign;
    BRCurrency["RateCurr"] = rate;
    BRCurrency["SumCurr"] = sumCurr;
    BRCurrency["FCurrencyCode"] = code;
    BRCurrency.Update();
  };
  const bool first = isForeign(sums.code), second = isForeign(sums.code2);
  if (sums.sign == 0 && rule == NoSign::BothSides) {
    for (const int sign : {1, -1}) {
      if (first) {
        add(sign, sums.rate, firstSumCurr(sums), sums.code);
      } else if (second) {
        add(sign, sums.rate2, sums.sumCurr2, sums.code2);
      }
    }
    return;
  }
  const int sign = sums.sign == 0 ? 1 : sums.sign;
  if (first) add(sign, sums.rate, firstSumCurr(sums), sums.code);
  if (second) add(-sign, sums.rate2, sums.sumCurr2, sums.code2);
}

}  // namespace tolvex
