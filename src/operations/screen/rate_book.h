// The exchange rates of one day, as the screens offer them: litas per unit of a currency.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "framework/param_dictionary.h"
#include "platform/host.h"

namespace tolvex {

// Three blanks: a side in litas has no currency.
inline constexpr std::string_view kNoCurrency = "   ";

// Whether a code names a currency other than the litas.
bool isCurrency(std::string_view code);

class RateBook {
 public:
  // A failed read has been shown and leaves the book empty.
  void load(VXObjectUIO& object, DateTime day);

  std::vector<std::string> codes() const;
  // Nothing for a currency without a rate on that day.
  std::optional<double> rate(std::string_view code) const;

  // Stores a rate as that of the day, if the book knows the currency and has no rate for it; it
  // has then. A refusal of the store is returned and leaves the book as it was.
  MethodResult keep(HostContext& host, std::string_view code, double rate);

  // A rate typed by hand goes before that of any day, for as long as the book lives.
  void setByHand(std::string_view code, double rate) { byHand_.SetItem(code, rate); }

 private:
  DictionaryPtr rates_;
  ParamDictionary byHand_;
  DateTime day_;
};

}  // namespace tolvex
