#include "framework/told.h"

#include "platform/save_outcome.h"

namespace tolvex {

RowSetPtr toldRows(const MethodResult& answer, const char* nothing) {
  if (showFailure(hostContext(), answer)) return nullptr;
  if (answer.Value.IsRows()) return answer.Value.AsRows();
  warn(hostContext(), nothing);
  return nullptr;
}

RowSetPtr toldRows(BusinessObject& bo, const std::string& routine, const std::string& parameters) {
  return toldRows(guarded([&] {
    HostResult answer;
    bo.CallBO(routine, parameters, nullptr, answer);
    return passOn(answer);
  }));
}

DictionaryPtr toldDictionary(const MethodResult& answer, const char* nothing) {
  if (showFailure(hostContext(), answer)) return nullptr;
  if (answer.Value.IsDictionary()) return answer.Value.AsDictionary();
  warn(hostContext(), nothing);
  return nullptr;
}

}  // namespace tolvex
