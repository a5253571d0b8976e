// Stock comments: texts that users keep for the operations of a kind, and their choice.
#pragma once

#include <string>
#include <string_view>

#include "operations/UIO0201500.h"
#include "platform/host.h"

namespace tolvex {

inline constexpr const char* kCommentScreen = "frmCommentList";

// What the screen is opened over.
struct CommentListRequest {
  HostContext& host;
  std::shared_ptr<VXObjectUIO> operation;
  std::string typed;    // what stands in the document's comment
  std::string& chosen;  // written when a comment is chosen; outlives the screen
};

// The parameter of the list: the typed text without single quotes, a flag, the kind.
std::string commentListParameters(std::string_view typed, std::string_view kind);

// The comment of a document with a stock comment behind it.
std::string withComment(std::string_view comment, std::string_view chosen);

// Shows the stock comments; Value is the chosen text, "" when none was.
MethodResult GetCommentList(UIO0201500& operation, Arguments par);

}  // namespace tolvex
