// The screens of payment templates, for the registry.
#pragma once

#include "framework/form_registry.h"

namespace tolvex {

inline constexpr const char* kPaymentRights = "CPaymentPlan";

// One template or group, over an ObjectFormRequest.
inline constexpr const char* kPaymentScreen = "frmPaymentTemplate";
void registerPaymentForms(FormRegistry& forms);

}  // namespace tolvex
