// The screens of the chart of accounts, for the registry.
#pragma once

#include "framework/form_registry.h"

namespace tolvex {

// The card of a class, an account or a subaccount, over an ObjectFormRequest whose
// ClickedParameters is the mode of the plan ("FULL" or "").
inline constexpr const char* kNodeScreen = "frmAccountPlan";
// The conversion to the new plan, over an ObjectFormRequest with a node of the working plan that
// was never stored: only its Properties and Methods are used.
inline constexpr const char* kConversionScreen = "frmAccountNewPlan";

void registerAccountForms(FormRegistry& forms);

}  // namespace tolvex
