// BRLog: the log of an operation: who saved it and when, and what that save changed.
#pragma once

#include <memory>

#include "platform/form.h"
#include "platform/host.h"

namespace tolvex {

inline constexpr const char* kLogScreen = "BRLog";

struct LogRequest {
  HostContext& host;
  std::shared_ptr<VXObjectUIO> operation;
};

class BRLog final : public ui::Form {
 public:
  explicit BRLog(const LogRequest& request);
  const char* picture() const override;
  void opened() override;

  ui::ListView lvwLog{
      this, "lvwLog", {{"Data", 20}, {"Vartotojas", 30, ui::Align::Left, true}, {"Veiksmas", 18}}};
  ui::ListView lvwChanges{this,
                          "lvwChanges",
                          {{"Kas pakeista", 20},
                           {"Buvo", 40, ui::Align::Left, true},
                           {"Yra", 40, ui::Align::Left, true}}};
  ui::Button cmdClose{this, "cmdClose", "Uždaryti", ui::Role::Quiet};

 private:
  void showChanges();

  std::shared_ptr<VXObjectUIO> operation_;
};

}  // namespace tolvex
