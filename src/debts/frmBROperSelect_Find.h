// frmBROperSelect_Find: one of several documents of the same number.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "framework/recordset.h"
#include "platform/host.h"

namespace tolvex {

// A document that was found by its number: the operation, and whom it is with.
struct FoundDocument {
  std::string operation, reference, name;
};
FoundDocument foundDocument(RowSet& found);  // of the current row

class frmBROperSelect_Find final : public ui::Form {
 public:
  // `found` is an answer of GetBROpersByNumber.
  frmBROperSelect_Find(HostContext& host, RowSetPtr found);

  const char* picture() const override;
  void opened() override;

  const std::optional<FoundDocument>& chosen() const { return chosen_; }

  ui::ListView lvwFound{this,
                        "lvwFound",
                        {{"Adresatas", 30, ui::Align::Left, true},
                         {"Data", 10},
                         {"Nr", 12},
                         {"Suma, Lt", 14, ui::Align::Right}}};
  ui::Button cmdCancel{this, "cmdCancel", "Atšaukti"};
  ui::Button cmdOK{this, "cmdOK", "Gerai", ui::Role::Primary};

 private:
  void choose();

  RowSetPtr found_;
  std::vector<FoundDocument> documents_;  // one a line
  std::optional<FoundDocument> chosen_;
};

}  // namespace tolvex
