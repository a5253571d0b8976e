// The tools that work on an open operation: screens shown over its screen that add entries to it.
//
// A tool is registered under its name over an OperationToolRequest. It works on the operation's
// record and tells the screen below through the link; nothing is stored until the operation is.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "platform/host.h"
#include "platform/objects.h"

namespace tolvex {

// The screen of the operation that a tool stands over.
class OperationLink {
 public:
  virtual ~OperationLink() = default;
  virtual void setDate(DateTime date) = 0;  // the date box; the record is the tool's own matter
  virtual void setComment(std::string_view comment) = 0;
  virtual void refreshEntries() = 0;  // the record's entries have changed
};

struct OperationToolRequest {
  HostContext& host;
  std::shared_ptr<VXObjectUIO> operation;
  OperationLink& link;  // outlives the tool
};

struct OperationTool {
  std::string_view caption;  // also how a menu or the stored parameters of an operation name it
  const char* form;
};
inline constexpr std::array<OperationTool, 3> kOperationTools = {
    {{"Skolų dengimas", "frmDebtsCover"},
     {"Valiutos perskaičiavimas", "frmCurrencyInfluence"},
     {"Valiutos pirkimas/pardavimas", "frmCurrencyExchange"}}};

// The tool of a caption, or null.
inline const OperationTool* operationTool(std::string_view caption) {
  for (const OperationTool& tool : kOperationTools)
    if (tool.caption == caption) return &tool;
  return nullptr;
}

}  // namespace tolvex
