// Decorators of the store for scripts and tests: one writes down every call, one fails on demand.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/store/store_port.h"

namespace tolvex {

struct StoreCall {
  std::string what;  // "call", "load", "create", "save", "erase", "list"
  std::string kind, name, parameters;
  std::int32_t code = 0;
};

class TraceStore final : public store::StorePort {
 public:
  explicit TraceStore(store::StorePort& inner) : inner_(inner) {}
  const std::vector<StoreCall>& calls() const { return calls_; }
  // References of what was saved since the last clear, each once, without what was deleted since.
  const std::vector<std::string>& saved() const { return saved_; }
  void clear();

  HostResult call(std::string_view kind, std::string_view method,
                  std::string_view parameters) override;
  HostResult load(std::string_view kind, std::string_view reference) override;
  HostResult create(std::string_view kind, std::string_view otype) override;
  store::SaveOutcome save(std::string_view kind, std::string_view otype, RowSet& header,
                          RowSet* second, RowSet* third) override;
  HostResult erase(std::string_view kind, std::string_view reference) override;
  HostResult list(std::string_view kind, std::string_view first, std::string_view second,
                  std::string_view third) override;

 private:
  HostResult noted(const char* what, std::string_view kind, std::string_view name,
                   std::string_view parameters, const std::function<HostResult()>& answer);
  store::StorePort& inner_;
  std::vector<StoreCall> calls_;
  std::vector<std::string> saved_;
};

// Fails one call in place of the store and passes every other one on.
class FaultStore final : public store::StorePort {
 public:
  void setInner(store::StorePort* inner) { inner_ = inner; }  // before the first call
  // The n-th call from now fails with code and text. Code 0: it succeeds, but without data.
  void arm(int n, std::int32_t code, std::string text);
  // The n-th call from now throws, which no store does: it stands for a fault of the program.
  void armThrow(int n, std::string text);
  int calls() const { return calls_; }
  // What failed: "save", "load", … as in StoreCall::what; "" as long as nothing did.
  const std::string& fired() const { return fired_; }
  const std::string& failedCall() const { return failedCall_; }  // for reports

  HostResult call(std::string_view kind, std::string_view method,
                  std::string_view parameters) override;
  HostResult load(std::string_view kind, std::string_view reference) override;
  HostResult create(std::string_view kind, std::string_view otype) override;
  store::SaveOutcome save(std::string_view kind, std::string_view otype, RowSet& header,
                          RowSet* second, RowSet* third) override;
  HostResult erase(std::string_view kind, std::string_view reference) override;
  HostResult list(std::string_view kind, std::string_view first, std::string_view second,
                  std::string_view third) override;

 private:
  bool due(const char* what, std::string_view kind, std::string_view name,
           std::string_view parameters);
  HostResult failure(const std::function<HostResult()>& answer) const;
  bool meansNothing() const { return left_ == 1 && code_ == kDone && !throws_; }
  store::StorePort* inner_ = nullptr;
  int calls_ = 0;
  int left_ = 0;
  std::int32_t code_ = 0;
  std::string text_;
  bool throws_ = false;
  std::string fired_, failedCall_;
};

}  // namespace tolvex
