#include "host/script/trace_store.h"

#include <algorithm>
#include <stdexcept>

namespace tolvex {

void TraceStore::clear() {
  calls_.clear();
  saved_.clear();
}

HostResult TraceStore::noted(const char* what, std::string_view kind, std::string_view name,
                             std::string_view parameters,
                             const std::function<HostResult()>& answer) {
  const std::size_t place = calls_.size();
  calls_.push_back({what, std::string(kind), std::string(name), std::string(parameters)});
  HostResult result = answer();
  calls_[place].code = result.Code;
  return result;
}

HostResult TraceStore::call(std::string_view kind, std::string_view method,
                            std::string_view parameters) {
  return noted("call", kind, method, parameters,
               [&] { return inner_.call(kind, method, parameters); });
}

HostResult TraceStore::load(std::string_view kind, std::string_view reference) {
  return noted("load", kind, "", reference, [&] { return inner_.load(kind, reference); });
}

HostResult TraceStore::create(std::string_view kind, std::string_view otype) {
  return noted("create", kind, "", otype, [&] { return inner_.create(kind, otype); });
}

store::SaveOutcome TraceStore::save(std::string_view kind, std::string_view otype, RowSet& header,
                                    RowSet* second, RowSet* third) {
  store::SaveOutcome outcome;
  (void)noted("save", kind, "", otype, [&] {
    outcome = inner_.save(kind, otype, header, second, third);
    return HostResult{outcome.Code, outcome.Text, {}};
  });
  const bool known = std::find(saved_.begin(), saved_.end(), outcome.reference) != saved_.end();
  if (outcome.Code == kDone && !known) saved_.push_back(outcome.reference);
  return outcome;
}

HostResult TraceStore::erase(std::string_view kind, std::string_view reference) {
  HostResult result =
      noted("erase", kind, "", reference, [&] { return inner_.erase(kind, reference); });
  if (result.Code == kDone) std::erase(saved_, reference);
  return result;
}

HostResult TraceStore::list(std::string_view kind, std::string_view first, std::string_view second,
                            std::string_view third) {
  return noted("list", kind, "", first, [&] { return inner_.list(kind, first, second, third); });
}

void FaultStore::arm(int n, std::int32_t code, std::string text) {
  left_ = n;
  code_ = code;
  text_ = std::move(text);
  throws_ = false;
  fired_.clear();
}

void FaultStore::armThrow(int n, std::string text) {
  arm(n, kDone, std::move(text));
  throws_ = true;
}

// Without data the call is made all the same: whatever it wrote is written.
HostResult FaultStore::failure(const std::function<HostResult()>& answer) const {
  if (throws_) throw std::runtime_error(text_);
  if (code_ != kDone) return {code_, text_, {}};
  HostResult result = answer();
  result.Data = {};
  return result;
}

bool FaultStore::due(const char* what, std::string_view kind, std::string_view name,
                     std::string_view parameters) {
  ++calls_;
  if (left_ == 0 || --left_ > 0) return false;
  fired_ = failedCall_ = what;
  for (const std::string_view part : {kind, name, parameters})
    if (!part.empty()) failedCall_.append(" ").append(part);
  return true;
}

HostResult FaultStore::call(std::string_view kind, std::string_view method,
                            std::string_view parameters) {
  const auto answer = [&] { return inner_->call(kind, method, parameters); };
  return due("call", kind, method, parameters) ? failure(answer) : answer();
}

HostResult FaultStore::load(std::string_view kind, std::string_view reference) {
  const auto answer = [&] { return inner_->load(kind, reference); };
  return due("load", kind, "", reference) ? failure(answer) : answer();
}

HostResult FaultStore::create(std::string_view kind, std::string_view otype) {
  const auto answer = [&] { return inner_->create(kind, otype); };
  return due("create", kind, "", otype) ? failure(answer) : answer();
}

store::SaveOutcome FaultStore::save(std::string_view kind, std::string_view otype, RowSet& header,
                                    RowSet* second, RowSet* third) {
  // A save always answers with a code: success without a stored record cannot be meant.
  if (meansNothing()) ++left_;
  if (!due("save", kind, "", otype)) return inner_->save(kind, otype, header, second, third);
  return {failure({}).Code, text_, {}};
}

HostResult FaultStore::erase(std::string_view kind, std::string_view reference) {
  const auto answer = [&] { return inner_->erase(kind, reference); };
  return due("erase", kind, "", reference) ? failure(answer) : answer();
}

HostResult FaultStore::list(std::string_view kind, std::string_view first, std::string_view second,
                            std::string_view third) {
  const auto answer = [&] { return inner_->list(kind, first, second, third); };
  return due("list", kind, "", first) ? failure(answer) : answer();
}

}  // namespace tolvex
