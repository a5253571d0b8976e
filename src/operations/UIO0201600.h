// UIO0201600: one template of operations, or a group of them.
#pragma once

#include <string>

#include "framework/form_registry.h"
#include "framework/object_contract.h"
#include "framework/param_dictionary.h"

namespace tolvex {

inline constexpr const char* kTemplateKind = "O0201600";

class UIO0201600 final : public ForwardingUIO {
 public:
  explicit UIO0201600(std::shared_ptr<const FormRegistry> forms)
      : ForwardingUIO(kTemplateKind), forms_(std::move(forms)) {}

  // "Parent": the group above, by the record's own ParentID. "EnabledAddressee": the kinds that a
  // line may require. "AccountList": a dictionary of account and name, "0" first; read once.
  // "GetObjectForm": the screen of this template. Any other key is read with the caller's
  // parameters. A failure is shown, but that of "EnabledAddressee": its screen has words of its
  // own.
  MethodResult Properties(std::string key, std::string parameters) override;
  // "NewMode" with the text "group|mode": once stored for the first time, the template joins the
  // set of that group of operations. Any other name is an action of the store with its first
  // argument as given.
  MethodResult Methods(std::string key, std::span<const Variant> par) override;
  using ForwardingUIO::Methods;
  // A template that was stored but did not join its set is a success; the failure is shown.
  SaveResult Save(RowSetPtr second, RowSetPtr third) override;

 private:
  MethodResult objectForm();

  std::shared_ptr<const FormRegistry> forms_;
  DictionaryPtr accounts_;
  std::string newMode_;
};

// What the actions on a set of templates take, from "group|mode" and the template's reference:
// 'group','mode',id. "" when the text names no group.
std::string templateSetParameters(std::string_view newMode, std::string_view reference);

}  // namespace tolvex
