// frmFilter: a filter put together from up to three lines of field, comparison and value; the rows
// that satisfy all of them are shown.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "host/objects/kinds.h"
#include "platform/form.h"

namespace tolvex {

class frmFilter final : public ui::Form {
 public:
  frmFilter(HostContext& host, const std::vector<ListColumn>& columns);
  const char* picture() const override;
  void opened() override;
  // In the grammar of record-set filters; "" when cancelled or when no line has a value.
  const std::string& filter() const { return filter_; }

  ui::ComboBox cmbField1{this, "cmbField1", "Laukas", 18};
  ui::ComboBox cmbOperator1{this, "cmbOperator1", "", 12};
  ui::TextBox txtValue1{this, "txtValue1", "", 24};
  ui::ComboBox cmbField2{this, "cmbField2", "ir laukas", 18};
  ui::ComboBox cmbOperator2{this, "cmbOperator2", "", 12};
  ui::TextBox txtValue2{this, "txtValue2", "", 24};
  ui::ComboBox cmbField3{this, "cmbField3", "ir laukas", 18};
  ui::ComboBox cmbOperator3{this, "cmbOperator3", "", 12};
  ui::TextBox txtValue3{this, "txtValue3", "", 24};
  ui::Button cmdOk{this, "cmdOk", "Atrinkti", ui::Role::Primary};
  ui::Button cmdCancel{this, "cmdCancel", "Atšaukti"};

 private:
  struct Line {
    ui::ComboBox& field;
    ui::ComboBox& comparison;
    ui::TextBox& value;
  };
  void accept();
  // One comparison; "" for a line without a value, nothing after a refusal was shown.
  std::optional<std::string> clause(const Line& line);

  const std::vector<ListColumn>& columns_;
  std::array<Line, 3> lines_;
  std::string filter_;
};

}  // namespace tolvex
