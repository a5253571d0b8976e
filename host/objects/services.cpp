#include "host/objects/services.h"

#include <utility>

#include "framework/parameters.h"
#include "framework/text.h"
#include "host/objects/inner_uio.h"

namespace tolvex {
namespace {

constexpr std::string_view kAskedKind = "O0201500";
constexpr std::string_view kPeriodKey = "ViewPeriod";

std::string textOf(RowSet& row, const char* column) {
  if (!row.Fields().contains(column)) return {};
  return row[column].Value().Show();
}

}  // namespace

RowSetPtr Enquiry::firstRow(std::string_view kind, std::string_view routine,
                            const std::string& parameters) {
  const HostResult result = store_.call(kind, routine, parameters);
  if (result.Code != kDone) {
    if (!std::exchange(told_, true)) warn(host_, result.Text);
    return nullptr;
  }
  told_ = false;
  if (!result.Data.IsRows()) return nullptr;
  RowSetPtr rows = result.Data.AsRows();
  if (rows->RecordCount() == 0) return nullptr;
  rows->MoveFirst();
  return rows;
}

RightFlags RightsService::of(std::string_view component) {
  if (const auto known = known_.find(component); known != known_.end()) return known->second;
  const RowSetPtr row =
      store_.firstRow(kAskedKind, "GetRights", Parameters().text(component).str());
  RightFlags flags;  // no answer: no right, and asked again next time
  if (!row) return flags;
  const auto flag = [&row](const char* column) {
    return static_cast<std::int16_t>((*row)[column].Number() != 0 ? 1 : 0);
  };
  flags = {flag("View"), flag("Delete"), flag("Edit"), flag("Create"), flag("Admin")};
  known_.emplace(component, flags);
  return flags;
}

void RightsService::addComponent(std::string, std::string) {
  forget();  // the store made the component with the group's save; it inherits from the bare name
}

std::string SettingsService::get(std::string_view section, std::string_view key,
                                 std::string_view fallback) {
  const RowSetPtr row = enquiry_.firstRow(
      kAskedKind, "GetSetting", Parameters().text(section).text(key).text(fallback).str());
  return row ? textOf(*row, "Value") : std::string(fallback);
}

void SettingsService::set(std::string_view section, std::string_view key, std::string_view value) {
  const HostResult result = store_.call(kAskedKind, "SaveSetting",
                                        Parameters().text(section).text(key).text(value).str());
  if (result.Code != kDone) warn(host_, result.Text);
}

std::optional<UserRow> UserService::row() const {
  if (row_) return row_;
  const RowSetPtr row = store_.firstRow(kAskedKind, "GetUser", kNoParameters);
  if (!row) return std::nullopt;
  row_ = UserRow{static_cast<std::int32_t>((*row)["ID"].Number()), textOf(*row, "UserPref"),
                 textOf(*row, "OIDR"), textOf(*row, "Name")};
  return row_;
}

WorkplaceService::WorkplaceService(Enquiry& store, UserSettings& settings, AskPeriod askPeriod)
    : store_(store), settings_(settings), askPeriod_(std::move(askPeriod)), lockKey_(makeGuid()) {}

FirmRecord WorkplaceService::firm() {
  FirmRecord firm;
  const RowSetPtr row = store_.firstRow("O0000100", "GetMyFirm", kNoParameters);
  if (!row) return firm;
  const std::pair<std::string FirmRecord::*, const char*> fields[] = {
      {&FirmRecord::reference, "OIDR"},
      {&FirmRecord::name, "Name"},
      {&FirmRecord::code, "Code"},
      {&FirmRecord::vatCode, "VATCode"},
      {&FirmRecord::phone, "Phone"},
      {&FirmRecord::fax, "Fax"},
      {&FirmRecord::street, "Street"},
      {&FirmRecord::city, "City"},
      {&FirmRecord::country, "Country"},
      {&FirmRecord::postIndex, "Index"},
      {&FirmRecord::address, "Address"},
      {&FirmRecord::director, "Director"},
      {&FirmRecord::directorTitle, "DirectorTitle"},
      {&FirmRecord::financier, "Financier"},
      {&FirmRecord::cashier, "Cashier"},
  };
  for (const auto& [member, column] : fields) firm.*member = textOf(*row, column);
  return firm;
}

// Kept as "days;365" or "2004.01.01;2004.12.31".
ViewPeriod WorkplaceService::oldPeriod(std::string_view kind) {
  ViewPeriod period;
  const auto parts = split(settings_.get(kind, kPeriodKey, "days;365"), ';');
  if (parts.size() != 2) return period;
  const auto from = DateTime::Parse(parts[0]);
  const auto to = DateTime::Parse(parts[1]);
  double days = 0;
  if (from && to) {
    period.byRange = true;
    period.from = *from;
    period.to = *to;
  } else if (parsePlainNumber(parts[1], days) && days >= 0 && days < 100000) {
    period.days = static_cast<int>(days);
  }
  return period;
}

bool WorkplaceService::newPeriod(std::string_view kind) {
  ViewPeriod period = oldPeriod(kind);
  if (!askPeriod_(kind, period)) return false;
  settings_.set(kind, kPeriodKey,
                period.byRange ? period.from.Text() + ";" + period.to.Text()
                               : "days;" + std::to_string(period.days));
  return true;
}

std::string periodText(const ViewPeriod& period) {
  if (period.byRange) return period.from.Text() + " - " + period.to.Text();
  return "paskutinės " + std::to_string(period.days) + " d.";
}

}  // namespace tolvex
