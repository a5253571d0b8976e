// The contract between an operation's screen and the choice of a template for it.
//
// The choice is registered as kTemplateChoice over a TemplateChoiceRequest and runs modally; it
// changes nothing by itself.
#pragma once

#include <string>

#include "platform/host.h"

namespace tolvex {

inline constexpr const char* kTemplateChoice = "frmBROperTemplateSelect";

struct ChosenTemplate {
  std::string reference;  // "" when nothing was chosen
  double sumLt = 0;
};

struct TemplateChoiceRequest {
  HostContext& host;
  int templateGroupId = 0;    // of the operation's group; 0 offers all templates
  int defaultTemplateId = 0;  // chosen from the start; 0 for none
  double sumLt = 0;           // shown from the start
  ChosenTemplate& chosen;     // outlives the screen
};

}  // namespace tolvex
