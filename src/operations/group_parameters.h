// Settings of a group's documents: one text in the group's record, whose fields depend on the kind
// of its documents.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/host.h"
#include "platform/objects.h"

namespace tolvex {

// Whether documents of the kind are numbered by bank account where the group says so.
bool mayNumberByAccount(std::string_view kind);
bool numbersByAccount(std::string_view kind, std::string_view parameters);

// The settings that a group is stored with: those of the kind where there are none yet. A payment
// kind takes `mainAccount`, the reference of our main bank account, and whether it numbers by
// account; of settings that stand already only the latter is changed, and only when it differs.
std::string groupParameters(std::string_view kind, std::string_view parameters,
                            std::string_view mainAccount, bool byAccount);

// The screen that edits the settings of a kind; "" where there is none.
std::string_view parametersForm(std::string_view kind);
// What that screen is registered with. It changes `text` when the user accepts.
struct GroupParametersRequest {
  HostContext& host;
  std::shared_ptr<VXObjectUIO> group;
  std::string kind;
  std::string& text;  // outlives the screen
};

}  // namespace tolvex
