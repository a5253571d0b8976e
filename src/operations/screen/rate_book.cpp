#include "operations/screen/rate_book.h"

#include "operations/operation_methods.h"

namespace tolvex {

void RateBook::load(VXObjectUIO& object, DateTime day) {
  rates_ = GetCurrencyDictionary(object, day);
}

std::vector<std::string> RateBook::codes() const {
  return rates_ ? rates_->Keys() : std::vector<std::string>{};
}

std::optional<double> RateBook::rate(std::string_view code) const {
  const Variant* found = rates_ ? rates_->Find(code) : nullptr;
  if (!found || !found->IsNumber() || found->AsDouble() <= 0) return std::nullopt;
  return found->AsDouble();
}

}  // namespace tolvex
