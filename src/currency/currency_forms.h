// The screens of currencies, for the registry.
#pragma once

#include "framework/form_registry.h"

namespace tolvex {

void registerCurrencyForms(FormRegistry& forms);

}  // namespace tolvex
