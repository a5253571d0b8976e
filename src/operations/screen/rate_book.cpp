#include "operations/screen/rate_book.h"

#include "framework/parameters.h"
#include "operations/operation_methods.h"

namespace tolvex {
namespace {

constexpr std::string_view kCurrencies = "O0002200";

}  // namespace

bool isCurrency(std::string_view code) {
  return code.find_first_not_of(' ') != std::string_view::npos;
}

void RateBook::load(VXObjectUIO& object, DateTime day) {
  rates_ = GetCurrencyDictionary(object, day);
  day_ = day;
}

std::vector<std::string> RateBook::codes() const {
  return rates_ ? rates_->Keys() : std::vector<std::string>{};
}

std::optional<double> RateBook::rate(std::string_view code) const {
  if (const Variant* typed = byHand_.Find(code)) return typed->AsDouble();
  const Variant* found = rates_ ? rates_->Find(code) : nullptr;
  if (!found || !found->IsNumber() || found->AsDouble() <= 0) return std::nullopt;
  return found->AsDouble();
}

MethodResult RateBook::keep(HostContext& host, std::string_view code, double rate) {
  if (!rates_ || !rates_->Exists(code) || this->rate(code)) return done();
  HostResult stored;
  host.objects()
      .kind(kCurrencies)
      ->BO()
      ->CallBO("SaveDayRate", Parameters().text(code).date(day_).number(rate).str(), nullptr,
               stored);
  if (stored.Code == kDone) rates_->SetItem(code, rate);
  return passOn(stored);
}

}  // namespace tolvex
