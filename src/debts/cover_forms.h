#pragma once

#include "framework/form_registry.h"

namespace tolvex {

void registerCoverForms(FormRegistry& forms);

}  // namespace tolvex
