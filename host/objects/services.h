// The small services of the host that rest on the store: rights, settings, user, workplace.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "host/store/store_port.h"
#include "platform/host.h"

namespace tolvex {

// Answers are kept until something that may change them happens: forget() is called for a new
// component, for a refresh, and after the store refused for lack of a right.
class RightsService final : public Rights {
 public:
  explicit RightsService(store::StorePort& store) : store_(store) {}
  RightFlags of(std::string_view component) override;
  void addComponent(std::string key, std::string caption) override;
  void forget() { known_.clear(); }

 private:
  store::StorePort& store_;
  std::map<std::string, RightFlags, std::less<>> known_;
};

class SettingsService final : public UserSettings {
 public:
  SettingsService(HostContext& host, store::StorePort& store) : host_(host), store_(store) {}
  std::string get(std::string_view section, std::string_view key,
                  std::string_view fallback) override;
  // A refusal of the store is shown.
  void set(std::string_view section, std::string_view key, std::string_view value) override;

 private:
  HostContext& host_;
  store::StorePort& store_;
};

class UserService final : public CurrentUser {
 public:
  explicit UserService(store::StorePort& store) : store_(store) {}
  std::optional<UserRow> row() const override;

 private:
  store::StorePort& store_;
  mutable std::optional<UserRow> row_;
};

class WorkplaceService final : public Workplace {
 public:
  // `askPeriod` shows the dialog; false when the user cancelled.
  using AskPeriod = std::function<bool(std::string_view kind, ViewPeriod& period)>;
  WorkplaceService(store::StorePort& store, UserSettings& settings, AskPeriod askPeriod);
  FirmRecord firm() override;
  std::string lockKey() const override { return lockKey_; }
  ViewPeriod oldPeriod(std::string_view kind) override;
  bool newPeriod(std::string_view kind) override;

 private:
  store::StorePort& store_;
  UserSettings& settings_;
  AskPeriod askPeriod_;
  std::string lockKey_;
};

class ClockService final : public Clock {
 public:
  explicit ClockService(std::function<DateTime()> now) : now_(std::move(now)) {}
  DateTime now() const override { return now_(); }

 private:
  std::function<DateTime()> now_;
};

// "2004.01.01 - 2004.03.31", or how many days back.
std::string periodText(const ViewPeriod& period);

}  // namespace tolvex
