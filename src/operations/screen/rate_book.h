// The exchange rates of one day, as the screens offer them: litas per unit of a currency.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "framework/param_dictionary.h"
#include "platform/objects.h"

namespace tolvex {

// Three blanks: a side in litas has no currency.
inline constexpr std::string_view kNoCurrency = "   ";

class RateBook {
 public:
  // A failed read has been shown and leaves the book empty.
  void load(VXObjectUIO& object, DateTime day);

  std::vector<std::string> codes() const;
  // Nothing for a currency without a rate on that day.
  std::optional<double> rate(std::string_view code) const;

 private:
  DictionaryPtr rates_;
};

}  // namespace tolvex
