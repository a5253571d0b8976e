// WatchedStore: passes every call on and tells which kinds were changed, so that lists on the
// screen follow what was saved wherever it was saved from. It remembers why the last call failed.
#pragma once

#include <functional>

#include "host/store/store_port.h"

namespace tolvex {

class WatchedStore final : public store::StorePort {
 public:
  struct Listener {
    // A record of the kind was saved or deleted.
    std::function<void(std::string_view kind, std::string_view reference)> changed;
    std::function<void()> refused;   // for lack of a right
    std::function<void()> outdated;  // another client restored or converted the books
  };
  WatchedStore(store::StorePort& inner, Listener listener)
      : inner_(inner), listener_(std::move(listener)) {}

  const std::string& refusal() const { return refusal_; }  // of the last call; "": it was done

  HostResult call(std::string_view kind, std::string_view method,
                  std::string_view parameters) override {
    return seen(inner_.call(kind, method, parameters));
  }
  HostResult load(std::string_view kind, std::string_view reference) override {
    return seen(inner_.load(kind, reference));
  }
  HostResult create(std::string_view kind, std::string_view otype) override {
    return seen(inner_.create(kind, otype));
  }
  store::SaveOutcome save(std::string_view kind, std::string_view otype, RowSet& header,
                          RowSet* second, RowSet* third) override {
    store::SaveOutcome outcome = inner_.save(kind, otype, header, second, third);
    note(kind, outcome.reference, outcome.Code, outcome.Text);
    return outcome;
  }
  HostResult erase(std::string_view kind, std::string_view reference) override {
    HostResult result = inner_.erase(kind, reference);
    note(kind, reference, result.Code, result.Text);
    return result;
  }
  HostResult list(std::string_view kind, std::string_view first, std::string_view second,
                  std::string_view third) override {
    return seen(inner_.list(kind, first, second, third));
  }

 private:
  static constexpr std::int32_t kNoSaveRight = 1203;
  static constexpr std::int32_t kEpochChanged = 1208;
  HostResult seen(HostResult result) {
    remember(result.Code, result.Text);
    return result;
  }
  void note(std::string_view kind, std::string_view reference, std::int32_t code,
            const std::string& text) {
    remember(code, text);
    if (code == kDone) listener_.changed(kind, reference);
    if (code == kNoRight || code == kNoSaveRight) listener_.refused();
  }
  void remember(std::int32_t code, const std::string& text) {
    refusal_ = code == kDone ? std::string() : text;
    if (code == kEpochChanged) listener_.outdated();
  }

  store::StorePort& inner_;
  Listener listener_;
  std::string refusal_;
};

}  // namespace tolvex
