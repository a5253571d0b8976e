// The screens of operations, for the registry.
#pragma once

#include "framework/form_registry.h"

namespace tolvex {

void registerOperationForms(FormRegistry& forms);

}  // namespace tolvex
