// The small services of the host that rest on the store: rights, settings, user, workplace.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "host/store/store_port.h"
#include "platform/host.h"

namespace tolvex {

// What the services ask of the store. They are asked many times for one screen, so a failure is
// told once, until the store answers again.
class Enquiry {
 public:
  Enquiry(HostContext& host, store::StorePort& store) : host_(host), store_(store) {}
  // The first row of the answer; null when there is none or the store failed.
  RowSetPtr firstRow(std::string_view kind, std::string_view routine,
                     const std::string& parameters);

 private:
  HostContext& host_;
  store::StorePort& store_;
  bool told_ = false;
};

// Answers are kept until something that may change them happens: forget() is called for a new
// component, for a refresh, and after the store refused for lack of a right.
class RightsService final : public Rights {
 public:
  explicit RightsService(Enquiry& store) : store_(store) {}
  RightFlags of(std::string_view component) override;
  void addComponent(std::string key, std::string caption) override;
  void forget() { known_.clear(); }

 private:
  Enquiry& store_;
  std::map<std::string, RightFlags, std::less<>> known_;
};

class SettingsService final : public UserSettings {
 public:
  SettingsService(HostContext& host, store::StorePort& store, Enquiry& enquiry)
      : host_(host), store_(store), enquiry_(enquiry) {}
  std::string get(std::string_view section, std::string_view key,
                  std::string_view fallback) override;
  // A refusal of the store is shown.
  void set(std::string_view section, std::string_view key, std::string_view value) override;

 private:
  HostContext& host_;
  store::StorePort& store_;
  Enquiry& enquiry_;
};

class UserService final : public CurrentUser {
 public:
  explicit UserService(Enquiry& store) : store_(store) {}
  std::optional<UserRow> row() const override;

 private:
  Enquiry& store_;
  mutable std::optional<UserRow> row_;
};

class WorkplaceService final : public Workplace {
 public:
  // `askPeriod` shows the dialog; false when the user cancelled.
  using AskPeriod = std::function<bool(std::string_view kind, ViewPeriod& period)>;
  WorkplaceService(Enquiry& store, UserSettings& settings, AskPeriod askPeriod);
  FirmRecord firm() override;
  std::string lockKey() const override { return lockKey_; }
  ViewPeriod oldPeriod(std::string_view kind) override;
  bool newPeriod(std::string_view kind) override;

 private:
  Enquiry& store_;
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
