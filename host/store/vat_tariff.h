// The rule of VAT tariffs, for every way of writing one.
#pragma once

namespace tolvex::store {

inline constexpr const char* kTariffComponent = "CBookLayout";

// Hundredths of a percent. Refused (1204) outside of 0..100 and with a third decimal.
int tariffHundredths(double percent);

}  // namespace tolvex::store
