// The screens of templates, for the registry, and what the choice of a template is opened over.
#pragma once

#include <memory>
#include <string>

#include "framework/form_registry.h"

namespace tolvex {

inline constexpr const char* kTemplateRights = "CTemplatesLock";

// One template or group, over an ObjectFormRequest; its ClickedParameters may be "group|mode" of
// the set that a new template joins.
inline constexpr const char* kTemplateScreen = "frmBRTemplate";
void registerTemplateForms(FormRegistry& forms);

}  // namespace tolvex
