// frmRecordLog: who made and changed a record, and what, newest first.
#pragma once

#include <span>
#include <string>

#include "host/cards/card_field.h"
#include "platform/form.h"

namespace tolvex {

class frmRecordLog final : public ui::Form {
 public:
  // `fields` name the columns as the record's card does.
  frmRecordLog(HostContext& host, std::string reference, std::span<const CardField> fields);
  const char* picture() const override;
  void opened() override;

  ui::ListView lvwLog{this,
                      "lvwLog",
                      {{"Laikas", 19},
                       {"Vartotojas", 16},
                       {"Veiksmas", 10},
                       {"Laukas", 15},
                       {"Buvo", 12, ui::Align::Left, true},
                       {"Tapo", 12, ui::Align::Left, true}}};
  ui::Button cmdClose{this, "cmdClose", "Uždaryti", ui::Role::Primary};

 private:
  std::string captionOf(std::string_view column) const;

  const std::string reference_;
  const std::span<const CardField> fields_;
};

}  // namespace tolvex
