#include "operations/comment_list.h"

#include "framework/conversions.h"
#include "framework/parameters.h"
#include "framework/text.h"
#include "operations/document_form.h"

namespace tolvex {

std::string commentListParameters(std::string_view typed, std::string_view kind) {
  return Parameters().text(replaceAll(std::string(typed), "'", " ")).number(0).text(kind).str();
}

std::string withComment(std::string_view comment, std::string_view chosen) {
  return trim(std::string(comment) + " " + std::string(chosen));
}

MethodResult GetCommentList(UIO0201500& operation, Arguments par) {
  std::string chosen;
  const CommentListRequest request{hostContext(), operation.shared_from_this(),
                                   NullToText(argument(par, 0)), chosen};
  const std::shared_ptr<ui::Form> form = operation.tables().forms.make(kCommentScreen, request);
  if (!form) {
    tellMissingScreen();
  } else {
    hostContext().screens().runModal(*form);
  }
  return done(chosen);
}

}  // namespace tolvex
